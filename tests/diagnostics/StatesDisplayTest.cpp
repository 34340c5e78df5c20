#include "diagnostics/StatesFixture.h"
#include "support/PaintCounter.h"

namespace fenrik {
namespace {

using testing::IsEmpty;

TEST_F(StatesTest, EachPointHasItsColumnUnderItsNumber)
{
    CNode& node = Mount(3, 6);
    node.CDigitalInputs()[1].setInCommand(100);
    node.COutputs()[2].setUsageCode(COutput::kByRelationship);
    inputWords[0] = 0b011;
    outputWords[0] = 0b10000010;
    states.Open();
    EXPECT_EQ(Shown(1), QStringLiteral("Inputs"));
    EXPECT_EQ(Shown(2), QStringLiteral("123"));
    EXPECT_EQ(Shown(3), QStringLiteral("110"));
    EXPECT_EQ(Shown(4), QString());
    EXPECT_EQ(Shown(5), QStringLiteral("Outputs"));
    EXPECT_EQ(Shown(6), QStringLiteral("12345678"));
    EXPECT_EQ(Shown(7), QStringLiteral("01000001"));
}

TEST_F(StatesTest, PointsThatAreNotInUseAreDim)
{
    CNode& node = Mount(3, 6);
    node.CDigitalInputs()[1].setInCommand(100);
    node.COutputs()[2].setUsageCode(COutput::kByRelationship);
    states.Open();
    EXPECT_EQ(DimRow(face, 1).trimmed(), QString());
    EXPECT_EQ(DimRow(face, 2).trimmed(), QString());
    EXPECT_EQ(DimRow(face, 3).left(4), QStringLiteral(" 00 "));
    EXPECT_EQ(DimRow(face, 6).trimmed(), QString());
    EXPECT_EQ(DimRow(face, 7).left(9), QStringLiteral("0 000000 "));
}

TEST_F(StatesTest, DigitsStartAgainAfterTen)
{
    Mount(3, 16);
    states.Open();
    EXPECT_EQ(Shown(2), QStringLiteral("1234567890123456"));
    EXPECT_EQ(Shown(6), QStringLiteral("12345678901234567890123456789012"));
}

TEST_F(StatesTest, ANodeWithoutPointsShowsTheTitlesAlone)
{
    Mount(3, 1);
    states.Open();
    EXPECT_EQ(Shown(1), QStringLiteral("Inputs"));
    EXPECT_EQ(Shown(2), QString());
    EXPECT_EQ(Shown(3), QString());
    EXPECT_EQ(Shown(5), QStringLiteral("Outputs"));
    EXPECT_EQ(Shown(6), QString());
}

TEST_F(StatesTest, ANodeThatIsNotMountedIsDrawnDimFromItsLastKnownStates)
{
    CNode& node = Mount(3, 6);
    node.CDigitalInputs()[1].setInCommand(100);
    inputWords[0] = 0b001;
    states.Open();
    Restart();
    heard.clear();

    states.RefreshFrame(false);
    for (const int row : {1, 2, 3, 5, 6, 7})
        EXPECT_EQ(DimRow(face, row), Row(face, row)) << row;
    EXPECT_EQ(Shown(3), QStringLiteral("100"));
    EXPECT_EQ(DimRow(face, 9).trimmed(), QStringLiteral("Not mounted: last known states"));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(StatesTest, TheNoteGoesWhenTheNodeIsMounted)
{
    Select(3, 6);
    states.Open();
    EXPECT_NE(Shown(9), QString());
    system.MountNode(3);
    states.TakeMessage(Request(100));
    EXPECT_EQ(Shown(9), QString());
    EXPECT_EQ(DimRow(face, 1).trimmed(), QString());
}

TEST_F(StatesTest, WithoutASelectedNodeTheViewSaysSo)
{
    states.Open();
    EXPECT_EQ(DimRow(face, 1).trimmed(), QStringLiteral("No node selected"));
    EXPECT_EQ(Shown(5), QString());

    Mount(3, 6);
    states.UpdateStatesDisplay(3);
    EXPECT_EQ(Shown(1), QStringLiteral("Inputs"));
}

TEST_F(StatesTest, LastKnownStatesStandWhileTheNodeIsAsked)
{
    Mount(3, 6);
    QString shown;
    answer = [this, &shown](const Frame&) {
        shown = Shown(6);
        return Frames{Frame{903, true, true, 0}};
    };
    states.Open();
    EXPECT_EQ(shown, QStringLiteral("12345678"));
}

TEST_F(StatesTest, ARefreshClearsWhatAnotherNodeLeft)
{
    Mount(3, 16);
    OpenBroadcasting();
    Select(4, 6);
    states.RefreshFrame(false);
    EXPECT_EQ(Shown(6), QStringLiteral("12345678"));
}

class Which : public StatesTest, public testing::WithParamInterface<int> {};

TEST_P(Which, DrawsBothGroupsUnlessItIsZero)
{
    Mount(3, 6);
    states.UpdateStatesDisplay(GetParam());
    EXPECT_EQ(Shown(1), GetParam() == 0 ? QString() : QStringLiteral("Inputs"));
    EXPECT_EQ(Shown(5), GetParam() == 0 ? QString() : QStringLiteral("Outputs"));
}

INSTANTIATE_TEST_SUITE_P(States, Which, testing::Values(0, 1, 2, 3, 4));

TEST_F(StatesTest, NothingIsDrawnWhileAnotherViewIsOpen)
{
    Mount(3, 6);
    window.displayState = 3;
    const QString before = face.Text();
    states.UpdateStatesDisplay(3);
    EXPECT_EQ(face.Text(), before);
}

TEST_F(StatesTest, AnOutputThatIsOnlyOverriddenShowsAsOn)
{
    CNode& node = Mount(3, 6);
    node.COutputs()[4].setOverride(true);
    states.UpdateStatesDisplay(2);
    EXPECT_EQ(Shown(7), QStringLiteral("00010000"));
}

TEST_F(StatesTest, AnUpdateIsOneRepaint)
{
    face.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&face));
    PaintCounter paintings(face);
    const auto isPainted = [&paintings] { return paintings.count > 0; };
    Mount(3, 16);
    OpenBroadcasting();
    ASSERT_TRUE(QTest::qWaitFor(isPainted));

    paintings.count = 0;
    states.TakeMessage(Request(922, 0x5555));
    ASSERT_TRUE(QTest::qWaitFor(isPainted));
    QCoreApplication::processEvents();
    EXPECT_EQ(paintings.count, 1);
}

struct InputLook {
    int bits;
    int state;
    char character;
};

class InputLooks : public testing::TestWithParam<InputLook> {};

TEST_P(InputLooks, FollowFromWidthAndState)
{
    EXPECT_EQ(States::InputCharacter(GetParam().bits, GetParam().state), QLatin1Char(GetParam().character));
}

INSTANTIATE_TEST_SUITE_P(States, InputLooks,
                         testing::Values(InputLook{1, 0, '0'}, InputLook{1, 1, '1'}, InputLook{1, 2, '1'},
                                         InputLook{2, 0, '0'}, InputLook{2, 1, '-'}, InputLook{2, 2, '+'},
                                         InputLook{2, 3, '?'}, InputLook{2, 4, '?'}, InputLook{0, 0, '?'},
                                         InputLook{4, 1, '?'}));

}  // namespace
}  // namespace fenrik
