#include "ScriptedNode.h"
#include "model/NodeReplies.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Sent = ScriptedNode::Sent;

class NodeQueriesTest : public ScriptedNodeTest {
protected:
    NodeQueriesTest() { Node().setTypeID(2); }

    void Answer(int data, const ByteList& bytes) { peer.answers[data].bytes = bytes; }
};

struct Question {
    const char* name;
    int data;
    std::function<void(CNode&)> ask;
};

class Questions : public NodeQueriesTest, public testing::WithParamInterface<Question> {};

TEST_P(Questions, TravelAsOneFrame)
{
    Answer(GetParam().data, ByteList(4, 0));
    GetParam().ask(Node());
    EXPECT_THAT(peer.sent, ElementsAre(Sent{940, 0, 0, GetParam().data}));
    EXPECT_THAT(host.shown, IsEmpty());
}

void AskNodeInfo(CNode& node)
{
    std::int32_t name = 0;
    std::int32_t comment = 0;
    std::int16_t type = 0;
    std::uint8_t position = 0;
    node.GetNodeInfo(name, comment, type, position);
}

INSTANTIATE_TEST_SUITE_P(
    CNode, Questions,
    testing::Values(Question{"NodeInfo", 0x0001, AskNodeInfo},
                    Question{"AnalogCommands", 0x0002, [](CNode& node) { node.GetAnalogCommands(); }},
                    Question{"SleepSettings", 0x0004, [](CNode& node) { (void)node.GetSleepSettings(); }},
                    Question{"Properties", 0x0005, [](CNode& node) { node.GetNodeSpecificProperties(); }},
                    Question{"ListOfIndexes", 0x0142, [](CNode& node) { node.GetListOfIndexes(0x42); }},
                    Question{"InputInfo", 0x0203, [](CNode& node) { node.GetInputInfo(4); }},
                    Question{"OutputInfo", 0x030B, [](CNode& node) { node.GetOutputInfo(12); }},
                    Question{"CommandSets", 0x0807, [](CNode& node) { node.GetCommandSets(7); }},
                    // Counted from 1, so that 256 is still on the first page.
                    Question{"LastCommandSets", 0x0800, [](CNode& node) { node.GetCommandSets(256); }},
                    Question{"String", 0x0AFF, [](CNode& node) { node.GetString(255); }},
                    Question{"Relationship", 0x0B05, [](CNode& node) { node.GetRelationship(5); }},
                    Question{"RelationshipLevel", 0x0C06, [](CNode& node) { (void)node.GetRelationshipLevel(6); }},
                    Question{"AnalogThreshold", 0x0D07, [](CNode& node) { node.GetAnalogThreshold(7); }},
                    Question{"FlashPattern", 0x0E08, [](CNode& node) { (void)node.GetFlashPattern(8); }}),
    [](const auto& row) { return row.param.name; });

class LargeReferences : public NodeQueriesTest, public testing::WithParamInterface<Question> {};

TEST_P(LargeReferences, SelectTheirPageFirst)
{
    Answer(GetParam().data, ByteList(4, 0));
    GetParam().ask(Node());
    EXPECT_THAT(peer.sent, ElementsAre(Sent{940, 0, 1, 1}, Sent{940, 0, 0, GetParam().data}));
}

INSTANTIATE_TEST_SUITE_P(
    CNode, LargeReferences,
    testing::Values(Question{"String", 0x0A2C, [](CNode& node) { node.GetString(300); }},
                    Question{"ListOfIndexes", 0x0100, [](CNode& node) { node.GetListOfIndexes(256); }},
                    Question{"CommandSets", 0x0801, [](CNode& node) { node.GetCommandSets(257); }},
                    Question{"Relationship", 0x0BFF, [](CNode& node) { node.GetRelationship(511); }},
                    Question{"RelationshipLevel", 0x0C00, [](CNode& node) { (void)node.GetRelationshipLevel(256); }}),
    [](const auto& row) { return row.param.name; });

TEST_F(NodeQueriesTest, ARelationshipIsGivenUpWithoutItsPage)
{
    peer.onFrame = [this](const Sent& frame) { peer.silent = frame.extended == 1; };
    Answer(0x0B2C, {1, 255});
    EXPECT_TRUE(Node().GetRelationship(300).isEmpty());
    EXPECT_THAT(peer.sent, ElementsAre(Sent{940, 0, 1, 1}, Sent{940, 0, 1, 1}, Sent{940, 0, 1, 1}));
}

TEST_F(NodeQueriesTest, AStringIsAskedForEvenWithoutItsPage)
{
    peer.onFrame = [this](const Sent& frame) { peer.silent = frame.extended == 1; };
    Answer(0x0A2C, {'H', 'i'});
    EXPECT_EQ(Node().GetString(300), QStringLiteral("Hi"));
}

