#include "model/NodeReplies.h"

#include "model/CNode.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using ByteList = std::vector<std::uint8_t>;
using testing::ElementsAre;
using testing::IsEmpty;

/// Bytes 1, 2, 3 ... `count`.
ByteList Counting(int count)
{
    ByteList bytes;
    for (int i = 1; i <= count; ++i)
        bytes.push_back(std::uint8_t(i));
    return bytes;
}

TEST(NodeInfoReply, HasItsFieldsAtTheirPlaces)
{
    const ByteList reply = Counting(22);
    const auto info = NodeReplies::DecodeNodeInfo(reply);
    EXPECT_EQ(info.nameRef, 0x0201);
    EXPECT_EQ(info.commentRef, 0x0403);
    EXPECT_EQ(info.type, 5);
    EXPECT_EQ(info.number, 7);
    EXPECT_EQ(info.position, 11);
    EXPECT_EQ(info.extra[0], 15);
    EXPECT_EQ(info.extra[7], 22);
}

TEST(NodeInfoReply, LacksWhatItIsTooShortFor)
{
    const ByteList reply = Counting(6);
    const auto info = NodeReplies::DecodeNodeInfo(reply);
    EXPECT_EQ(info.type, 5);
    EXPECT_FALSE(info.number.has_value());
    EXPECT_FALSE(info.position.has_value());
    EXPECT_FALSE(info.extra[0].has_value());
    EXPECT_FALSE(NodeReplies::DecodeNodeInfo(Counting(1)).nameRef.has_value());
}

TEST(StringReply, KeepsEveryByte)
{
    const ByteList reply{'A', 0, 0xE9, ' '};
    const QString text = NodeReplies::DecodeString(reply);
    ASSERT_EQ(text.size(), 4);
    EXPECT_EQ(text[1], QChar(0));
    EXPECT_EQ(text[2], QChar(0xE9));
    EXPECT_TRUE(NodeReplies::DecodeString({}).isEmpty());
}

TEST(RelationshipReply, AlwaysEndsIn255)
{
    EXPECT_EQ(NodeReplies::DecodeRelationship(ByteList{254, 1, 2}), QByteArray("\xFE\x01\x02\xFF"));
    EXPECT_EQ(NodeReplies::DecodeRelationship(ByteList{1, 255}), QByteArray("\x01\xFF"));
    EXPECT_EQ(NodeReplies::DecodeRelationship({}), QByteArray());
}

TEST(WordListReply, DropsALastSingleByte)
{
    EXPECT_THAT(NodeReplies::DecodeWords(Counting(5)), ElementsAre(0x0201, 0x0403));
    EXPECT_THAT(NodeReplies::DecodeBigEndianWords(Counting(5)), ElementsAre(0x0102, 0x0304));
    EXPECT_THAT(NodeReplies::DecodeWords({}), IsEmpty());
    EXPECT_THAT(NodeReplies::DecodeWords(Counting(1)), IsEmpty());
}

// --- Inputs --------------------------------------------------------------------------------------------------------

class InputReply : public testing::Test {
protected:
    InputReply()
    {
        node.setTypeID(2);
        input.Init(node, 1);
    }
    void Apply(const ByteList& reply) { NodeReplies::ApplyDigitalInput(reply, input); }

    CNode node;
    CDigitalInput input;
};

TEST_F(InputReply, HasItsFieldsAtTheirPlaces)
{
    Apply({0x01, 0x02, 0x03, 0x04, 0x00, 0x01, 0x01, 0x02, 0x05, 0x06, 0x07, 0x08, 0xDC, 0x05});
    EXPECT_EQ(input.NameRef(), 0x0201);
    EXPECT_EQ(input.CommentRef(), 0x0403);
    EXPECT_EQ(input.InCommand(), 0x0102);
    EXPECT_EQ(input.OnExecuteRef(), 0x0605);
    EXPECT_EQ(input.OffExecuteRef(), 0x0807);
    EXPECT_EQ(input.OffDelay(), Fixed4::FromTenThousandths(15000));
}

TEST_F(InputReply, FillsTheFirstFieldsIfItIsShort)
{
    Apply({0x01, 0x02, 0x03, 0x04, 0x00, 0x01, 0x01});
    EXPECT_EQ(input.CommentRef(), 0x0403);
    EXPECT_EQ(input.SwitchType(), 5);
    EXPECT_EQ(input.InCommand(), 0);
    EXPECT_EQ(input.OffDelay(), Fixed4());
}

