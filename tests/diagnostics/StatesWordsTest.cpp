#include "diagnostics/StatesFixture.h"

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// The states of all inputs, or whether each output is on, in order.
std::vector<int> Inputs(const CNode& node)
{
    std::vector<int> values;
    for (int number = 1; number <= node.CDigitalInputs().Count(); ++number)
        values.push_back(node.CDigitalInputs()[number].State());
    return values;
}

std::vector<int> Outputs(const CNode& node)
{
    std::vector<int> values;
    for (int number = 1; number <= node.COutputs().Count(); ++number)
        values.push_back(node.COutputs()[number].Resolved() ? 1 : 0);
    return values;
}

struct InputWord {
    const char* name;
    int type;
    int word;
    int data;
    std::vector<int> states;
};

class InputWords : public StatesTest, public testing::WithParamInterface<InputWord> {};

TEST_P(InputWords, AreSpreadFromTheLowestBitOn)
{
    const CNode& node = Mount(3, GetParam().type);
    states.ApplyInputWord(GetParam().word, GetParam().data);
    EXPECT_EQ(Inputs(node), GetParam().states);
    EXPECT_THAT(errors.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    States, InputWords,
    testing::Values(InputWord{"OneBit", 0, 0, 0x8005, {1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}},
                    InputWord{"TwoBits", 2, 0, 0b11100100, {0, 1, 2, 3}},
                    InputWord{"TwoBitsSecondWord", 5, 1, 0xC001, {0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 3}},
                    InputWord{"MoreBitsThanInputs", 6, 0, 0xFFFF, {1, 1, 1}},
                    InputWord{"AWordOfInputsThatDoNotExist", 0, 1, 0xFFFF, std::vector<int>(16, 0)},
                    InputWord{"TheLastWord", 5, 3, 0xFFFF, std::vector<int>(16, 0)},
                    InputWord{"ANodeWithoutInputs", 1, 0, 0xFFFF, {}},
                    InputWord{"ANodeOfUnknownType", CNode::kUnknownType, 0, 0xFFFF, {}}),
    [](const auto& row) { return row.param.name; });

TEST_F(StatesTest, ANewInputWordReplacesTheOldBits)
{
    const CNode& node = Mount(3, 2);
    states.ApplyInputWord(0, 0xFF);
    states.ApplyInputWord(0, 0b01100100);
    EXPECT_EQ(Inputs(node), (std::vector<int>{0, 1, 2, 1}));
}

TEST_F(StatesTest, EveryOutputWordTurnsOnTheOutputsOfItsBits)
{
    const CNode& node = Mount(3, 16);
    for (int data = 0; data <= 0xFFFF; ++data) {
        states.ApplyOutputWord(1, data);
        int back = 0;
        for (int bit = 0; bit < 16; ++bit)
            back |= node.COutputs()[17 + bit].Resolved() ? 1 << bit : 0;
        ASSERT_EQ(back, data);
    }
    EXPECT_FALSE(node.COutputs()[16].Resolved());
}

// Halving rounds towards zero, so a word that came with a sign shows the bits of its amount.
TEST_F(StatesTest, AnOutputWordWithASignShowsItsAmount)
{
    const CNode& node = Mount(3, 10);
    for (int data = 1; data <= 0x8000; ++data) {
        states.ApplyOutputWord(0, -data);
        int back = 0;
        for (int bit = 0; bit < 16; ++bit)
            back |= node.COutputs()[1 + bit].Resolved() ? 1 << bit : 0;
        ASSERT_EQ(back, data);
    }
}

struct OutputWord {
    const char* name;
    int type;
    int word;
    std::vector<int> outputs;
};

class OutputWords : public StatesTest, public testing::WithParamInterface<OutputWord> {};

TEST_P(OutputWords, OfOutputsThatDoNotExistAreLeftOut)
{
    const CNode& node = Mount(3, GetParam().type);
    states.ApplyOutputWord(GetParam().word, 0xFFFF);
    EXPECT_EQ(Outputs(node), GetParam().outputs);
    EXPECT_THAT(errors.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(States, OutputWords,
                         testing::Values(OutputWord{"Eight", 6, 0, std::vector<int>(8, 1)},
                                         OutputWord{"EightSecondWord", 6, 1, std::vector<int>(8, 0)},
                                         OutputWord{"ThirdWord", 16, 2, std::vector<int>(32, 0)},
                                         OutputWord{"None", 5, 0, {}}),
                         [](const auto& row) { return row.param.name; });

TEST_F(StatesTest, ANodeThatCanNotBeIdentifiedTakesNoWord)
{
    Mount(3, CNode::kUnknownType);
    states.ApplyInputWord(0, 1);
    states.ApplyOutputWord(0, 1);
    EXPECT_THAT(window.verified, SizeIs(2));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(StatesTest, WordsWithoutAMountGoNowhere)
{
    const CNode& node = Select(3, 6);
    states.ApplyInputWord(0, 0xFF);
    states.ApplyOutputWord(0, 0xFF);
    EXPECT_EQ(Inputs(node), (std::vector<int>(3, 0)));
    EXPECT_EQ(Outputs(node), (std::vector<int>(8, 0)));
}

// --- Words that the node sends by itself ---------------------------------------------------------------------------

TEST_F(StatesTest, SentWordsAreAppliedDrawnAndNotListed)
{
    Mount(3, 5);
    OpenBroadcasting();
    EXPECT_TRUE(states.TakeMessage(Request(921, 0xFFFF, 1, 0)));
    EXPECT_EQ(Shown(3), QStringLiteral("00000000????????"));
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_THAT(window.uiStates, IsEmpty());
}

TEST_F(StatesTest, TheFlagsOfASentWordAreItsNumber)
{
    const CNode& node = Mount(3, 16);
    OpenBroadcasting();
    EXPECT_TRUE(states.TakeMessage(Request(922, 1, 1, 0)));
    EXPECT_TRUE(node.COutputs()[17].Resolved());
    EXPECT_EQ(Shown(7), QStringLiteral("00000000000000001000000000000000"));

    // Input words 2 and 3 belong to inputs that this model does not have.
    EXPECT_TRUE(states.TakeMessage(Request(921, 0xFFFF, 0, 1)));
    EXPECT_TRUE(states.TakeMessage(Request(921, 0xFFFF, 1, 1)));
    EXPECT_EQ(Inputs(node), (std::vector<int>(16, 0)));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(StatesTest, SentWordsOfANodeThatHasNoSuchPointsAreTakenAllTheSame)
{
    Mount(3, 1);
    OpenBroadcasting();
    EXPECT_TRUE(states.TakeMessage(Request(921, 0xFFFF)));
    EXPECT_TRUE(states.TakeMessage(Request(922, 0xFFFF)));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(StatesTest, SentWordsAreAppliedWhileAnotherViewIsOpen)
{
    const CNode& node = Mount(3, 6);
    OpenBroadcasting();
    window.displayState = 0;
    graphics.ClearFace();
    const QString before = face.Text();
    EXPECT_TRUE(states.TakeMessage(Request(921, 5)));
    EXPECT_EQ(Inputs(node), (std::vector<int>{1, 0, 1}));
    EXPECT_EQ(face.Text(), before);

    window.displayState = NodeViewHost::kViewStates;
    states.Open();
    EXPECT_EQ(Shown(3), QStringLiteral("101"));
}

TEST_F(StatesTest, SentWordsBelongToTheMountedNodeWhicheverIsSelected)
{
    const CNode& mounted = Mount(3, 6);
    OpenBroadcasting();
    const CNode& other = Select(4, 6);
    EXPECT_TRUE(states.TakeMessage(Request(921, 5)));
    EXPECT_EQ(Inputs(mounted), (std::vector<int>{1, 0, 1}));
    EXPECT_EQ(Inputs(other), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(Shown(3), QStringLiteral("000"));
}

TEST_F(StatesTest, WordsSentBeforeTheModeIsKnownAreListedLikeAnyMessage)
{
    const CNode& node = Mount(3, 6);
    EXPECT_FALSE(states.TakeMessage(Request(921, 5)));
    EXPECT_FALSE(states.TakeMessage(Request(922, 5)));
    EXPECT_EQ(Inputs(node), (std::vector<int>{0, 0, 0}));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(StatesTest, OtherMessagesOfANodeThatSendsByItselfAreListed)
{
    Mount(3, 6);
    OpenBroadcasting();
    EXPECT_FALSE(states.TakeMessage(Request(100)));
    EXPECT_FALSE(states.TakeMessage(Request(988, 3)));
}

TEST_F(StatesTest, AMessageGivenToANodeThatIsPolledPollsIt)
{
    Mount(3, 6);
    OpenPolled();
    const CMessage message = Request(100);
    states.GetInputArray(&message);
    states.GetOutputArray(&message);
    EXPECT_THAT(heard, testing::ElementsAre("921 0 0 0", "922 0 0 0"));
}

TEST_F(StatesTest, AMessageGivenToANodeThatSendsByItselfIsAppliedOrIgnored)
{
    const CNode& node = Mount(3, 6);
    OpenBroadcasting();
    const CMessage word = Request(922, 3);
    states.UpdateStatesArray(&word);
    const CMessage other = Request(100, 0xFFFF);
    states.UpdateStatesArray(&other);
    EXPECT_EQ(Outputs(node), (std::vector<int>{1, 1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Inputs(node), (std::vector<int>{0, 0, 0}));
    EXPECT_THAT(heard, IsEmpty());
}

}  // namespace
}  // namespace fenrik