TEST_F(NodeQueriesTest, NodeInfoGoesPastTheSetterOfTheType)
{
    Output(1).setName(QStringLiteral("Horn"));
    Answer(1, {1, 2, 3, 4, 13, 0, 9, 0, 0, 0, 44, 0, 0, 0, 91, 92, 93, 94, 95, 96, 97, 98});
    std::int32_t name = 0;
    std::int32_t comment = 0;
    std::int16_t type = 0;
    std::uint8_t position = 0;
    EXPECT_EQ(Node().GetNodeInfo(name, comment, type, position), 22);
    EXPECT_EQ(name, 0x0201);
    EXPECT_EQ(comment, 0x0403);
    EXPECT_EQ(type, 13);
    EXPECT_EQ(position, 44);
    EXPECT_EQ(Node().typeID(), 13);
    EXPECT_EQ(Node().TypeName(), QStringLiteral("Petite 4x12"));
    EXPECT_EQ(Output(1).Name(), QStringLiteral("Horn"));
    EXPECT_EQ(Node().number(), 9);
    EXPECT_EQ(Node().NodeNameRef(), 0x0201);
    EXPECT_EQ(Node().CommentsRef(), 0x0403);
    EXPECT_THAT(Node().ExtraInfo(), ElementsAre(91, 92, 93, 94, 95, 96, 97, 98));
}

TEST_F(NodeQueriesTest, NodeInfoWithoutAReplyGivesDefaultsAndChangesNothing)
{
    std::int32_t name = 1;
    std::int32_t comment = 1;
    std::int16_t type = 1;
    std::uint8_t position = 1;
    EXPECT_EQ(Node().GetNodeInfo(name, comment, type, position), -2);
    EXPECT_EQ(name, 0);
    EXPECT_EQ(comment, 0);
    EXPECT_EQ(type, 254);
    EXPECT_EQ(position, 0);
    EXPECT_EQ(Node().typeID(), 2);
    EXPECT_EQ(Node().number(), 2);
    EXPECT_EQ(peer.sent.size(), 3u);
}

TEST_F(NodeQueriesTest, AnInputWithoutConfigurationLosesWhatItHad)
{
    Input(1).setName(QStringLiteral("Door"));
    Input(1).setInCommand(5);
    ByteList reply(14, 0);
    reply[0] = 7;
    Answer(0x0200, reply);
    Node().GetInputInfo(1);
    EXPECT_EQ(Input(1).Name(), QStringLiteral("Input 1"));
    EXPECT_EQ(Input(1).InCommand(), 0);
    EXPECT_EQ(Input(1).ThreeWay(), 99);
    EXPECT_EQ(Input(1).NameRef(), 0xFFFF);
}

TEST_F(NodeQueriesTest, AnAnalogInputIsLeftAloneAndItsThresholdsAreAskedFor)
{
    Input(1).setInCommand(5);
    ByteList reply(14, 1);
    reply[12] = 0x2C;
    Answer(0x0200, reply);
    Answer(0x012C, {3, 0, 9, 0, 1});
    Answer(0x0D03, ByteList(7, 1));
    Answer(0x0D09, ByteList(7, 1));
    Node().GetInputInfo(1);
    EXPECT_EQ(Input(1).InCommand(), 5);
    EXPECT_EQ(Input(1).NameRef(), 0xFFFF);
    EXPECT_THAT(peer.sent, ElementsAre(Sent{940, 0, 0, 0x0200}, Sent{940, 0, 1, 1}, Sent{940, 0, 0, 0x012C},
                                       Sent{940, 0, 0, 0x0D03}, Sent{940, 0, 0, 0x0D09}));
}

TEST_F(NodeQueriesTest, AnAnalogInputWithoutThresholdsIsOneQuestion)
{
    ByteList reply(14, 0xFF);
    Answer(0x0200, reply);
    Node().GetInputInfo(1);
    EXPECT_EQ(peer.sent.size(), 1u);
}

TEST_F(NodeQueriesTest, TheUserNeedNotWaitForTheEndOfALongListOfThresholds)
{
    ByteList reply(14, 1);
    Answer(0x0200, reply);
    Answer(0x0101, ByteList(200, 3));
    Answer(0x0D03, ByteList(7, 1));
    int thresholds = 0;
    peer.onFrame = [&](const Sent& frame) {
        if (frame.data == 0x0D03 && ++thresholds == 4)
            window.cancelled = true;
    };
    Node().GetInputInfo(1);
    EXPECT_EQ(thresholds, 4);
}

TEST_F(NodeQueriesTest, PointsThatTheNodeDoesNotHaveTakeNoAnswer)
{
    Answer(0x0204, ByteList(14, 2));
    Answer(0x030C, ByteList(20, 2));
    Node().GetInputInfo(5);
    Node().GetOutputInfo(13);
    EXPECT_EQ(Input(4).NameRef(), 0xFFFF);
    EXPECT_EQ(Output(12).NameRef(), 0);
}

TEST_F(NodeQueriesTest, PropertiesAreThoseOfOneModel)
{
    Answer(5, ByteList(30, 7));
    EXPECT_THAT(Node().GetNodeSpecificProperties(), IsEmpty());
    Node().setTypeID(16);
    EXPECT_EQ(Node().GetNodeSpecificProperties().size(), 30u);
}

