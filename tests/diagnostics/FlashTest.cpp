#include "diagnostics/Flash.h"

#include "diagnostics/NodeViewFixture.h"
#include "platform/Error.h"

#include <map>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

/// A node that gives its header in one reply or byte by byte, and its versions.
class FlashTest : public NodeViewTest {
protected:
    FlashTest()
    {
        window.displayState = NodeViewHost::kViewFlashInfo;
        answer = [this](const Frame& frame) { return Answer(frame); };
    }

    Frames Answer(const Frame& frame)
    {
        if (frame.command == 940)
            return Header();
        if (frame.command == 923)
            return memory.count(frame.data) ? Frames{Frame{950, false, false, memory[frame.data]}} : Frames{};
        if (frame.command != 937)
            return {};
        const auto reply = versions.find(frame.state ? 2 + frame.data : int(frame.extended));
        return reply == versions.end() ? Frames{} : Frames{reply->second};
    }

    Frames Header() const
    {
        if (!givesHeader)
            return {};
        Frames frames{Frame{903, granted, bigEndian, std::uint16_t(header.size())}};
        for (std::size_t i = 0; i < header.size() && i < sent; i += 2) {
            const int second = i + 1 < header.size() ? header[i + 1] : 0;
            frames.push_back(Frame{950, false, false, std::uint16_t(second << 8 | header[i])});
        }
        return frames;
    }

    void AnswerByBytes()
    {
        givesHeader = false;
        memory = {{2, 3}, {3, 8}, {7, 1}, {8, 22}, {9, 3}, {10, 4}, {11, 25}, {12, 0x07}, {13, 0xD9}};
    }

    [[nodiscard]] QString Line(int row) const { return Row(face, row).left(32); }

    std::vector<std::uint8_t> header{1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 22, 1, 25, 4, 0xE8, 0x07};
    bool givesHeader = true;
    bool granted = true;
    bool bigEndian = false;
    std::size_t sent = 99;  // bytes of the header that arrive
    std::map<int, std::uint16_t> memory;
    std::map<int, Frame> versions{{0, Frame{950, false, false, 0x0103}}, {1, Frame{950, false, true, 0}}};
    Flash flash{system, handler, graphics, errors, window};
};

// --- The header in one reply ---------------------------------------------------------------------------------------

TEST_F(FlashTest, TheHeaderIsReadInOneReply)
{
    const CNode& node = Mount(3, 6);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(record.word1, 0x0102);
    EXPECT_EQ(record.year, QStringLiteral("09"));
}

TEST_F(FlashTest, AHeaderOfNoBytesMeansQueries)
{
    const CNode& node = Mount(3, 6);
    header.clear();
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolQueries);
    EXPECT_EQ(record.nodeNumber, QStringLiteral("3"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("??"));
    EXPECT_THAT(heard, ElementsAre("940 0 0 0"));
}

TEST_F(FlashTest, AShortHeaderFillsItsFirstFields)
{
    Mount(3, 6);
    header.resize(11);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_TRUE(Flash::IsHeaderValid(record));
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
}

TEST_F(FlashTest, AClosedLinkSaysNothingOfTheNode)
{
    const CNode& node = Mount(3, 6);
    host.open = false;
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
    EXPECT_EQ(record.nodeCount, QStringLiteral("??"));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(FlashTest, WithoutAMountTheHeaderIsUnknown)
{
    Select(3, 6);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(record.nodeNumber, QStringLiteral("??"));
    EXPECT_THAT(heard, IsEmpty());
}

// --- The header byte by byte ---------------------------------------------------------------------------------------

TEST_F(FlashTest, ANodeThatDoesNotGiveItsHeaderIsAskedByteByByte)
{
    const CNode& node = Mount(3, 6);
    AnswerByBytes();
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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
    flash.GetHeaderInfo(record);
    EXPECT_EQ(heard.front(), "923 1 0 2");
}

TEST_F(FlashTest, ARefusalMeansByteByByteAtOnce)
{
    const CNode& node = Mount(3, 6);
    AnswerByBytes();
    givesHeader = true;
    granted = false;
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolImage);
    EXPECT_EQ(heard[1], "923 1 0 2");
}

