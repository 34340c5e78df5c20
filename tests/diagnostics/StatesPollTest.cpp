#include "diagnostics/StatesFixture.h"

#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

TEST_F(StatesTest, ANodeThatSendsByItselfIsAskedOnceAndNeverPolled)
{
    Mount(3, 0);
    questionAnswer = {Frame{903, true, true, 0}};
    states.Open();
    EXPECT_EQ(states.StateUpdateMode(), States::kBroadcast);
    EXPECT_THAT(heard, ElementsAre("921 0 1 0"));
    EXPECT_THAT(window.uiStates, IsEmpty());

    states.Open();
    states.TakeMessage(Request(100));
    EXPECT_THAT(heard, SizeIs(1));
}

TEST_F(StatesTest, ANodeThatDoesNotIsPolledAtOnce)
{
    Mount(3, 0);
    questionAnswer = {Frame{903, true, false, 0}};
    states.Open();
    EXPECT_EQ(states.StateUpdateMode(), States::kPolled);
    EXPECT_THAT(heard, ElementsAre("921 0 1 0", "921 0 0 0", "922 0 0 0", "922 1 0 0"));
    EXPECT_THAT(window.uiStates, ElementsAre(8, 4, 8, 4));
}

TEST_F(StatesTest, ANodeThatDoesNotAnswerTheQuestionIsPolledAtOnce)
{
    Mount(3, 6);
    states.Open();
    EXPECT_EQ(states.StateUpdateMode(), States::kPolled);
    EXPECT_THAT(heard, ElementsAre("921 0 1 0", "921 0 1 0", "921 0 1 0", "921 0 0 0", "922 0 0 0"));
}

TEST_F(StatesTest, TheQuestionIsTriedThreeTimes)
{
    Mount(3, 6);
    answer = [](const Frame&) { return Frames{}; };
    states.UpdateStatesArray();
    EXPECT_THAT(heard, ElementsAre("921 0 1 0", "921 0 1 0", "921 0 1 0", "921 0 0 0", "921 0 0 0", "921 0 0 0",
                                   "922 0 0 0", "922 0 0 0", "922 0 0 0"));
}

TEST_F(StatesTest, QuestionPollsAndAnswersAreListed)
{
    Mount(3, 6);
    OpenPolled();
    std::vector<int> shown;
    for (const CMessage& message : host.shown)
        shown.push_back(message.Command);
    EXPECT_THAT(shown, ElementsAre(921, 903, 921, 950, 922, 950));
}

TEST_F(StatesTest, TheNodesTypeIsMadeSureOfBeforeTheQuestion)
{
    Mount(3, 0);
    window.onVerify = [this] { EXPECT_THAT(heard, IsEmpty()); };
    questionAnswer = {Frame{903, true, true, 0}};
    states.UpdateStatesArray();
    EXPECT_THAT(window.verified, ElementsAre(Pair(3, false)));
}

TEST_F(StatesTest, NothingIsAskedWhileAnotherViewIsOpen)
{
    Mount(3, 0);
    window.displayState = 0;
    states.UpdateStatesArray();
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(states.StateUpdateMode(), States::kNotAsked);
}

