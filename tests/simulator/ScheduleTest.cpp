#include "simulator/Schedule.h"

#include <gmock/gmock.h>
#include <limits>
#include <sstream>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleTest : public testing::Test {
protected:
    static Schedule Of(const std::string& text)
    {
        std::istringstream in(text);
        std::vector<ScenarioProblem> problems;
        const auto scenario = Scenario::Parse(in, problems);
        EXPECT_THAT(problems, IsEmpty());
        return Schedule(scenario);
    }
    /// Noise counts tell the actions apart.
    static std::vector<int> Due(Schedule& schedule, double now)
    {
        std::vector<int> counts;
        for (const auto& action : schedule.Due(now))
            counts.push_back(action.count);
        return counts;
    }
};

TEST_F(ScheduleTest, ActionsComeInOrderOfTime)
{
    auto schedule = Of("at 2 noise 2\nnoise 9\nat 1 noise 1\n");
    EXPECT_THAT(Due(schedule, 0), ElementsAre(9));
    EXPECT_DOUBLE_EQ(schedule.NextDue(), 1);
    EXPECT_THAT(Due(schedule, 5), ElementsAre(1, 2));
    EXPECT_EQ(schedule.NextDue(), std::numeric_limits<double>::infinity());
}

TEST_F(ScheduleTest, ActionsOfOneMomentComeInOrderOfTheFile)
{
    auto schedule = Of("at 1 noise 3\nat 1 noise 1\nat 1 noise 2\n");
    EXPECT_THAT(Due(schedule, 1), ElementsAre(3, 1, 2));
}

TEST_F(ScheduleTest, EveryComesFirstAfterItsInterval)
{
    auto schedule = Of("every 0.5 noise 1\n");
    EXPECT_THAT(Due(schedule, 0.4), IsEmpty());
    EXPECT_THAT(Due(schedule, 1.6), ElementsAre(1, 1, 1));
}

TEST_F(ScheduleTest, RepeatBringsTheTimedActionsAgainAndTheFirstOnesNot)
{
    auto schedule = Of("noise 9\nat 1 noise 1\nrepeat 3\n");
    EXPECT_THAT(Due(schedule, 0), ElementsAre(9));
    EXPECT_THAT(Due(schedule, 7), ElementsAre(1, 1, 1));
}

}  // namespace
}  // namespace fenrik