TEST_F(FlashTest, ANodeThatIsKnownForQueriesIsNotAskedByteByByte)
{
    CNode& node = Mount(3, 6);
    AnswerByBytes();
    node.setIProtocol(CNode::kProtocolQueries);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolQueries);
    EXPECT_THAT(heard, ElementsAre("940 0 0 0", "940 0 0 0"));
    EXPECT_FALSE(Flash::IsHeaderValid(record));
}

TEST_F(FlashTest, ByteAnswersAreTheLowBytesOfTheirData)
{
    CNode& node = Mount(3, 6);
    node.setIProtocol(CNode::kProtocolImage);
    AnswerByBytes();
    memory[3] = 0x1208;
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
}

TEST_F(FlashTest, AMissingByteLeavesItsFieldUnknownAfterThreeTries)
{
    CNode& node = Mount(3, 6);
    node.setIProtocol(CNode::kProtocolImage);
    AnswerByBytes();
    memory.erase(2);
    memory.erase(12);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_THAT(heard, SizeIs(7 + 2 * 3));
    EXPECT_EQ(record.nodeNumber, QStringLiteral("??"));
    EXPECT_EQ(record.nodeCount, QStringLiteral("8"));
    EXPECT_EQ(record.year, QStringLiteral("??"));
}

TEST_F(FlashTest, HalfAYearIsNoYear)
{
    CNode& node = Mount(3, 6);
    node.setIProtocol(CNode::kProtocolImage);
    AnswerByBytes();
    memory.erase(13);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(record.year, QStringLiteral("??"));
}

TEST_F(FlashTest, TheThirdMissingByteEndsTheReading)
{
    CNode& node = Mount(3, 6);
    node.setIProtocol(CNode::kProtocolImage);
    AnswerByBytes();
    memory.erase(2);
    memory.erase(7);
    memory.erase(9);
    HeaderRecord record;
    flash.GetHeaderInfo(record);
    EXPECT_EQ(heard.back(), "923 1 0 9");
    EXPECT_EQ(record.versionSecond, QStringLiteral("22"));
    EXPECT_EQ(record.dateFirst, QStringLiteral("??"));
}

TEST_F(FlashTest, AMountThatEndsBetweenTwoBytesEndsTheReading)
{
    CNode& node = Mount(3, 6);
    node.setIProtocol(CNode::kProtocolImage);
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{Frame{950, false, false, 8}};
    };
    HeaderRecord record;
    flash.GetHeaderInfo(record);
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

// --- The view ------------------------------------------------------------------------------------------------------

TEST_F(FlashTest, EightLinesTellWhatTheNodeCarries)
{
    Mount(3, 16);
    versions[1].data = 0x0042;
    versions[2] = Frame{950, true, false, 0x0205};
    versions[3] = Frame{950, true, false, 0x0042};
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(1), QStringLiteral("Node Type             Brontes-HC"));
    EXPECT_EQ(Line(2), QStringLiteral("Node Number             03 of 08"));
    EXPECT_EQ(Line(3), QStringLiteral("Network Composer Version01.22.03"));
    EXPECT_EQ(Line(4), QStringLiteral("Compiled                04/25/24"));
    EXPECT_EQ(Line(5), QStringLiteral("Operating System Version     1.3"));
    EXPECT_EQ(Line(6), QStringLiteral("Beta Version                  66"));
    EXPECT_EQ(Line(7), QStringLiteral("PIC Code Version             2.5"));
    EXPECT_EQ(Line(8), QStringLiteral("FPGA Version                  66"));
    EXPECT_EQ(face.DimText().trimmed(), QString());
    EXPECT_THAT(window.uiStates, ElementsAre(8, 4));
    EXPECT_THAT(window.verified, ElementsAre(Pair(3, true)));
    EXPECT_THAT(errors.reports, IsEmpty());
}

struct ChipLines {
    const char* name;
    int type;
    bool pic;
    bool fpga;
};

class Models : public FlashTest, public testing::WithParamInterface<ChipLines> {};

