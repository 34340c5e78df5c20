#include "simulator/SimNode.h"
#include "simulator/Fixtures.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(SimNode, InputsOfOneBitFillOneWordFromTheLowestBit)
{
    SimNode node({1, 9, "body"});
    node.SetInput(1, true);
    node.SetInput(16, true);
    EXPECT_EQ(node.InputWords(), 1);
    EXPECT_EQ(node.InputWord(0), 0x8001);
}

TEST(SimNode, InputsOfTwoBitsFillTwoWordsAndTellGroundFromBattery)
{
    SimNode node({1, 5, "panel"});
    node.SetInput(1, true);
    node.SetInput(2, true);
    node.SetInput(9, true);
    EXPECT_EQ(node.InputWords(), 2);
    EXPECT_EQ(node.InputWord(0), 0b1001);
    EXPECT_EQ(node.InputWord(1), 0b01);
}

TEST(SimNode, OutputsBeyondSixteenStandInTheSecondWord)
{
    SimNode node({1, 9, "body"});
    node.SetOutput(1, true);
    node.SetOutput(26, true);
    EXPECT_EQ(node.OutputWords(), 2);
    EXPECT_EQ(node.OutputWord(0), 1);
    EXPECT_EQ(node.OutputWord(1), 1 << 9);
}

TEST(SimNode, PointsThatTheModelDoesNotHaveAreIgnored)
{
    SimNode node({1, 1, "display"});
    node.SetInput(1, true);
    node.SetOutput(1, true);
    EXPECT_EQ(node.InputWord(0), 0);
    EXPECT_EQ(node.OutputWord(0), 0);
    EXPECT_FALSE(node.Input(0));
    EXPECT_FALSE(node.Output(99));
}

TEST(SimNode, ItReportsAllWordsOnceAndThenThoseThatChange)
{
    SimNode node({1, 9, "body"});
    EXPECT_THAT(node.ChangedWords(), IsEmpty());
    node.StartPushing();
    EXPECT_THAT(node.ChangedWords(),
                ElementsAre(Frame{921, false, false, 0}, Frame{922, false, false, 0}, Frame{922, true, false, 0}));
    EXPECT_THAT(node.ChangedWords(), IsEmpty());
    node.SetOutput(17, true);
    EXPECT_THAT(node.ChangedWords(), ElementsAre(Frame{922, true, false, 1}));
    node.StopPushing();
    node.SetOutput(17, false);
    EXPECT_THAT(node.ChangedWords(), IsEmpty());
}

TEST(SimNode, ARestartClearsStatesAndCounters)
{
    SimNode node({1, 9, "body"});
    node.SetInput(1, true);
    node.CountCollision();
    node.StartPushing();
    node.Restart();
    EXPECT_EQ(node.InputWord(0), 0);
    EXPECT_EQ(node.Collisions(), 0);
    EXPECT_THAT(node.ChangedWords(), IsEmpty());
}

TEST(SimNode, ATypeWithoutAModelIsRefused)
{
    EXPECT_THROW(SimNode({1, 13, "none"}), std::invalid_argument);
}

}  // namespace
}  // namespace fenrik
