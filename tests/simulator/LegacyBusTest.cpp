#include "simulator/LegacyBus.h"

#include "simulator/Fixtures.h"
#include "simulator/TrafficLog.h"

#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LegacyVehicle : public testing::Test {
protected:
    void Begin(const std::string& statements = "quiet\n", bool isPaced = false)
    {
        std::istringstream in(statements);
        std::vector<ScenarioProblem> problems;
        scenario = Scenario::Parse(in, problems, Network::Fenrik98);
        ASSERT_THAT(problems, IsEmpty());
        bus = std::make_unique<LegacyBus>(scenario, Simulation::Settings{isPaced, 1}, time, line, log, host);
        bus->Step();
    }

    /// Goes on by `seconds`, from one moment at which something is due to the next.
    void Run(double seconds)
    {
        const double until = time.now + seconds;
        for (double due = bus->NextDue(); due <= until; due = bus->NextDue()) {
            time.now = std::max(time.now, due);
            bus->Step();
        }
        time.now = until;
    }

    void Control(const char* statement)
    {
        bus->Carry(*ParseAction(statement, scenario.nodes, Network::Fenrik98));
        bus->Step();
    }

    /// What has been sent since the last call, up to and with the `token`-th token.
    ByteList TakeRounds(int tokens)
    {
        line.bytes.clear();
        while (std::ranges::count_if(line.bytes, [](int byte) { return byte >= 101 && byte <= 106; }) < tokens)
            Run(0.02);
        return line.bytes;
    }

    FakeTime time;
    LineRecorder line;
    std::ostringstream text;
    TrafficLog log{time, &text};
    HostRecorder host;
    Scenario scenario;
    std::unique_ptr<LegacyBus> bus;
};

TEST_F(LegacyVehicle, PassesTheTokenRoundItsSixNodes)
{
    Begin();
    Run(0.15);
    EXPECT_THAT(line.bytes, ElementsAre(101, 102, 103, 104, 105, 106, 101, 102));
}

TEST_F(LegacyVehicle, AMessageIsSaidByItsNodeWhenItHoldsTheToken)
{
    Begin();
    Control("message 3 17");
    Control("message node 5 50 128");
    EXPECT_THAT(TakeRounds(6), ElementsAre(102, 103, 17, 104, 105, 50, 128, 106, 101));
}

TEST_F(LegacyVehicle, MessagesOfANodeKeepTheirOrder)
{
    Begin();
    for (const char* statement : {"message 2 17", "message 2 18", "message 2 19"})
        Control(statement);
    EXPECT_THAT(TakeRounds(2), ElementsAre(102, 17, 18, 19, 103));
}

TEST_F(LegacyVehicle, LoadsAreShedByTheLevelsMessages)
{
    Begin();
    Control("shed 1 on");
    Control("shed 1 off");
    Control("shed 8");
    EXPECT_THAT(TakeRounds(6), ElementsAre(102, 103, 104, 105, 106, 101, 70, 71, 84));
}

TEST_F(LegacyVehicle, ANodeThatMissesTheTokenIsLeftOut)
{
    Begin();
    Control("miss 3");
    Control("message 3 17");
    EXPECT_THAT(TakeRounds(7), ElementsAre(102, 104, 105, 106, 101, 102, 103, 17)) << "in the next round it is there";
    Control("miss 5 2");
    EXPECT_THAT(TakeRounds(9), ElementsAre(104, 106, 101, 102, 103, 104, 106, 101, 102));
    EXPECT_THAT(text.str(), HasSubstr("-- node 3 misses the token"));
}

TEST_F(LegacyVehicle, ASilentNodeIsLeftOutUntilItSpeaksAgain)
{
    Begin();
    Control("silent node 4");
    EXPECT_THAT(TakeRounds(6), ElementsAre(102, 103, 105, 106, 101, 102));
    Control("silent node 4 off");
    EXPECT_THAT(TakeRounds(2), ElementsAre(103, 104));
}

TEST_F(LegacyVehicle, ACollisionCostsAMessageItsTurn)
{
    Begin();
    Control("collide");
    Control("message 2 17");
    EXPECT_THAT(TakeRounds(7), ElementsAre(102, 103, 104, 105, 106, 101, 102, 17));
    EXPECT_THAT(text.str(), HasSubstr("LOST 11  collision"));
}

TEST_F(LegacyVehicle, BytesStandOnTheLineAtOnce)
{
    Begin();
    line.bytes.clear();
    Control("bytes 50 103 128 255 0");
    EXPECT_THAT(line.bytes, ElementsAre(50, 103, 128, 255, 0));
}

TEST_F(LegacyVehicle, TheTransceiverAnswersTheWakeByteAlone)
{
    Begin();
    line.bytes.clear();
    bus->Receive(ByteList{1, 158, 2});
    Run(0.003);
    EXPECT_THAT(line.bytes, ElementsAre(138));
    EXPECT_THAT(text.str(), HasSubstr("RX 9E  wake"));
    EXPECT_THAT(text.str(), HasSubstr("RX 01  unparsed"));
    Control("no-transceiver");
    line.bytes.clear();
    bus->Receive(ByteList{158});
    Run(0.003);
    EXPECT_THAT(line.bytes, IsEmpty());
}