TEST_F(StatesTest, NothingIsAskedOfANodeThatIsSelectedButNotMounted)
{
    Mount(3, 0);
    Select(4, 0);
    states.Open();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(StatesTest, NothingIsAskedWithoutAnyNode)
{
    states.Open();
    states.UpdateStatesArray();
    states.GetInputArray();
    states.GetOutputArray();
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(StatesTest, ANodeWithoutPointsIsAskedForTheModeOnly)
{
    Mount(3, 1);
    OpenPolled();
    states.UpdateStatesArray();
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(states.StateUpdateMode(), States::kPolled);
}

TEST_F(StatesTest, AMissingReplyLeavesTheWordAndTheNextWordIsAskedAllTheSame)
{
    CNode& node = Mount(3, 5);
    inputWords = {0xFFFF, 0xFFFF};
    OpenPolled();
    answer = [this](const Frame& frame) { return frame.state ? Frames{Frame{950, false, false, 0}} : Frames{}; };
    states.UpdateStatesArray();
    EXPECT_THAT(heard, ElementsAre("921 0 0 0", "921 0 0 0", "921 0 0 0", "921 1 0 0"));
    EXPECT_EQ(node.CDigitalInputs()[8].State(), 3);
    EXPECT_EQ(node.CDigitalInputs()[9].State(), 0);
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_EQ(window.uiStates.back(), 4);
}

TEST_F(StatesTest, APollDoesNotStartInsideAPoll)
{
    Mount(3, 6);
    OpenPolled();
    window.onVerify = [this] { states.UpdateStatesArray(); };
    states.UpdateStatesArray();
    EXPECT_THAT(heard, ElementsAre("921 0 0 0", "922 0 0 0"));
}

TEST_F(StatesTest, TheNextPollRunsAfterOneThatFailed)
{
    Mount(3, 6);
    OpenPolled();
    window.onVerify = [] { throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("Type mismatch")); };
    states.UpdateStatesArray();
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("States:UpdateStatesArray"));

    window.onVerify = [] {};
    states.UpdateStatesArray();
    EXPECT_THAT(heard, ElementsAre("921 0 0 0", "922 0 0 0"));
}

struct ArrayError {
    const char* name;
    void (States::*get)(const CMessage*);
    const char* where;
};

class ArrayErrors : public StatesTest, public testing::WithParamInterface<ArrayError> {};

TEST_P(ArrayErrors, AreReportedAndTheWindowIsReadyAgain)
{
    Mount(3, 0);
    window.onVerify = [] { throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("Type mismatch")); };
    isQuestion = false;
    (states.*GetParam().get)(nullptr);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kTypeMismatch);
    EXPECT_EQ(errors.reports[0].where, QLatin1String(GetParam().where));
    EXPECT_THAT(window.uiStates, ElementsAre(8, 4));
}

INSTANTIATE_TEST_SUITE_P(States, ArrayErrors,
                         testing::Values(ArrayError{"Inputs", &States::GetInputArray, "States:GetInputArray"},
                                         ArrayError{"Outputs", &States::GetOutputArray, "States:GetOutputArray"}),
                         [](const auto& row) { return row.param.name; });

// --- A mount that ends inside --------------------------------------------------------------------------------------

TEST_F(StatesTest, AnAnswerThatComesAfterTheMountHasEndedDecidesNothing)
{
    Mount(3, 0);
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{Frame{903, true, true, 0}};
    };
    states.Open();
    EXPECT_EQ(states.StateUpdateMode(), States::kNotAsked);
    EXPECT_THAT(heard, SizeIs(1));
}

TEST_F(StatesTest, AMountThatEndsWithoutAnAnswerDoesNotEndInPolling)
{
    Mount(3, 0);
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{};
    };
    states.Open();
    EXPECT_EQ(states.StateUpdateMode(), States::kNotAsked);
    EXPECT_EQ(heard.back(), "921 0 1 0");
}

TEST_F(StatesTest, AMountThatEndsDuringAPollEndsThePoll)
{
    CNode& node = Mount(3, 5);
    OpenPolled();
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{Frame{950, false, false, 0xFFFF}};
    };
    states.UpdateStatesArray();
    EXPECT_THAT(heard, ElementsAre("921 0 0 0"));
    EXPECT_EQ(node.CDigitalInputs()[1].State(), 0);
    EXPECT_EQ(states.StateUpdateMode(), States::kNotAsked);
    EXPECT_EQ(window.uiStates.back(), 4);
}

