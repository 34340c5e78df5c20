#include "diagnostics/FlashFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;

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
