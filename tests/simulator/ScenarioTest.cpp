#include "simulator/Scenario.h"
#include "simulator/Vehicle.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Verb = Action::Verb;
using When = ScheduledAction::When;

Scenario Read(const std::string& text, std::vector<ScenarioProblem>& problems)
{
    std::istringstream in(text);
    return Scenario::Parse(in, problems);
}

struct GoodLine {
    const char* name;
    const char* line;
    Verb verb;
    std::function<bool(const Action&)> holds;
};

class GoodLines : public testing::TestWithParam<GoodLine> {};

TEST_P(GoodLines, AreUnderstood)
{
    const auto action = ParseAction(GetParam().line, Vehicle::DefaultNodes());
    ASSERT_TRUE(action);
    EXPECT_EQ(action->verb, GetParam().verb);
    EXPECT_TRUE(GetParam().holds(*action));
}

bool IsFrame(const Frame& f, int command, bool state, bool extended, int data)
{
    return f.command == command && f.state == state && f.extended == extended && f.data == data;
}

INSTANTIATE_TEST_SUITE_P(
    Scenario, GoodLines,
    testing::Values(
        GoodLine{"Send", "send 12 on false 100", Verb::Send,
                 [](auto& a) { return IsFrame(a.frame, 12, true, false, 100); }},
        GoodLine{"SendExtended", "send 980 off true 1", Verb::Send,
                 [](auto& a) { return IsFrame(a.frame, 980, false, true, 1); }},
        GoodLine{"SendShort", "send 12 off", Verb::Send, [](auto& a) { return IsFrame(a.frame, 12, false, false, 0); }},
        GoodLine{"SendWithDataOnly", "send 12 on 65535", Verb::Send,
                 [](auto& a) { return IsFrame(a.frame, 12, true, false, 65535); }},
        GoodLine{"Burst", "burst 1000", Verb::Burst, [](auto& a) { return a.count == 1000 && a.frame.command == 0; }},
        GoodLine{"BurstOfFrames", "burst 1000 of frames", Verb::Burst,
                 [](auto& a) { return a.count == 1000 && a.frame.command == 0; }},
        GoodLine{"BurstOfOne", "burst 5 of 12 on false 7", Verb::Burst,
                 [](auto& a) { return a.count == 5 && IsFrame(a.frame, 12, true, false, 7); }},
        GoodLine{"Noise", "noise 40", Verb::Noise, [](auto& a) { return a.count == 40; }},
        GoodLine{"Fault", "fault 3 5", Verb::Fault, [](auto& a) { return a.node == 3 && a.count == 5; }},
        GoodLine{"Shed", "shed 3 2", Verb::Shed, [](auto& a) { return a.node == 3 && a.count == 2; }},
        GoodLine{"Voltage", "voltage 10.5", Verb::Voltage, [](auto& a) { return a.on && a.value == 10.5; }},
        GoodLine{"VoltageAuto", "voltage auto", Verb::Voltage, [](auto& a) { return !a.on; }},
        GoodLine{"Input", "input 1 16 on", Verb::Input, [](auto& a) { return a.node == 1 && a.count == 16 && a.on; }},
        GoodLine{"Restart", "restart node 3", Verb::Restart, [](auto& a) { return a.node == 3; }},
        GoodLine{"Silent", "silent node 3", Verb::Silent, [](auto& a) { return a.node == 3 && a.on; }},
        GoodLine{"SilentOff", "silent 3 off", Verb::Silent, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"AnswerDelay", "answer-delay 20", Verb::AnswerDelay,
                 [](auto& a) { return a.value == 0.02 && a.value2 == 0.02; }},
        GoodLine{"AnswerDelays", "answer-delay 5 25", Verb::AnswerDelay,
                 [](auto& a) { return a.value == 0.005 && a.value2 == 0.025; }},
        GoodLine{"Lose", "lose every 3", Verb::Lose, [](auto& a) { return a.count == 3; }},
        GoodLine{"LoseOff", "lose off", Verb::Lose, [](auto& a) { return a.count == 0; }},
        GoodLine{"LoseReply", "lose-reply every 2", Verb::LoseReply, [](auto& a) { return a.count == 2; }},
        GoodLine{"LoseReplyOff", "lose-reply off", Verb::LoseReply, [](auto& a) { return a.count == 0; }},
        GoodLine{"AnswerAs", "answer-as node 3 5", Verb::AnswerAs,
                 [](auto& a) { return a.node == 3 && a.on && a.count == 5; }},
        GoodLine{"AnswerAsItself", "answer-as 3 off", Verb::AnswerAs, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"Cut", "cut 3 2", Verb::Cut, [](auto& a) { return a.node == 3 && a.on && a.count == 2; }},
        GoodLine{"CutAtOnce", "cut 3 0", Verb::Cut, [](auto& a) { return a.on && a.count == 0; }},
        GoodLine{"CutOff", "cut 3 off", Verb::Cut, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"Refuse", "refuse 3 string", Verb::Refuse,
                 [](auto& a) { return a.node == 3 && a.on && a.queries == std::vector<std::uint16_t>{0x0A00}; }},
        GoodLine{"RefuseAll", "refuse 3 all", Verb::Refuse, [](auto& a) { return a.on && a.queries.size() == 14; }},
        GoodLine{"RefuseOff", "refuse 3 off", Verb::Refuse, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"Ignore", "ignore 3 mount", Verb::Ignore,
                 [](auto& a) { return a.node == 3 && a.on && a.steps == std::vector{NodeStep::Mount}; }},
        GoodLine{"IgnoreAll", "ignore node 3 all", Verb::Ignore, [](auto& a) { return a.on && a.steps.size() == 5; }},
        GoodLine{"IgnoreOff", "ignore 3 off", Verb::Ignore, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"StateAs", "state-as 3 2", Verb::StateAs, [](auto& a) { return a.node == 3 && a.on && a.count == 2; }},
        GoodLine{"StateAsItIs", "state-as 3 off", Verb::StateAs, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"ModemDrop", "modem drop", Verb::Modem,
                 [](auto& a) { return a.modem.kind == ModemOrder::Kind::Drop; }},
        GoodLine{"ModemLate", "modem late 1.5", Verb::Modem, [](auto& a) { return a.modem.seconds == 1.5; }},
        GoodLine{"ModemEchoOff", "modem echo off", Verb::Modem, [](auto& a) { return !a.modem.on; }},
        GoodLine{"Deny", "deny 3", Verb::Deny, [](auto& a) { return a.node == 3 && a.on; }},
        GoodLine{"DenyOff", "deny 3 off", Verb::Deny, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"Odd", "odd node 3", Verb::Odd, [](auto& a) { return a.node == 3 && a.on; }},
        GoodLine{"OddOff", "odd 3 off", Verb::Odd, [](auto& a) { return a.node == 3 && !a.on; }},
        GoodLine{"NoTransceiver", "no-transceiver", Verb::NoTransceiver, [](auto& a) { return a.on; }},
        GoodLine{"Quiet", "quiet", Verb::Quiet, [](auto& a) { return a.on; }},
        GoodLine{"QuietOff", "quiet off", Verb::Quiet, [](auto& a) { return !a.on; }},
        GoodLine{"Flood", "flood", Verb::Flood, [](auto& a) { return a.value == 160; }},
        GoodLine{"FloodFast", "flood 400", Verb::Flood, [](auto& a) { return a.value == 400; }},
        GoodLine{"FloodOff", "flood off", Verb::Flood, [](auto& a) { return a.value == 0; }},
        GoodLine{"Unplug", "unplug", Verb::Unplug, [](auto&) { return true; }},
        GoodLine{"Plug", "plug  # again", Verb::Plug, [](auto&) { return true; }},
        GoodLine{"Quit", "  quit\r", Verb::Quit, [](auto&) { return true; }}),
    [](const auto& row) { return row.param.name; });

