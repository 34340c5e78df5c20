#include "simulator/NodeAnswers.h"
#include "simulator/ConfigMaker.h"
#include "simulator/Fixtures.h"
#include "simulator/QueryReplies.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Frame kRefusal{903, false, false, 0};

Frame Query(int data)
{
    return {940, false, false, std::uint16_t(data)};
}

/// A node of two inputs and two outputs whose every field can be told apart.
NodeConfig SmallNode()
{
    NodeConfig node;
    node.number = 7;
    node.type = 10;
    node.nameRef = 0x0102;
    node.commentRef = 0x0304;
    node.position = 9;
    node.extraInfo = {1, 2, 3, 4, 5, 6, 7, 8};
    node.header = {{0x1122, 0x3344, 0x5566}, 0x77, 8, {2, 3, 4, 5}, 11, 30, 2021, false};
    node.versions = {0x0103, 0, 0, 0x0205};
    node.texts = {{1, "Abc"}, {2, ""}, {0x012C, "far"}, {0x002C, "near"}};
    node.relationships = {{1, {254, 0, 9, 255}}, {300, {254, 0, 1, 240, 255}}};
    node.lists = {{1, {0x0102, 3}}, {256, {7}}};
    InputConfig input;
    input.nameRef = 0x0A0B;
    input.commentRef = 0x0C0D;
    input.command = 0x0123;
    input.switchType = 1;
    input.onState = 34;
    input.threeWay = true;
    input.offDelay = 1250;
    input.onListRef = 0x0506;
    node.inputs = {input, {}};
    OutputConfig output;
    output.nameRef = 0x0A0B;
    output.commentRef = 0x0C0D;
    output.faultDetectType = 3;
    output.relationshipRef = 0x0E0F;
    output.pwmHalves = 151;
    output.shedLevel = 3;
    output.delayOn = 0x0102;
    output.delayOff = 5;
    node.outputs = {output, output};
    node.outputs[1].flashing = true;
    return node;
}

struct ReplyRow {
    const char* name;
    int data;
    int page;
    ByteString bytes;
};

void PrintTo(const ReplyRow& row, std::ostream* out)
{
    *out << row.name;
}

class Replies : public testing::TestWithParam<ReplyRow> {};