// --- Memory --------------------------------------------------------------------------------------------------------

TEST_F(NodeQueriesTest, MemoryIsReadOneByteAtATime)
{
    peer.memory = {10, 11, 12, 13};
    std::uint8_t value = 0;
    EXPECT_TRUE(Node().GetData(CNode::kFromNode, 3, value));
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(Node().GetData(CNode::kFromRelay, 1, value));
    EXPECT_EQ(value, 10);
    EXPECT_THAT(peer.sent, ElementsAre(Sent{923, 1, 0, 2}, Sent{923, 1, 0, 0}));
}

TEST_F(NodeQueriesTest, MemoryIsAskedForTwice)
{
    std::uint8_t value = 9;
    EXPECT_FALSE(Node().GetData(CNode::kFromNode, 3, value));
    EXPECT_EQ(value, 0);
    EXPECT_EQ(peer.sent.size(), 2u);
}

TEST_F(NodeQueriesTest, MemoryHasNoOtherSources)
{
    peer.memory = ByteList(10, 7);
    for (const int mode : {0, 4, -1, CNode::kFromFile}) {
        std::uint8_t value = 9;
        EXPECT_FALSE(Node().GetData(mode, 3, value)) << mode;
        EXPECT_EQ(value, 0);
    }
    EXPECT_THAT(peer.sent, IsEmpty());
}

TEST_F(NodeQueriesTest, AFileSendsNothingAndNeverFails)
{
    const NodeImage image(QByteArray("\x01\x02\x03"));
    Node().setNodeFile(&image);
    std::uint8_t value = 0;
    EXPECT_TRUE(Node().GetData(CNode::kFromFile, 3, value));
    EXPECT_EQ(value, 3);
    for (const int position : {0, 4, -1, 40000}) {
        EXPECT_TRUE(Node().GetData(CNode::kFromFile, position, value));
        EXPECT_EQ(value, 0);
    }
    EXPECT_THAT(peer.sent, IsEmpty());
    Node().setNodeFile(nullptr);
}

// --- Bad answers ---------------------------------------------------------------------------------------------------

struct BadAnswer {
    const char* name;
    ScriptedNode::Answer answer;
    QString text;
};

class BadAnswers : public NodeQueriesTest, public testing::WithParamInterface<BadAnswer> {};

TEST_P(BadAnswers, GiveWhatArrived)
{
    peer.answers[0x0A05] = GetParam().answer;
    EXPECT_EQ(Node().GetString(5), GetParam().text);
}

const ByteList kHello{'H', 'e', 'l', 'l', 'o'};

INSTANTIATE_TEST_SUITE_P(CNode, BadAnswers,
                         testing::Values(BadAnswer{"Good", {.bytes = kHello}, QStringLiteral("Hello")},
                                         BadAnswer{"Refused", {.bytes = kHello, .granted = false}, QString()},
                                         BadAnswer{"OfLengthZero", {.bytes = {}}, QString()},
                                         // Longer than announced: the rest is left on the line.
                                         BadAnswer{"Longer", {.bytes = kHello, .announced = 2}, QStringLiteral("He")},
                                         BadAnswer{"OfAnotherCommand", {.bytes = kHello, .command = 904}, QString()},
                                         BadAnswer{"TooLate", {.bytes = kHello, .delay = 60.0}, QString()}),
                         [](const auto& row) { return row.param.name; });

TEST_F(NodeQueriesTest, ATornAnswerGivesNoMoreThanWasAnnounced)
{
    peer.answers[0x0A05] = {.bytes = kHello, .framesLost = 1};
    EXPECT_LE(Node().GetString(5).size(), 5);
    EXPECT_EQ(handler.CommErrorCount(), 0);
    EXPECT_EQ(peer.sent.size(), 3u);
}

TEST_F(NodeQueriesTest, AnAnnouncementOf65535BytesEndsWithItsFrames)
{
    peer.answers[0x0A05] = {.bytes = kHello, .announced = 65535};
    EXPECT_LE(Node().GetString(5).size(), 65535);
    EXPECT_EQ(handler.CommErrorCount(), 1);
}

TEST_F(NodeQueriesTest, ADoubledAnswerStaysWithinItsLength)
{
    peer.answers[0x0A05] = {.bytes = kHello, .doubled = true};
    EXPECT_LE(Node().GetString(5).size(), 5);
}

TEST_F(NodeQueriesTest, NothingIsAskedWithoutALink)
{
    system.setLink(nullptr);
    EXPECT_TRUE(Node().GetString(5).isEmpty());
    EXPECT_TRUE(Node().GetRelationship(300).isEmpty());
    std::uint8_t value = 0;
    EXPECT_FALSE(Node().GetData(CNode::kFromNode, 3, value));
    CNode alone;
    EXPECT_TRUE(alone.GetString(5).isEmpty());
    EXPECT_THAT(peer.sent, IsEmpty());
}

}  // namespace
}  // namespace fenrik