struct BadLine {
    const char* name;
    const char* line;
    const char* reason;
};

class BadLines : public testing::TestWithParam<BadLine> {};

TEST_P(BadLines, AreToldWithTheirNumberAndReason)
{
    std::vector<ScenarioProblem> problems;
    (void)Read(std::string("# first\nquiet\n") + GetParam().line + "\nflood\n", problems);
    ASSERT_THAT(problems, SizeIs(1));
    EXPECT_EQ(problems[0].line, 3);
    EXPECT_THAT(problems[0].text, HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Scenario, BadLines,
    testing::Values(
        BadLine{"UnknownWord", "sned 12 on", "unknown statement \"sned\""},
        BadLine{"CommandTooLarge", "send 1024 on", "command number 1024 is not from 1 to 1023"},
        BadLine{"CommandZero", "send 0 on", "is not from 1"}, BadLine{"NoState", "send 12", "on or off is missing"},
        BadLine{"WrongState", "send 12 maybe", "in place of \"maybe\""},
        BadLine{"DataTooLarge", "send 12 on false 65536", "data 65536"},
        BadLine{"DataNoNumber", "send 12 on false 5x", "no whole number: \"5x\""},
        BadLine{"TooMuch", "send 12 on false 5 6", "too much: \"6\""},
        BadLine{"NegativeTime", "at -1 noise 4", "seconds -1"},
        BadLine{"TimeAlone", "at 2.5", "a statement is missing"},
        BadLine{"IntervalZero", "every 0 noise 4", "seconds 0"},
        BadLine{"NodeWithTime", "at 1 node 3 type 2", "unknown statement \"node\""},
        BadLine{"NodeWithoutType", "node 3", "\"type\""},
        BadLine{"NodeOfNoModel", "node 3 type 13", "no node of type 13"},
        BadLine{"NodeTooLarge", "node 33 type 0", "node number 33"},
        BadLine{"NodeOption", "node 3 type 0 name fast", "too much: \"fast\""},
        BadLine{"OpenQuote", "node 3 type 0 \"Door", "a quote is not closed"},
        BadLine{"UnknownNode", "silent node 9", "the vehicle has no node 9"},
        BadLine{"UnknownInput", "input 3 5 on", "node 3 has no input 5"},
        BadLine{"DelaysTurnedRound", "answer-delay 20 10", "shorter"},
        BadLine{"RefuseOfNothing", "refuse 3 everything", "no query \"everything\""},
        BadLine{"RefuseWithoutKind", "refuse 3", "kind of query is missing"},
        BadLine{"IgnoreOfNothing", "ignore 3 everything", "can't ignore"},
        BadLine{"IgnoreWithoutStep", "ignore 3", "what to ignore is missing"},
        BadLine{"StateAsTooMuch", "state-as 3 65536", "state to tell 65536"},
        BadLine{"ModemAlone", "modem", "what the modem does"}, BadLine{"ModemAndMore", "modem drop it", "it"},
        BadLine{"DenyOfNobody", "deny 9", "no node 9"}, BadLine{"CutOfNobody", "cut 9 1", "no node 9"},
        BadLine{"CutWithoutNumber", "cut 3", "number of data frames"},
        BadLine{"AnswerAsTooMuch", "answer-as 3 65536", "number to give 65536"},
        BadLine{"LateWithoutTime", "node 3 type 2 \"Door\" late", "seconds"},
        BadLine{"LoseWithoutEvery", "lose 3", "\"every\""}, BadLine{"RepeatAlone", "repeat", "seconds is missing"},
        BadLine{"NotANumberTime", "at nan noise 4", "seconds nan"}),
    [](const auto& row) { return row.param.name; });

TEST(Scenario, EveryBadLineIsTold)
{
    std::vector<ScenarioProblem> problems;
    (void)Read("silent 20\nnonsense\n\nsend\n", problems);
    ASSERT_THAT(problems, SizeIs(3));
    EXPECT_EQ(problems[0].line, 1);
    EXPECT_EQ(problems[1].line, 2);
    EXPECT_EQ(problems[2].line, 4);
}

TEST(Scenario, ANodeMayNotStandTwice)
{
    std::vector<ScenarioProblem> problems;
    (void)Read("node 3 type 2\nnode 3 type 5\n", problems);
    ASSERT_THAT(problems, SizeIs(1));
    EXPECT_EQ(problems[0].line, 2);
}

TEST(Scenario, AnActionAfterTheRepeatIsRefused)
{
    std::vector<ScenarioProblem> problems;
    (void)Read("at 60 noise 4\nat 59 noise 4\nrepeat 60\n", problems);
    ASSERT_THAT(problems, SizeIs(1));
    EXPECT_EQ(problems[0].line, 1);
}

TEST(Scenario, NodesReplaceTheDefaultVehicle)
{
    std::vector<ScenarioProblem> problems;
    const auto scenario = Read("silent node 12\nnode 12 type 16 \"Engine bay\" push anonymous\n", problems);
    EXPECT_THAT(problems, IsEmpty());
    ASSERT_THAT(scenario.nodes, SizeIs(1));
    const auto& node = scenario.nodes[0];
    EXPECT_EQ(node.number, 12);
    EXPECT_EQ(node.type, 16);
    EXPECT_EQ(node.name, "Engine bay");
    EXPECT_TRUE(node.pushes);
    EXPECT_TRUE(node.anonymousPing);
    EXPECT_FALSE(node.oldTypeQuery);
}

TEST(Scenario, AnEmptyFileIsTheDefaultVehicle)
{
    std::vector<ScenarioProblem> problems;
    EXPECT_THAT(Read("\n  # nothing\n", problems).nodes, SizeIs(Vehicle::DefaultNodes().size()));
    EXPECT_THAT(problems, IsEmpty());
}

TEST(Scenario, TimesAreKept)
{
    std::vector<ScenarioProblem> problems;
    const auto scenario = Read("at 2.5 noise 1\nevery 0.5 noise 2\nnoise 3\nrepeat 60\n", problems);
    EXPECT_THAT(problems, IsEmpty());
    ASSERT_THAT(scenario.actions, SizeIs(3));
    EXPECT_EQ(scenario.actions[0].when, When::At);
    EXPECT_EQ(scenario.actions[0].seconds, 2.5);
    EXPECT_EQ(scenario.actions[1].when, When::Every);
    EXPECT_EQ(scenario.actions[1].seconds, 0.5);
    EXPECT_EQ(scenario.actions[2].when, When::Start);
    EXPECT_EQ(scenario.repeat, 60);
}

TEST(Scenario, AControlLineHasNoTimeAndABlankOneNoAction)
{
    EXPECT_THROW((void)ParseAction("at 2 noise 4", Vehicle::DefaultNodes()), std::invalid_argument);
    EXPECT_FALSE(ParseAction("  # nothing", Vehicle::DefaultNodes()));
}

TEST(Scenario, TheOnesThatAreShippedAreGood)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(FENRIK_SCENARIO_FOLDER)) {
        std::ifstream file(entry.path());
        std::vector<ScenarioProblem> problems;
        // A file's name tells the network that it is for.
        const bool legacy = entry.path().filename().string().starts_with("legacy");
        (void)Scenario::Parse(file, problems, legacy ? Network::Fenrik98 : Network::Fenrik2000);
        EXPECT_THAT(problems, IsEmpty()) << entry.path();
        ++count;
    }
    EXPECT_GE(count, 5);
}