TEST_F(LegacyVehicle, SpeaksByItself)
{
    Begin("");
    Run(20);
    std::map<int, int> counts;
    for (const int byte : line.bytes)
        ++counts[byte];
    for (const int expected : {10, 11, 50, 58, int(kLegacyAlive.number)})
        EXPECT_GT(counts[expected], 0) << expected;
}

TEST_F(LegacyVehicle, AMeasuredValueIsNeverAToken)
{
    Begin("");
    Run(300);
    int values = 0;
    for (std::size_t i = 0; i + 1 < line.bytes.size(); ++i) {
        const bool isGauge = std::ranges::any_of(
            kLegacyGauges, [&](const LegacyGauge& gauge) { return gauge.message.number == line.bytes[i]; });
        if (isGauge && (i == 0 || line.bytes[i - 1] < 50 || line.bytes[i - 1] > 58)) {
            EXPECT_FALSE(line.bytes[i + 1] > 100 && line.bytes[i + 1] <= 106) << i;
            ++values;
        }
    }
    EXPECT_GT(values, 0);
}

TEST_F(LegacyVehicle, AFullLineCarries960BytesASecond)
{
    Begin("quiet\n", true);
    Control("flood");
    Run(1);
    line.bytes.clear();
    Run(10);
    EXPECT_NEAR(double(line.bytes.size()), 9600, 200);
    Control("flood off");
    Run(1);
    line.bytes.clear();
    Run(0.12);
    EXPECT_EQ(line.bytes.size(), 6);
}

TEST_F(LegacyVehicle, AScenarioHasItsTimes)
{
    Begin("quiet\nat 1 message 1 17\nevery 2 miss 2\n");
    Run(1.2);
    EXPECT_EQ(std::ranges::count(line.bytes, 17), 1);
    Run(5);
    EXPECT_EQ(std::ranges::count(line.bytes, 102), std::ranges::count(line.bytes, 101) - 3);
}

TEST_F(LegacyVehicle, PluggingAndQuittingAreTheProgramsMatter)
{
    Begin();
    for (const char* statement : {"unplug", "plug", "quit"})
        Control(statement);
    EXPECT_THAT(host.calls, ElementsAre("unplug", "plug", "quit"));
}

class LegacyProblems : public testing::TestWithParam<const char*> {};

TEST_P(LegacyProblems, AreTold)
{
    std::istringstream in(GetParam());
    std::vector<ScenarioProblem> problems;
    (void)Scenario::Parse(in, problems, Network::Fenrik98);
    EXPECT_EQ(problems.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Simulator, LegacyProblems,
                         testing::Values("message 7 1", "message 1 256", "message 1", "message 1 2 3 4", "shed 0",
                                         "shed 9 on", "miss 0", "miss 1 0", "collide 0", "bytes", "bytes 300",
                                         "flood 0", "node 1 type 2", "fault 1 2", "input 1 1 on", "send 12 on"));

TEST(LegacyStatements, AreNoneOfThePresentNetwork)
{
    for (const char* statement : {"message 1 2", "miss 1", "collide", "bytes 1"})
        EXPECT_THROW((void)ParseAction(statement, {}), std::invalid_argument) << statement;
}

// --- The sample database
// ----------------------------------------------------------------------------------------------

struct SampleRow {
    std::string name;
    std::string description;
    bool ignore = false;
};

std::map<int, SampleRow> Sample()
{
    std::ifstream file(FENRIK_LEGACY_LIST);
    std::map<int, SampleRow> rows;
    std::string text;
    std::getline(file, text);
    while (std::getline(file, text)) {
        std::istringstream cells(text);
        std::string number, name, description, ignore;
        std::getline(cells, number, ',');
        std::getline(cells, name, ',');
        std::getline(cells, description, ',');
        std::getline(cells, ignore, ',');
        rows[std::stoi(number)] = {name, description, ignore == "1"};
    }
    return rows;
}

TEST(LegacySample, HasARowForEachNumber)
{
    const auto sample = Sample();
    ASSERT_EQ(sample.size(), 256);
    EXPECT_EQ(sample.begin()->first, 0);
    EXPECT_EQ(sample.rbegin()->first, 255);
}

TEST(LegacySample, NamesWhatTheVehicleSays)
{
    auto sample = Sample();
    for (const LegacySwitch& item : kLegacySwitches) {
        EXPECT_EQ(sample[item.on.number].name, item.on.name);
        EXPECT_EQ(sample[item.off.number].name, item.off.name);
        EXPECT_NE(sample[item.on.number].description, "Analog");
    }
    for (const LegacyGauge& gauge : kLegacyGauges) {
        EXPECT_EQ(sample[gauge.message.number].name, gauge.message.name);
        EXPECT_EQ(sample[gauge.message.number].description, "Analog");
    }
    for (int level = 1; level <= kShedLevels; ++level) {
        const int on = kFirstShedMessage + (level - 1) * 2;
        EXPECT_EQ(sample[on].name, "Load Shed Level " + std::to_string(level) + " ON");
        EXPECT_EQ(sample[on + 1].name, "Load Shed Level " + std::to_string(level) + " OFF");
        EXPECT_EQ(sample[on].description, "LoadShed");
    }
    EXPECT_EQ(sample[kLegacyAlive.number].name, kLegacyAlive.name);
    EXPECT_TRUE(sample[kLegacyAlive.number].ignore);
}

}  // namespace
}  // namespace fenrik
