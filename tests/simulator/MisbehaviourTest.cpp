#include "simulator/SimulationFixture.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Frame kAskInfo{940, false, false, 0x0001};
constexpr Frame kAskPing{901, false, false, 3};
constexpr std::size_t kInfoFrames = 12;  // the announcement and 22 bytes

class MisbehaviourTest : public SimulationTest {
protected:
    void BeginMounted(const std::string& statements, int node = 3, bool isPaced = false)
    {
        Begin("quiet\n" + statements, isPaced);
        (void)Ask({905, true, false, std::uint16_t(node)});
    }
    /// What comes back within half a second.
    std::vector<Frame> Ask(const Frame& question)
    {
        Receive(question);
        RunTo(time.now + 0.5);
        return line.TakeFrames();
    }
};

TEST_F(MisbehaviourTest, AWellBehavedNodeAnswersAnArrayInFullAfterTwoMilliseconds)
{
    BeginMounted("");
    Receive(kAskInfo);
    RunTo(time.now + 0.0019);
    EXPECT_THAT(line.bytes, IsEmpty());
    RunTo(time.now + 0.0002);
    const auto frames = line.TakeFrames();
    ASSERT_THAT(frames, SizeIs(kInfoFrames));
    EXPECT_EQ(frames[0], (Frame{903, true, false, 22}));
}

TEST_F(MisbehaviourTest, APacedReplyTakesTheLinesTime)
{
    BeginMounted("", 3, true);
    const double begun = time.now;
    Receive(kAskInfo);
    const auto bytes = kInfoFrames * Frame::kSize;
    RunTo(begun + 0.002 + double(bytes - 6) / 960.0);
    EXPECT_LT(line.bytes.size(), bytes);
    EXPECT_GT(line.bytes.size(), bytes - 12);
    RunTo(begun + 0.002 + double(bytes + 1) / 960.0);
    EXPECT_EQ(line.bytes.size(), bytes);
}

TEST_F(MisbehaviourTest, EveryThirdFrameOfAReplyIsLost)
{
    BeginMounted("");
    Control("lose every 3");
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames - kInfoFrames / 3));
    EXPECT_THAT(text.str(), HasSubstr("LOST"));
}

TEST_F(MisbehaviourTest, EverySecondReplyIsLostWhole)
{
    BeginMounted("");
    Control("lose-reply every 2");
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
    EXPECT_THAT(Ask(kAskInfo), IsEmpty());
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
    Control("lose-reply off");
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
}

TEST_F(MisbehaviourTest, APageOutlivesALostReplyAndNoArrivedOne)
{
    BeginMounted("", 7);
    const Frame select{940, false, true, 1};
    const Frame askText{940, false, false, 0x0A00};
    (void)Ask(select);
    const auto whole = Ask(askText);
    EXPECT_THAT(whole, SizeIs(testing::Gt(1u)));
    EXPECT_THAT(Ask(askText), ElementsAre(Frame{903, false, false, 0}));
    (void)Ask(select);
    Control("lose every 2");
    EXPECT_THAT(Ask(askText), SizeIs(testing::Lt(whole.size())));
    Control("lose off");
    EXPECT_EQ(Ask(askText), whole);
}

TEST_F(MisbehaviourTest, AnswersComeAsLateAsAsked)
{
    BeginMounted("");
    Control("answer-delay 900");
    Receive(kAskInfo);
    RunTo(time.now + 0.899);
    EXPECT_THAT(line.bytes, IsEmpty());
    RunTo(time.now + 0.002);
    EXPECT_THAT(line.TakeFrames(), SizeIs(kInfoFrames));
}

TEST_F(MisbehaviourTest, ANodeAnswersPingAndMountUnderAnotherNumber)
{
    Begin("quiet\nanswer-as 3 5\n");
    EXPECT_THAT(Ask(kAskPing), ElementsAre(Frame{902, false, false, 5}));
    EXPECT_THAT(Ask({905, true, false, 3}), ElementsAre(Frame{903, true, false, 5}));
    Control("answer-as 3 off");
    EXPECT_THAT(Ask(kAskPing), ElementsAre(Frame{902, false, false, 3}));
}

TEST_F(MisbehaviourTest, ANodeThatStaysAnonymousIsMountedUnderItsOwnNumber)
{
    Begin("quiet\nanswer-as 3 12345\n");
    EXPECT_THAT(Ask(kAskPing), ElementsAre(Frame{902, false, false, 12345}));
    EXPECT_THAT(Ask({905, true, false, 3}), ElementsAre(Frame{903, true, false, 3}));
}

TEST_F(MisbehaviourTest, AReplyEndsInTheMiddle)
{
    BeginMounted("cut 3 4\n");
    const auto frames = Ask(kAskInfo);
    ASSERT_THAT(frames, SizeIs(5));
    EXPECT_EQ(frames[0], (Frame{903, true, false, 22}));
    Control("cut 3 off");
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
}

TEST_F(MisbehaviourTest, ANodeRefusesTheQueriesThatItIsToldTo)
{
    BeginMounted("refuse 3 info\n");
    EXPECT_THAT(Ask(kAskInfo), ElementsAre(Frame{903, false, false, 0}));
    EXPECT_THAT(Ask({940, false, false, 0x0200}), SizeIs(8));
    Control("refuse 3 all");
    EXPECT_THAT(Ask({940, false, false, 0x0200}), ElementsAre(Frame{903, false, false, 0}));
    Control("refuse 3 off");
    EXPECT_THAT(Ask(kAskInfo), SizeIs(kInfoFrames));
}

TEST_F(MisbehaviourTest, LengthsAreOdd)
{
    BeginMounted("odd 3\n");
    const auto frames = Ask(kAskInfo);
    ASSERT_THAT(frames, SizeIs(kInfoFrames));
    EXPECT_EQ(frames[0], (Frame{903, true, false, 21}));
    EXPECT_LT(frames.back().data, 256);
}

TEST_F(MisbehaviourTest, ANodeThatRestartsWhileMountedAnswersNoMoreQueries)
{
    BeginMounted("");
    Control("restart 3");
    EXPECT_THAT(line.TakeFrames(), ElementsAre(Frame{988, true, false, 3}));
    EXPECT_THAT(Ask(kAskInfo), IsEmpty());
    EXPECT_THAT(Ask({923, true, false, 2}), IsEmpty());
    EXPECT_THAT(Ask({937, false, false, 0}), IsEmpty());
}

TEST_F(MisbehaviourTest, OnlyTheMountedNodeIsAsked)
{
    Begin("quiet\n");
    for (const auto command : {923, 937, 940})
        EXPECT_THAT(Ask({std::uint16_t(command), true, false, 2}), IsEmpty());
    (void)Ask({905, true, false, 3});
    EXPECT_THAT(Ask({923, true, false, 2}), ElementsAre(Frame{950, false, false, 3}));
    (void)Ask({905, true, false, 7});
    EXPECT_THAT(Ask({923, true, false, 2}), ElementsAre(Frame{950, false, false, 7}));
}

}  // namespace
}  // namespace fenrik