TEST_P(Models, KeepTheLinesOfChipsThatTheyDoNotHaveEmpty)
{
    Mount(3, GetParam().type);
    versions[2] = Frame{950, true, false, 0x0205};
    versions[3] = Frame{950, true, false, 0x0101};
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(6).trimmed(), QString());
    EXPECT_EQ(Line(7).trimmed(), GetParam().pic ? QStringLiteral("PIC Code Version             2.5") : QString());
    EXPECT_EQ(Line(8).trimmed(), GetParam().fpga ? QStringLiteral("FPGA Version                 1.1") : QString());
    EXPECT_EQ(std::count(heard.begin(), heard.end(), "937 1 0 0"), GetParam().pic ? 1 : 0);
    EXPECT_EQ(std::count(heard.begin(), heard.end(), "937 1 0 1"), GetParam().fpga ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Flash, Models,
                         testing::Values(ChipLines{"Brontes", 0, false, false}, ChipLines{"Petite", 2, true, false},
                                         ChipLines{"Brontes04", 9, true, false}, ChipLines{"BrontesHc", 16, true, true},
                                         ChipLines{"Comfort", 6, false, false}),
                         [](const auto& row) { return row.param.name; });

class ReadInFull : public FlashTest, public testing::WithParamInterface<int> {};

TEST_P(ReadInFull, IsNeverAskedAgainAndShowsTheSame)
{
    CNode& node = Mount(3, GetParam());
    versions[1].data = 0x0102;
    versions[2] = Frame{950, true, false, 0x0205};
    versions[3] = Frame{950, true, false, 0x0101};
    flash.DisplayFlashInfo();
    EXPECT_TRUE(node.HeaderInfoAvailable());
    const QString first = face.Text();

    heard.clear();
    window.verified.clear();
    flash.DisplayFlashInfo();
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_THAT(window.verified, IsEmpty());
    EXPECT_EQ(face.Text(), first);
    EXPECT_EQ(window.uiStates, (std::vector<int>{8, 4, 8, 4}));
}

INSTANTIATE_TEST_SUITE_P(Models, ReadInFull, testing::Values(0, 2, 9, 16));

TEST_F(FlashTest, ANodeThatAnswersNothingShowsQuestionMarksAndIsAskedAgain)
{
    CNode& node = Mount(3, 16);
    answer = [](const Frame&) { return Frames{}; };
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(2), QStringLiteral("Node Number             ?? of ??"));
    EXPECT_EQ(Line(3), QStringLiteral("Network Composer Version??.??.??"));
    EXPECT_EQ(Line(4), QStringLiteral("Compiled                ?\?/?\?/??"));
    EXPECT_EQ(Line(5), QStringLiteral("Operating System Version   ??.??"));
    EXPECT_EQ(Line(6).trimmed(), QString());
    EXPECT_EQ(Line(7), QStringLiteral("PIC Code Version               ?"));
    EXPECT_EQ(Line(8), QStringLiteral("FPGA Version                   ?"));
    EXPECT_FALSE(node.HeaderInfoAvailable());
    EXPECT_EQ(node.PICVersion(), QString());
    EXPECT_THAT(errors.reports, IsEmpty());

    heard.clear();
    flash.DisplayFlashInfo();
    EXPECT_THAT(heard, Not(IsEmpty()));
}

struct Missing {
    const char* name;
    std::function<void(std::map<int, Frame>& versions, std::vector<std::uint8_t>& header)> leaveOut;
    int type;
    bool complete;
};

class MissingParts : public FlashTest, public testing::WithParamInterface<Missing> {};

TEST_P(MissingParts, AreAskedForAgainIfTheyMatter)
{
    CNode& node = Mount(3, GetParam().type);
    versions[2] = Frame{950, true, false, 0x0205};
    versions[3] = Frame{950, true, false, 0x0101};
    GetParam().leaveOut(versions, header);
    flash.DisplayFlashInfo();
    EXPECT_EQ(node.HeaderInfoAvailable(), GetParam().complete);
}

INSTANTIATE_TEST_SUITE_P(
    Flash, MissingParts,
    testing::Values(Missing{"None", [](auto&, auto&) {}, 16, true},
                    Missing{"EndOfTheHeader", [](auto&, auto& header) { header.resize(15); }, 16, false},
                    Missing{"SystemVersion", [](auto& versions, auto&) { versions.erase(0); }, 16, false},
                    Missing{"SystemVersionOfZeros", [](auto& versions, auto&) { versions[0].data = 0; }, 16, false},
                    Missing{"BetaVersion", [](auto& versions, auto&) { versions.erase(1); }, 16, true},
                    Missing{"Pic", [](auto& versions, auto&) { versions.erase(2); }, 16, false},
                    Missing{"PicRefused", [](auto& versions, auto&) { versions[2].state = false; }, 16, false},
                    Missing{"Fpga", [](auto& versions, auto&) { versions.erase(3); }, 16, false},
                    Missing{"PicThatIsOnlyShown", [](auto& versions, auto&) { versions.erase(2); }, 2, true}),
    [](const auto& row) { return row.param.name; });