TEST(Scenario, TheShippedDayHasTheDefaultVehicle)
{
    std::ifstream file(FENRIK_SCENARIO_FOLDER "/day.txt");
    std::vector<ScenarioProblem> problems;
    const auto shipped = Scenario::Parse(file, problems).nodes;
    const auto expected = Vehicle::DefaultNodes();
    ASSERT_EQ(shipped.size(), expected.size());
    for (std::size_t i = 0; i < shipped.size(); ++i) {
        EXPECT_EQ(shipped[i].number, expected[i].number);
        EXPECT_EQ(shipped[i].type, expected[i].type);
        EXPECT_EQ(shipped[i].name, expected[i].name);
        EXPECT_EQ(shipped[i].pushes, expected[i].pushes);
        EXPECT_EQ(shipped[i].memoryOnly, expected[i].memoryOnly);
        EXPECT_EQ(shipped[i].lateSeconds, expected[i].lateSeconds);
    }
}

TEST(Scenario, TheWordsOfANodeAreTaken)
{
    std::vector<ScenarioProblem> problems;
    const auto nodes = Read("node 1 type 6 Climate plain late 2.5\nnode 2 type 0 Old memory old\n", problems).nodes;
    ASSERT_THAT(problems, IsEmpty());
    EXPECT_TRUE(nodes[0].plainFlash);
    EXPECT_EQ(nodes[0].lateSeconds, 2.5);
    EXPECT_FALSE(nodes[0].memoryOnly);
    EXPECT_TRUE(nodes[1].memoryOnly);
    EXPECT_TRUE(nodes[1].oldTypeQuery);
}

}  // namespace
}  // namespace fenrik