TEST_F(StatesTest, AMountThatEndsWhileTheTypeIsAskedForEndsEverything)
{
    Mount(3, 0);
    window.onVerify = [this] { Restart(); };
    states.Open();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(StatesTest, TheNextMountIsAskedAnew)
{
    Mount(3, 0);
    OpenBroadcasting();
    Restart();
    EXPECT_EQ(states.StateUpdateMode(), States::kNotAsked);

    system.MountNode(3);
    isQuestion = true;
    states.UpdateStatesArray();
    EXPECT_EQ(heard.front(), "921 0 1 0");
}

TEST_F(StatesTest, AFullRefreshAsksForTheModeAgain)
{
    Mount(3, 0);
    OpenBroadcasting();
    isQuestion = true;
    states.RefreshFrame(true);
    EXPECT_THAT(heard, ElementsAre("921 0 1 0"));

    states.RefreshFrame(false);
    EXPECT_THAT(heard, SizeIs(1));
}

TEST_F(StatesTest, AFullRefreshWithoutAMountAsksNothing)
{
    Select(3, 0);
    states.RefreshFrame(true);
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(Shown(1), QStringLiteral("Inputs"));
}

// --- What paces the poll -------------------------------------------------------------------------------------------

struct Passing {
    const char* name;
    int command;
    bool polls;
};

class PassingMessages : public StatesTest, public testing::WithParamInterface<Passing> {};

TEST_P(PassingMessages, PaceThePollAndStayInTheList)
{
    commands.SetAnalogCommand(500, true);
    Mount(3, 6);
    OpenPolled();
    EXPECT_FALSE(states.TakeMessage(Request(GetParam().command, 3)));
    EXPECT_THAT(heard, SizeIs(GetParam().polls ? 2 : 0));
}

TEST_P(PassingMessages, AskForTheModeWhenItIsNotKnown)
{
    commands.SetAnalogCommand(500, true);
    Mount(3, 6);
    questionAnswer = {Frame{903, true, true, 0}};
    EXPECT_FALSE(states.TakeMessage(Request(GetParam().command, 3)));
    EXPECT_THAT(heard, SizeIs(GetParam().polls ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(Rules, PassingMessages,
                         testing::Values(Passing{"Plain", 100, true}, Passing{"Internal", 980, true},
                                         Passing{"LastOfTheTable", 1279, true}, Passing{"BeyondTheTable", 1280, false},
                                         Passing{"Analog", 500, false}, Passing{"InputWord", 921, false},
                                         Passing{"OutputWord", 922, false},
                                         Passing{"NodeThatHasRestarted", 988, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(StatesTest, WithoutAMountTrafficAsksNothingAndIsListed)
{
    Select(3, 0);
    EXPECT_FALSE(states.TakeMessage(Request(100)));
    EXPECT_FALSE(states.TakeMessage(Request(921, 0xFFFF)));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(StatesTest, ASentCommandPollsANodeThatHasToBePolled)
{
    Mount(3, 6);
    states.CommandSent();
    EXPECT_THAT(heard, IsEmpty());

    OpenPolled();
    states.CommandSent();
    EXPECT_THAT(heard, ElementsAre("921 0 0 0", "922 0 0 0"));

    window.displayState = 0;
    states.CommandSent();
    EXPECT_THAT(heard, SizeIs(2));
}

// --- Numbers of words ----------------------------------------------------------------------------------------------

struct WordCount {
    const char* name;
    int inputs;
    int bits;
    int words;
};

class WordCounts : public testing::TestWithParam<WordCount> {};

TEST_P(WordCounts, FollowFromTheBits)
{
    EXPECT_EQ(States::InputWords(GetParam().inputs, GetParam().bits), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(Inputs, WordCounts,
                         testing::Values(WordCount{"None", 0, 1, 0}, WordCount{"One", 1, 1, 1},
                                         WordCount{"SixteenOfOneBit", 16, 1, 1}, WordCount{"Seventeen", 17, 1, 2},
                                         WordCount{"SixteenOfTwoBits", 16, 2, 2},
                                         WordCount{"ThirtyTwoOfTwoBits", 32, 2, 4},
                                         WordCount{"NoMoreThanFour", 48, 2, 4},
                                         WordCount{"LargestNumberOfBits", 32767, 1, 4}),
                         [](const auto& row) { return row.param.name; });

TEST(States, MoreBitsThanACountHoldsAreAnOverflow)
{
    try {
        (void)States::InputWords(16384, 2);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kOverflow);
    }
}

TEST(States, MoreThanSixteenOutputsTakeTwoWordsAndNeverMore)
{
    EXPECT_EQ(States::OutputWords(0), 1);
    EXPECT_EQ(States::OutputWords(16), 1);
    EXPECT_EQ(States::OutputWords(17), 2);
    EXPECT_EQ(States::OutputWords(33), 2);
}

}  // namespace
}  // namespace fenrik