TEST_F(FlashTest, OnlyTheModelWithBothChipsKeepsTheirVersions)
{
    versions[2] = Frame{950, true, false, 0x0205};
    versions[3] = Frame{950, true, false, 0x0101};
    const CNode& hc = Mount(3, 16);
    flash.DisplayFlashInfo();
    EXPECT_EQ(hc.PICVersion(), QStringLiteral("2.5"));
    EXPECT_EQ(hc.FPGAVersion(), QStringLiteral("1.1"));

    const CNode& petite = Mount(4, 2);
    flash.DisplayFlashInfo();
    EXPECT_EQ(petite.PICVersion(), QString());
}

TEST_F(FlashTest, APartialAnswerKeepsWhatWasReadBefore)
{
    CNode& node = Mount(3, 16);
    node.setPICVersion(QStringLiteral("9.9"));
    node.setHeader([] {
        HeaderRecord record;
        record.nodeCount = QStringLiteral("5");
        return record;
    }());
    header.resize(4);
    flash.DisplayFlashInfo();
    EXPECT_EQ(node.PICVersion(), QStringLiteral("9.9"));
    EXPECT_EQ(node.Header().nodeCount, QStringLiteral("5"));
    EXPECT_EQ(Line(2), QStringLiteral("Node Number             03 of ??"));
}

TEST_F(FlashTest, NumbersOfThreeDigitsAreShownWhole)
{
    Mount(3, 6);
    header[7] = 255;
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(2), QStringLiteral("Node Number            03 of 255"));
}

TEST_F(FlashTest, TheWaitIsAnnounced)
{
    Mount(3, 6);
    QString during;
    window.onVerify = [&] { during = Line(1).trimmed(); };
    flash.DisplayFlashInfo();
    EXPECT_EQ(during, QStringLiteral("Please wait..."));
}

TEST_F(FlashTest, ANodeThatIsNotMountedIsAskedNothing)
{
    Mount(3, 6);
    Select(4, 6);
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(1).trimmed(), QStringLiteral("Selected Node Not Mounted"));
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_THAT(window.uiStates, IsEmpty());
}

TEST_F(FlashTest, WithoutAnyNodeNothingIsAsked)
{
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(1).trimmed(), QStringLiteral("Selected Node Not Mounted"));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(FlashTest, ReadingDoesNotStartInsideReading)
{
    Mount(3, 6);
    window.onVerify = [this] { flash.DisplayFlashInfo(); };
    flash.DisplayFlashInfo();
    EXPECT_THAT(window.verified, SizeIs(1));
    EXPECT_EQ(Line(2), QStringLiteral("Node Number             03 of 08"));
}

TEST_F(FlashTest, AMountThatEndsInsideIsShown)
{
    CNode& node = Mount(3, 6);
    answer = [this](const Frame&) {
        pump.After(0.01, [this] { Restart(); });
        return Frames{};
    };
    flash.DisplayFlashInfo();
    EXPECT_EQ(Line(1).trimmed(), QStringLiteral("Selected Node Not Mounted"));
    EXPECT_FALSE(node.HeaderInfoAvailable());
    EXPECT_THAT(heard, ElementsAre("940 0 0 0"));
    EXPECT_THAT(window.uiStates, ElementsAre(8, 4));
}

TEST_F(FlashTest, AViewThatWasOpenedInsideKeepsItsFace)
{
    Mount(3, 6);
    window.onVerify = [this] {
        window.displayState = 0;
        graphics.ClearFace();
    };
    flash.DisplayFlashInfo();
    EXPECT_EQ(face.Text().trimmed(), QString());
    EXPECT_THAT(window.uiStates, ElementsAre(8, 4));
}

}  // namespace
}  // namespace fenrik