struct Flags {
    int flags;
    int switchType;
    int threeWay;
    int onState;
};

class InputFlags : public InputReply, public testing::WithParamInterface<Flags> {};

TEST_P(InputFlags, GiveThreeFields)
{
    input.setOnState(77);
    Apply({0, 0, 0, 0, 0, std::uint8_t(GetParam().flags)});
    EXPECT_EQ(input.SwitchType(), GetParam().switchType);
    EXPECT_EQ(input.ThreeWay(), GetParam().threeWay);
    EXPECT_EQ(input.OnState(), GetParam().onState);
}

INSTANTIATE_TEST_SUITE_P(Node, InputFlags,
                         testing::Values(Flags{0b0000'0010, 6, 0, 2}, Flags{0b0000'0110, 6, 0, 1},
                                         Flags{0b0000'1010, 6, 0, 7}, Flags{0b0000'1110, 6, 0, 7},
                                         Flags{0b0000'0000, 6, 0, 17}, Flags{0b0000'0100, 6, 0, 34},
                                         Flags{0b0000'1000, 6, 0, 33},
                                         // The one combination without a meaning changes nothing.
                                         Flags{0b0000'1100, 6, 0, 77}, Flags{0b1000'0001, 5, 1, 17},
                                         Flags{0b0111'0000, 6, 0, 17}));

struct Command {
    int word;
    int kept;
};

class InputCommands : public InputReply, public testing::WithParamInterface<Command> {};

TEST_P(InputCommands, AreKeptUpTo1273)
{
    const int word = GetParam().word;
    Apply({0, 0, 0, 0, 0, 0, std::uint8_t(word >> 8), std::uint8_t(word)});
    EXPECT_EQ(input.InCommand(), GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(Node, InputCommands,
                         testing::Values(Command{0, 0}, Command{1, 1}, Command{1273, 1273}, Command{1274, 0},
                                         Command{0x7FFF, 0}, Command{0x8000, 0}, Command{0xFFFF, 0}));

TEST(InputReplies, SayWhetherTheInputIsAnalog)
{
    EXPECT_FALSE(NodeReplies::IsAnalogInput(Counting(4)).has_value());
    EXPECT_EQ(NodeReplies::IsAnalogInput(ByteList{0, 0, 0, 0, 1}), true);
    EXPECT_EQ(NodeReplies::IsAnalogInput(ByteList{0, 0, 0, 0, 0xFE}), false);
}

TEST(InputReplies, NameAListOfThresholds)
{
    ByteList reply(14, 0);
    reply[12] = 0x34;
    reply[13] = 0x12;
    EXPECT_EQ(NodeReplies::AnalogThresholdList(reply), 0x1234);
    reply.pop_back();
    EXPECT_FALSE(NodeReplies::AnalogThresholdList(reply).has_value());
    EXPECT_FALSE(NodeReplies::AnalogThresholdList(ByteList(14, 0xFF)).has_value());
}

TEST(InputReplies, TellAnInputWithoutConfigurationByEightZeros)
{
    ByteList reply(14, 0);
    reply[5] = 1;
    EXPECT_TRUE(NodeReplies::IsUnconfiguredInput(reply));
    reply[6] = 1;
    EXPECT_FALSE(NodeReplies::IsUnconfiguredInput(reply));
    EXPECT_FALSE(NodeReplies::IsUnconfiguredInput(ByteList(7, 0)));
    EXPECT_TRUE(NodeReplies::IsUnconfiguredInput(ByteList(8, 0)));
}

// --- Outputs -------------------------------------------------------------------------------------------------------

TEST(OutputReply, HasItsFieldsAtTheirPlaces)
{
    COutput output;
    NodeReplies::ApplyOutput(Counting(20), output);
    EXPECT_EQ(output.NameRef(), 0x0201);
    EXPECT_EQ(output.CommentRef(), 0x0403);
    EXPECT_EQ(output.FaultDetectType(), 8);
    EXPECT_EQ(output.RelationshipRef(), 0x0C0B);
    EXPECT_EQ(output.PWMValue(), 13);
    EXPECT_EQ(output.Loadshed(), Fixed4::FromTenThousandths(14000));
    EXPECT_EQ(output.DelayOn(), Fixed4::FromTenThousandths((0x100F) * 5000));
    EXPECT_EQ(output.DelayOff(), Fixed4::FromTenThousandths((0x1211) * 5000));
    EXPECT_TRUE(output.Flashing());
}

TEST(OutputReply, HasNoFlashPatternWithAllOnes)
{
    COutput output;
    output.setFlashing(1);
    NodeReplies::ApplyOutput(ByteList(20, 0xFF), output);
    EXPECT_FALSE(output.Flashing());
    NodeReplies::ApplyOutput(ByteList(20, 0), output);
    EXPECT_TRUE(output.Flashing());
}

TEST(OutputReply, FillsTheFirstFieldsIfItIsShort)
{
    COutput output;
    NodeReplies::ApplyOutput(Counting(15), output);
    EXPECT_EQ(output.Loadshed(), Fixed4::FromTenThousandths(14000));
    EXPECT_EQ(output.DelayOn(), Fixed4());
    EXPECT_FALSE(output.Flashing());
    COutput untouched;
    NodeReplies::ApplyOutput({}, untouched);
    EXPECT_EQ(untouched.NameRef(), 0);
    EXPECT_EQ(untouched.Loadshed(), Fixed4::Whole(-1));
}

// --- The rest of the vocabulary ------------------------------------------------------------------------------------

TEST(CommandSetsReply, IsEmptyBelowSevenBytes)
{
    EXPECT_THAT(NodeReplies::DecodeCommandSets(Counting(6)), IsEmpty());
    const auto sets = NodeReplies::DecodeCommandSets(ByteList{1, 2, 3, 4, 0xFF, 0xFF, 7, 8});
    ASSERT_EQ(sets.size(), 2u);
    EXPECT_EQ(sets[0].first, 0x0102);
    EXPECT_EQ(sets[0].second, 0x0304);
    EXPECT_EQ(sets[1].first, CommandSet::kEmpty);
    EXPECT_EQ(NodeReplies::DecodeCommandSets(Counting(7)).size(), 1u);
}

TEST(RelationshipLevelReply, MixesItsByteOrders)
{
    const auto level = NodeReplies::DecodeRelationshipLevel(Counting(11));
    EXPECT_EQ(level.word1, 0x0201);
    EXPECT_EQ(level.word5, 0x0506);
    EXPECT_EQ(level.word7, 0x0708);
    EXPECT_EQ(level.word9, 0x0A09);
    EXPECT_EQ(NodeReplies::DecodeRelationshipLevel(Counting(8)).word9, 0);
}

struct PatternLength {
    int bytes;
    std::vector<std::uint8_t> odd;
    std::vector<std::uint8_t> even;
};

class PatternLengths : public testing::TestWithParam<PatternLength> {};

TEST_P(PatternLengths, AreHalvedWithTiesToEven)
{
    const auto pattern = NodeReplies::DecodeFlashPattern(Counting(GetParam().bytes));
    EXPECT_EQ(pattern.odd, GetParam().odd);
    EXPECT_EQ(pattern.even, GetParam().even);
}

INSTANTIATE_TEST_SUITE_P(FlashPattern, PatternLengths,
                         testing::Values(PatternLength{0, {}, {}}, PatternLength{8, {}, {}}, PatternLength{9, {}, {}},
                                         PatternLength{10, {9}, {10}}, PatternLength{11, {9, 11}, {10, 0}},
                                         PatternLength{12, {9, 11}, {10, 12}}, PatternLength{13, {9, 11}, {10, 12}},
                                         PatternLength{15, {9, 11, 13, 15}, {10, 12, 14, 0}}));

TEST(SleepSettingsReply, HasItsFieldsAtTheirPlaces)
{
    const auto settings = NodeReplies::DecodeSleepSettings(Counting(15));
    EXPECT_EQ(settings.word1, 0x0201);
    EXPECT_EQ(settings.word3, 0x0403);
    EXPECT_EQ(settings.byte5, 5);
    EXPECT_EQ(settings.byte6, 6);
    EXPECT_THAT(settings.words7, ElementsAre(0x0807, 0x0A09, 0x0C0B, 0x0E0D));
}

}  // namespace
}  // namespace fenrik
