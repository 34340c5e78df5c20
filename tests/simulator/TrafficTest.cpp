#include "simulator/Traffic.h"
#include "simulator/BusCommands.h"
#include "simulator/Day.h"
#include "simulator/Fixtures.h"

#include <gmock/gmock.h>
#include <map>
#include <set>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class TrafficTest : public testing::Test {
protected:
    std::vector<Frame> RunTo(double until)
    {
        std::vector<Frame> all;
        for (; now <= until; now = std::max(traffic.NextDue(), now + 0.001))
            for (const auto& frame : traffic.Due(now))
                all.push_back(frame);
        return all;
    }
    static int Count(const std::vector<Frame>& frames, int command)
    {
        return int(std::ranges::count(frames, command, &Frame::command));
    }

    Vehicle vehicle{Vehicle::DefaultNodes()};
    Traffic traffic{vehicle, 1};
    double now = 0;
};

TEST_F(TrafficTest, EveryNodeButTheLateOneAnnouncesItselfAtTheStart)
{
    std::vector<int> nodes;
    for (const auto& frame : RunTo(1))
        if (frame.command == 988)
            nodes.push_back(frame.data);
    EXPECT_THAT(nodes, ElementsAre(1, 2, 3, 5, 6, 7, 8));
}

TEST_F(TrafficTest, ALateNodeAnnouncesItselfAfterItsTime)
{
    EXPECT_EQ(Count(RunTo(4.1), 988), 7);
    std::vector<int> nodes;
    for (const auto& frame : RunTo(4.2))
        if (frame.command == 988)
            nodes.push_back(frame.data);
    EXPECT_THAT(nodes, ElementsAre(4));
}

TEST_F(TrafficTest, TheSyncComesEveryTwoAndAHalfSeconds)
{
    EXPECT_EQ(Count(RunTo(2.4), 980), 0);
    const auto frames = RunTo(10.2);
    EXPECT_EQ(Count(frames, 980), 4);
    EXPECT_THAT(frames, testing::Contains(Frame{980, false, true, 1}));
}

TEST_F(TrafficTest, AWholeDayUsesEveryCommand)
{
    std::set<int> heard;
    for (const auto& frame : RunTo(kDaySeconds))
        heard.insert(frame.command);
    for (const auto& command : PlainCommands())
        EXPECT_TRUE(heard.contains(command.number)) << command.name;
    for (const auto& command : AnalogCommands())
        EXPECT_TRUE(heard.contains(command.number)) << command.name;
    EXPECT_TRUE(heard.contains(983));
}

TEST_F(TrafficTest, TheDayBeginsAgain)
{
    const int horn = CommandNumber("Electric Horn");
    EXPECT_EQ(Count(RunTo(kDaySeconds), horn), 2);
    EXPECT_EQ(Count(RunTo(2 * kDaySeconds), horn), 2);
}

TEST_F(TrafficTest, TheStarterMakesTheVoltageSagAndNodesShed)
{
    std::map<int, std::set<int>> levels;  // by node
    for (const auto& frame : RunTo(20))
        if (frame.command == 981)
            levels[frame.data >> 8].insert(frame.data & 0xFF);
    EXPECT_THAT(levels, SizeIs(6)) << "the nodes that have outputs";
    EXPECT_THAT(levels[1], ElementsAre(0, 1, 2, 3));
}

TEST_F(TrafficTest, TheBatteryChargesWhenTheEngineRuns)
{
    const int battery = CommandNumber("Battery Voltage");
    std::vector<int> values;
    for (const auto& frame : RunTo(30))
        if (frame.command == battery)
            values.push_back(frame.data);
    EXPECT_EQ(values.front(), 126);
    EXPECT_LT(*std::ranges::min_element(values), 100);
    EXPECT_EQ(values.back(), 139);
}

TEST_F(TrafficTest, ATemperatureDriftsUpwards)
{
    const int coolant = CommandNumber("Coolant Temperature");
    std::vector<int> values;
    for (const auto& frame : RunTo(100))
        if (frame.command == coolant)
            values.push_back(frame.data);
    EXPECT_NEAR(values.front(), 18, 2);
    EXPECT_GT(values.back(), 55);
    EXPECT_LT(values.back(), 86);
}

TEST_F(TrafficTest, AnalogValuesMayBeNegative)
{
    const int outside = CommandNumber("Outside Temperature");
    int reports = 0;
    for (const auto& frame : RunTo(10)) {
        if (frame.command == outside) {
            EXPECT_LT(std::int16_t(frame.data), 0);
            ++reports;
        }
    }
    EXPECT_GT(reports, 0);
}

TEST_F(TrafficTest, InputsAndOutputsMoveAlongWithTheDay)
{
    const auto before = vehicle.Node(1)->OutputWord(0);
    (void)RunTo(20);
    EXPECT_NE(vehicle.Node(1)->OutputWord(0), before);
    EXPECT_NE(vehicle.Node(1)->InputWord(0), 0);
}

TEST(Day, ItsStepsAreInOrderAndWithinTheDay)
{
    double last = 0;
    for (const auto& step : Day()) {
        EXPECT_GE(step.seconds, last) << step.name;
        last = step.seconds;
    }
    EXPECT_LT(last, kDaySeconds);
}

TEST(Day, EverythingThatIsSwitchedOnIsSwitchedOffAgain)
{
    std::map<std::string_view, bool> state;
    for (const auto& step : Day()) {
        if (step.kind != DayStep::Kind::Command)
            continue;
        EXPECT_NE(state[step.name], step.on) << step.name << " at " << step.seconds;
        state[step.name] = step.on;
    }
    for (const auto& [name, on] : state)
        EXPECT_FALSE(on) << name;
}

}  // namespace
}  // namespace fenrik