TEST_P(Replies, HaveTheirFieldsInPlace)
{
    const auto reply = MakeQueryReply(SmallNode(), std::uint16_t(GetParam().data), std::uint8_t(GetParam().page));
    ASSERT_TRUE(reply);
    EXPECT_FALSE(reply->bigEndian);
    EXPECT_EQ(reply->bytes, GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Simulator, Replies,
    testing::Values(
        ReplyRow{"Header", 0x0000, 0, {0x22, 0x11, 0x44, 0x33, 0x66, 0x55, 0x77, 8, 5, 4, 3, 2, 30, 11, 0xE5, 0x07}},
        ReplyRow{"Info", 0x0001, 0, {2, 1, 4, 3, 10, 0, 7, 0, 0, 0, 9, 0, 7, 1, 1, 2, 3, 4, 5, 6, 7, 8}},
        ReplyRow{"String", 0x0A01, 0, {'A', 'b', 'c'}}, ReplyRow{"EmptyString", 0x0A02, 0, {}},
        ReplyRow{"StringOfPageZero", 0x0A2C, 0, {'n', 'e', 'a', 'r'}},
        ReplyRow{"StringOfPageOne", 0x0A2C, 1, {'f', 'a', 'r'}}, ReplyRow{"Relationship", 0x0B01, 0, {254, 0, 9, 255}},
        ReplyRow{"RelationshipOfPageOne", 0x0B2C, 1, {254, 0, 1, 240, 255}}, ReplyRow{"List", 0x0101, 0, {2, 1, 3, 0}},
        ReplyRow{"ListOfPageOne", 0x0100, 1, {7, 0}},
        ReplyRow{"Input", 0x0200, 0, {0x0B, 0x0A, 0x0D, 0x0C, 0, 0x85, 0x01, 0x23, 6, 5, 0xFF, 0xFF, 0xE2, 0x04}},
        ReplyRow{"InputOutOfUse", 0x0201, 0, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        ReplyRow{"Output", 0x0300, 0, {0x0B, 0x0A, 0x0D, 0x0C, 1, 0,    0, 3, 0,    0,
                                       0x0F, 0x0E, 75,   117,  2, 0x01, 5, 0, 0xFF, 0xFF}},
        ReplyRow{"FlashingOutput", 0x0301, 0, {0x0B, 0x0A, 0x0D, 0x0C, 2, 0,    0, 3, 0, 0,
                                               0x0F, 0x0E, 75,   117,  2, 0x01, 5, 0, 1, 0}},
        ReplyRow{"CommandSet", 0x0801, 0, {1, 0x23, 0, 1, 255, 255, 255, 255}},
        ReplyRow{"Level", 0x0C01, 0, {1, 0, 50, 0, 0, 179, 0, 183, 255, 255, 1}},
        ReplyRow{"Threshold", 0x0D01, 0, {0x01, 0x2F, 0xB6, 0x03, 0x84, 0x03, 0}},
        ReplyRow{"FlashPattern", 0x0E01, 0, {1, 0, 100, 0, 0, 0, 2, 0, 20, 30, 21, 31}},
        ReplyRow{"AnalogCommands", 0x0002, 0, {}},
        ReplyRow{"Sleep", 0x0004, 0, {0x58, 2, 30, 0, 1, 4, 179, 0, 209, 0, 0, 0, 120, 0, 2}}),
    [](const auto& row) { return row.param.name; });

class RefusedQueries : public testing::TestWithParam<int> {};

TEST_P(RefusedQueries, AreAnsweredWithARefusal)
{
    NodeAnswers answers(SmallNode());
    EXPECT_THAT(answers.AnswerQuery(Query(GetParam()), {}), ElementsAre(kRefusal));
}

INSTANTIATE_TEST_SUITE_P(Simulator, RefusedQueries,
                         testing::Values(0x0003, 0x0005, 0x0100, 0x0202, 0x0302, 0x0400, 0x0800, 0x0803, 0x0A03, 0x0B03,
                                         0x0C02, 0x0D03, 0x0E03, 0xFF00));

TEST(QueryReplies, AnAnalogInputNamesItsThresholds)
{
    auto node = SmallNode();
    node.inputs[0].analog = true;
    node.inputs[0].thresholdListRef = 0x0304;
    const auto input = MakeQueryReply(node, 0x0200, 0);
    EXPECT_THAT(input->bytes, ElementsAre(0x0B, 0x0A, 0x0D, 0x0C, 1, 0, 0xFF, 0x03, 0x01, 0x23, 0x48, 5, 0x04, 0x03));
    EXPECT_THAT(MakeQueryReply(node, 0x0002, 0)->bytes, ElementsAre(0x01, 0x23));
}

TEST(QueryReplies, OnlyTheLargeModelHasProperties)
{
    auto node = SmallNode();
    node.type = 16;
    EXPECT_THAT(MakeQueryReply(node, 0x0005, 0)->bytes, SizeIs(34));
}

TEST(QueryReplies, ABigEndianHeaderTurnsItsWordsAround)
{
    auto node = SmallNode();
    node.header.bigEndian = true;
    const auto reply = MakeQueryReply(node, 0, 0);
    EXPECT_TRUE(reply->bigEndian);
    EXPECT_THAT(reply->bytes, ElementsAre(0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 8, 5, 4, 3, 2, 30, 11, 7, 0xE5));
    NodeAnswers answers(node);
    EXPECT_EQ(answers.AnswerQuery(Query(0), {})[0], (Frame{903, true, true, 16}));
}

class NodeAnswersTest : public testing::Test {
protected:
    /// Asks and has the whole reply arrive.
    std::vector<Frame> Ask(const Frame& question)
    {
        auto frames = answers.AnswerQuery(question, faults);
        answers.QueryArrived();
        return frames;
    }

    NodeAnswers answers{SmallNode()};
    NodeFaults faults;
    const Frame selectPageOne{940, false, true, 1};
    const Frame askText = Query(0x0A2C);
    const std::vector<Frame> near{{903, true, false, 4}, {950, true, false, 0x656E}, {950, true, false, 0x7261}};
    const std::vector<Frame> far{{903, true, false, 3}, {950, true, false, 0x6166}, {950, true, false, 0x0072}};
};

TEST_F(NodeAnswersTest, AnArrayIsAnnouncedAndComesTwoBytesAFrameLowByteFirst)
{
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, AnEmptyArrayIsAnnouncedAlone)
{
    EXPECT_THAT(Ask(Query(0x0A02)), ElementsAre(Frame{903, true, false, 0}));
}

TEST_F(NodeAnswersTest, APageHoldsForOneQuery)
{
    EXPECT_THAT(Ask(selectPageOne), ElementsAre(Frame{903, true, false, 0}));
    EXPECT_EQ(Ask(askText), far);
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, APageSelectedTwiceHoldsForOneQuery)
{
    (void)Ask(selectPageOne);
    (void)Ask(selectPageOne);
    EXPECT_EQ(Ask(askText), far);
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, APageHoldsWhileItsReplyIsLost)
{
    (void)Ask(selectPageOne);
    EXPECT_EQ(answers.AnswerQuery(askText, faults), far);
    EXPECT_EQ(Ask(askText), far);
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, APageSelectedAfterALostReplyHolds)
{
    (void)answers.AnswerQuery(askText, faults);
    (void)Ask(selectPageOne);
    EXPECT_EQ(Ask(askText), far);
}

TEST_F(NodeAnswersTest, APageHoldsThroughARefusalAndAReplyCutShort)
{
    (void)Ask(selectPageOne);
    faults.refused = {0x0A00};
    EXPECT_THAT(Ask(askText), ElementsAre(kRefusal));
    faults.refused.clear();
    faults.cutAfter = 1;
    EXPECT_THAT(Ask(askText), ElementsAre(far[0], far[1]));
    faults.cutAfter = 2;
    EXPECT_EQ(Ask(askText), far);
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, ANodeThatRestartsForgetsThePage)
{
    (void)Ask(selectPageOne);
    answers.Restart();
    EXPECT_EQ(Ask(askText), near);
}

TEST_F(NodeAnswersTest, OddLengthsCostTheLastByteOfAnEvenReply)
{
    faults.odd = true;
    EXPECT_THAT(Ask(askText), ElementsAre(Frame{903, true, false, 3}, near[1], Frame{950, true, false, 'a'}));
    EXPECT_THAT(Ask(Query(0x0A01)), SizeIs(3));
    EXPECT_THAT(Ask(Query(0x0A02)), ElementsAre(Frame{903, true, false, 0}));
}

TEST_F(NodeAnswersTest, MemoryIsReadByAddressesFromZero)
{
    EXPECT_THAT(answers.AnswerMemoryRead({923, true, false, 2}), ElementsAre(Frame{950, false, false, 7}));
    EXPECT_THAT(answers.AnswerMemoryRead({923, true, false, 14}), ElementsAre(Frame{950, false, false, 10}));
    EXPECT_THAT(answers.AnswerMemoryRead({923, true, false, 40000}), ElementsAre(Frame{950, false, false, 255}));
    EXPECT_THAT(answers.AnswerMemoryRead({923, false, false, 2}), IsEmpty());
}

TEST_F(NodeAnswersTest, VersionsAreToldByStateExtendedAndData)
{
    EXPECT_THAT(answers.AnswerVersion({937, false, false, 0}), ElementsAre(Frame{950, false, false, 0x0103}));
    EXPECT_THAT(answers.AnswerVersion({937, false, true, 0}), ElementsAre(Frame{950, false, true, 0}));
    EXPECT_THAT(answers.AnswerVersion({937, true, false, 0}), ElementsAre(Frame{950, false, false, 0}));
    EXPECT_THAT(answers.AnswerVersion({937, true, false, 1}), ElementsAre(Frame{950, true, false, 0x0205}));
    EXPECT_THAT(answers.AnswerVersion({937, true, false, 2}), ElementsAre(Frame{950, false, false, 0}));
}

TEST(NodeWithMemoryAlone, AnswersNoQueryAndNoPageSelect)
{
    auto config = SmallNode();
    config.answersQueries = false;
    NodeAnswers answers(config);
    EXPECT_THAT(answers.AnswerQuery(Query(1), {}), IsEmpty());
    EXPECT_THAT(answers.AnswerQuery({940, false, true, 1}, {}), IsEmpty());
    EXPECT_THAT(answers.AnswerVersion({937, false, true, 0}), ElementsAre(Frame{950, false, false, 0x0103}));
}

struct FlagRow {
    const char* name;
    int switchType;
    int onState;
    bool threeWay;
    int flags;
};

class InputFlags : public testing::TestWithParam<FlagRow> {};

TEST_P(InputFlags, StandInTheSixthByte)
{
    auto node = SmallNode();
    node.inputs[0].switchType = GetParam().switchType;
    node.inputs[0].onState = GetParam().onState;
    node.inputs[0].threeWay = GetParam().threeWay;
    EXPECT_EQ(MakeQueryReply(node, 0x0200, 0)->bytes[5], GetParam().flags);
}

INSTANTIATE_TEST_SUITE_P(
    Simulator, InputFlags,
    testing::Values(FlagRow{"LatchingGround", 3, 17, false, 0x00}, FlagRow{"MomentaryGround", 2, 17, false, 0x01},
                    FlagRow{"Momentary", 5, 17, false, 0x01}, FlagRow{"Latching", 6, 17, false, 0x00},
                    FlagRow{"Battery", 4, 34, false, 0x04}, FlagRow{"Either", 3, 33, false, 0x08},
                    FlagRow{"NotGround", 3, 2, false, 0x02}, FlagRow{"NotBattery", 3, 1, false, 0x06},
                    FlagRow{"Floating", 3, 7, false, 0x0A}, FlagRow{"ThreeWay", 3, 17, true, 0x80}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
