#include "diagnostics/FlashFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The header in one reply ---------------------------------------------------------------------------------------

TEST_F(FlashTest, TheHeaderIsReadInOneReply)
{
    const CNode& node = Mount(3, 6);
    const HeaderRecord record = ReadHeader();
    EXPECT_THAT(heard, ElementsAre("940 0 0 0"));
    EXPECT_EQ(record.nodeNumber, QStringLiteral("3"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
    EXPECT_EQ(record.versionFirst, QStringLiteral("1"));
    EXPECT_EQ(record.versionSecond, QStringLiteral("22"));
    EXPECT_EQ(record.versionThird, QStringLiteral("3"));
    EXPECT_EQ(record.versionFourth, QStringLiteral("9"));
    EXPECT_EQ(record.dateFirst, QStringLiteral("4"));
    EXPECT_EQ(record.dateSecond, QStringLiteral("25"));
    EXPECT_EQ(record.year, QStringLiteral("24"));
    EXPECT_EQ(record.word1, 0x0201);
    EXPECT_EQ(record.word3, 0x0403);
    EXPECT_EQ(record.word5, 0x0605);
    EXPECT_EQ(record.byte7, QStringLiteral("7"));
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
    EXPECT_THAT(host.shown, IsEmpty());
}

TEST_F(FlashTest, TheAnnouncementSaysTheOrderOfWords)
{
    Mount(3, 6);
    bigEndian = true;
    header[14] = 0x07;
    header[15] = 0xD9;
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(record.word1, 0x0102);
    EXPECT_EQ(record.year, QStringLiteral("09"));
}

TEST_F(FlashTest, AHeaderOfNoBytesMeansQueries)
{
    const CNode& node = Mount(3, 6);
    header.clear();
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolQueries);
    EXPECT_EQ(record.nodeNumber, QStringLiteral("3"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("??"));
    EXPECT_THAT(heard, ElementsAre("940 0 0 0"));
}

TEST_F(FlashTest, AShortHeaderFillsItsFirstFields)
{
    Mount(3, 6);
    header.resize(11);
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(record.versionSecond, QStringLiteral("22"));
    EXPECT_EQ(record.versionFirst, QStringLiteral("??"));
    EXPECT_EQ(record.year, QStringLiteral("??"));
    EXPECT_FALSE(Flash::IsHeaderValid(record));
}

struct ShortHeader {
    int bytes;
    int word1;
    const char* nodeCount;
    const char* year;
};

class ShortHeaders : public testing::TestWithParam<ShortHeader> {};

TEST_P(ShortHeaders, LeaveTheFieldsThatTheyEndBefore)
{
    const std::vector<std::uint8_t> bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    HeaderRecord record;
    Flash::DecodeHeader(std::span(bytes).first(std::size_t(GetParam().bytes)), false, record);
    EXPECT_EQ(record.word1, GetParam().word1);
    EXPECT_EQ(record.nodeCount, QLatin1String(GetParam().nodeCount));
    EXPECT_EQ(record.year, QLatin1String(GetParam().year));
}

INSTANTIATE_TEST_SUITE_P(Flash, ShortHeaders,
                         testing::Values(ShortHeader{0, 0, "??", "??"}, ShortHeader{1, 0, "??", "??"},
                                         ShortHeader{2, 0x0201, "??", "??"}, ShortHeader{7, 0x0201, "??", "??"},
                                         ShortHeader{8, 0x0201, "8", "??"}, ShortHeader{15, 0x0201, "8", "??"},
                                         ShortHeader{16, 0x0201, "8", "11"}, ShortHeader{17, 0x0201, "8", "11"}));

TEST_F(FlashTest, ATornHeaderIsAskedForTwiceAndItsMissingBytesAreNotMadeUp)
{
    Mount(3, 6);
    sent = 10;
    const HeaderRecord record = ReadHeader();
    EXPECT_THAT(heard, ElementsAre("940 0 0 0", "940 0 0 0"));
    EXPECT_EQ(record.versionThird, QStringLiteral("3"));
    EXPECT_EQ(record.versionSecond, QStringLiteral("??"));
    EXPECT_FALSE(Flash::IsHeaderValid(record));
}

TEST_F(FlashTest, AHeaderThatIsWholeAtTheSecondAttemptCounts)
{
    Mount(3, 6);
    answer = [this](const Frame& frame) {
        sent = heard.size() == 1 ? 4 : 99;
        return Answer(frame);
    };
    const HeaderRecord record = ReadHeader();
    EXPECT_TRUE(Flash::IsHeaderValid(record));
}

TEST_F(FlashTest, FailuresOfEarlierRequestsDoNotPassForTheNodesAnswer)
{
    const CNode& node = Mount(3, 6);
    answer = [](const Frame&) { return Frames{}; };
    for (int i = 0; i < 3; ++i) {
        CMessage query = Request(940, 1);
        query.ReplyCommand = 903;
        int received = 0;
        bool order = false;
        (void)handler.SendMessageGetByteArr(query, 1, received, order, false, false);
    }
    answer = [this](const Frame& frame) { return Answer(frame); };
    const HeaderRecord record = ReadHeader();
    EXPECT_TRUE(Flash::IsHeaderValid(record));
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
}

TEST_F(FlashTest, AClosedLinkSaysNothingOfTheNode)
{
    const CNode& node = Mount(3, 6);
    host.open = false;
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
    EXPECT_EQ(record.nodeCount, QStringLiteral("??"));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(FlashTest, WithoutAMountTheHeaderIsUnknown)
{
    Select(3, 6);
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(record.nodeNumber, QStringLiteral("??"));
    EXPECT_THAT(heard, IsEmpty());
}

// --- The header byte by byte ---------------------------------------------------------------------------------------

TEST_F(FlashTest, ANodeThatDoesNotGiveItsHeaderIsAskedByteByByte)
{
    const CNode& node = Mount(3, 6);
    AnswerByBytes();
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolImage);
    EXPECT_THAT(heard, ElementsAre("940 0 0 0", "940 0 0 0", "923 1 0 2", "923 1 0 3", "923 1 0 7", "923 1 0 8",
                                   "923 1 0 9", "923 1 0 10", "923 1 0 11", "923 1 0 12", "923 1 0 13"));
    EXPECT_EQ(record.nodeNumber, QStringLiteral("3"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
    EXPECT_EQ(record.versionFirst, QStringLiteral("1"));
    EXPECT_EQ(record.versionSecond, QStringLiteral("22"));
    EXPECT_EQ(record.versionThird, QStringLiteral("3"));
    EXPECT_EQ(record.dateFirst, QStringLiteral("4"));
    EXPECT_EQ(record.dateSecond, QStringLiteral("25"));
    EXPECT_EQ(record.year, QStringLiteral("09"));
    EXPECT_TRUE(Flash::IsHeaderValid(record));

    heard.clear();
    (void)ReadHeader();
    EXPECT_EQ(heard.front(), "923 1 0 2");
}

TEST_F(FlashTest, ARefusalMeansByteByByteAtOnce)
{
    const CNode& node = Mount(3, 6);
    AnswerByBytes();
    givesHeader = true;
    granted = false;
    (void)ReadHeader();
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolImage);
    EXPECT_EQ(heard[1], "923 1 0 2");
}

TEST_F(FlashTest, ANodeThatIsKnownForQueriesIsNotAskedByteByByte)
{
    CNode& node = Mount(3, 6);
    AnswerByBytes();
    node.setIProtocol(CNode::kProtocolQueries);
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolQueries);
    EXPECT_THAT(heard, ElementsAre("940 0 0 0", "940 0 0 0"));
    EXPECT_FALSE(Flash::IsHeaderValid(record));
}

TEST_F(FlashTest, ByteAnswersAreTheLowBytesOfTheirData)
{
    MountByteByByte();
    memory[3] = 0x1208;
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
}

TEST_F(FlashTest, AMissingByteLeavesItsFieldUnknownAfterThreeTries)
{
    MountByteByByte();
    memory.erase(2);
    memory.erase(12);
    const HeaderRecord record = ReadHeader();
    EXPECT_THAT(heard, SizeIs(7 + 2 * 3));
    EXPECT_EQ(record.nodeNumber, QStringLiteral("??"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
    EXPECT_EQ(record.year, QStringLiteral("??"));
}

TEST_F(FlashTest, HalfAYearIsNoYear)
{
    MountByteByByte();
    memory.erase(13);
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(record.year, QStringLiteral("??"));
}

TEST_F(FlashTest, TheThirdMissingByteEndsTheReading)
{
    MountByteByByte();
    memory.erase(2);
    memory.erase(7);
    memory.erase(9);
    const HeaderRecord record = ReadHeader();
    EXPECT_EQ(heard.back(), "923 1 0 9");
    EXPECT_EQ(record.versionSecond, QStringLiteral("22"));
    EXPECT_EQ(record.dateFirst, QStringLiteral("??"));
}

TEST_F(FlashTest, AMountThatEndsBetweenTwoBytesEndsTheReading)
{
    MountByteByByte();
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{Frame{950, false, false, 8}};
    };
    (void)ReadHeader();
    EXPECT_THAT(heard, ElementsAre("923 1 0 2"));
}

class ShownFields : public testing::TestWithParam<QString HeaderRecord::*> {};

TEST_P(ShownFields, MakeAHeaderInvalidWhileTheyAreUnknown)
{
    HeaderRecord record;
    for (const auto field : {&HeaderRecord::nodeNumber, &HeaderRecord::nodeCount, &HeaderRecord::versionFirst,
                             &HeaderRecord::versionSecond, &HeaderRecord::versionThird, &HeaderRecord::dateFirst,
                             &HeaderRecord::dateSecond, &HeaderRecord::year})
        record.*field = QStringLiteral("0");
    EXPECT_TRUE(Flash::IsHeaderValid(record));
    record.*GetParam() = QStringLiteral("??");
    EXPECT_FALSE(Flash::IsHeaderValid(record));
}

INSTANTIATE_TEST_SUITE_P(Flash, ShownFields,
                         testing::Values(&HeaderRecord::nodeNumber, &HeaderRecord::nodeCount,
                                         &HeaderRecord::versionFirst, &HeaderRecord::versionSecond,
                                         &HeaderRecord::versionThird, &HeaderRecord::dateFirst,
                                         &HeaderRecord::dateSecond, &HeaderRecord::year));

}  // namespace
}  // namespace fenrik
