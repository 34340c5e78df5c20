#include "OutputViewFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(OutputViewTest, NoNodeIsToldInWords)
{
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("No Node Selected"));
    EXPECT_TRUE(Shown("lblNoOutputs"));
    EXPECT_EQ(Text("lblNoOutputs"), QStringLiteral("Node not selected, information not available."));
    EXPECT_FALSE(Shown("tvOutputs"));
    EXPECT_FALSE(Shown("tbOutputs"));
    EXPECT_EQ(view.OutputSelected(), 0);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(OutputViewTest, NodeWithOutputsShowsThemAndPutsTheFirstIntoFocus)
{
    SelectFilledNode().setName(QStringLiteral("Cab"));
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Output Information for Cab (Brontes-HC)"));
    EXPECT_THAT(window.verified, ElementsAre(3));
    EXPECT_FALSE(Shown("lblNoOutputs"));
    EXPECT_TRUE(Shown("tvOutputs"));
    EXPECT_TRUE(Shown("tbOutputs"));
    EXPECT_EQ(frame.Tree().rowCount(), 32);
    EXPECT_EQ(frame.Buttons().Count(), 32);
    EXPECT_EQ(view.OutputSelected(), 1);
    EXPECT_EQ(Tree().currentIndex(), frame.Tree().IndexOf(1));
}

TEST_F(OutputViewTest, AmpersandInANameIsNoMnemonic)
{
    SelectFilledNode().setName(QStringLiteral("A&B"));
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Output Information for A&&B (Brontes-HC)"));
}

TEST_F(OutputViewTest, NodeWithoutOutputsShowsItsLabel)
{
    Select(4, 5);
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("No Outputs detected on Node 4 (Petite 16 Input)"));
    EXPECT_EQ(Text("lblNoOutputs"), QStringLiteral("The Petite 16x0 node does not have any physical outputs."));
    EXPECT_TRUE(Shown("lblNoOutputs"));
    EXPECT_FALSE(Shown("tvOutputs"));
    EXPECT_EQ(view.OutputSelected(), 0);
}

TEST_F(OutputViewTest, NodeOfUnknownTypeShowsItsLabel)
{
    Select(4, CNode::kUnknownType);
    Open();
    EXPECT_EQ(Text("lblNoOutputs"), QStringLiteral("Outputs not defined for Unknown Node Type."));
}

TEST_F(OutputViewTest, NodeThatWasNeverReadSaysSo)
{
    Select(3, 16);
    Open();
    EXPECT_TRUE(Shown("lblNotDownloaded"));
    EXPECT_EQ(Text("lblFlashing"), QStringLiteral("Unavailable"));
    EXPECT_THAT(Terms(), ElementsAre("Unavailable|"));
    SelectFilledNode();
    Open();
    EXPECT_FALSE(Shown("lblNotDownloaded"));
}

TEST_F(OutputViewTest, RowsBearKeyTagAndPicture)
{
    SelectFilledNode();
    Open();
    EXPECT_EQ(Describe(frame.Tree().IndexOf(1)), "1 Pin A1 (Wiper)|O0100|OUTPUT|Off");
    EXPECT_EQ(Describe(frame.Tree().IndexOf(1, 1)), "Level 1|O0101|RLEVEL|RLevel");
    EXPECT_EQ(Describe(frame.Tree().IndexOf(32)), "32 Pin D5 (Output 32)|O3200|OUTPUT|Off");
    EXPECT_FALSE(frame.Tree().IndexOf(1, 2).isValid());
}

TEST_F(OutputViewTest, RelationshipOfOneLevelHasNoRowsUnderItsOutput)
{
    SelectFilledNode().COutputs()[2].setRPN(QByteArray::fromHex("FE012CF0 FF"));
    Open();
    EXPECT_EQ(frame.Tree().rowCount(frame.Tree().IndexOf(2)), 0);
    ClickNode(2);
    EXPECT_THAT(Terms(), ElementsAre("NOT|Wiper"));
}

struct RowLook {
    const char* name;
    bool inUse;
    bool forced;
    bool permanent;
    bool faulty;
    const char* icon;
    QRgb color;
};

class RowLooks : public OutputViewTest, public testing::WithParamInterface<RowLook> {};

TEST_P(RowLooks, FollowTheOutput)
{
    COutput& output = SelectFilledNode().COutputs()[2];
    output.setUsageCode(GetParam().inUse ? COutput::kByRelationship : COutput::kNotUsed);
    output.setOverride(GetParam().forced);
    output.setPermOn(GetParam().permanent);
    if (GetParam().faulty)
        output.setFault(QStringLiteral("Fault detected!"));
    Open();
    const QModelIndex row = frame.Tree().IndexOf(2);
    EXPECT_EQ(row.data(PointTreeModel::IconKeyRole).toString(), QLatin1String(GetParam().icon));
    EXPECT_EQ(row.data(Qt::ForegroundRole).value<QColor>().rgb(), GetParam().color);
    EXPECT_EQ(Button(2).data().toString(), QLatin1String(GetParam().icon));
    EXPECT_EQ(Button(2).isChecked(), GetParam().forced);
}

INSTANTIATE_TEST_SUITE_P(OutputView, RowLooks,
                         testing::Values(RowLook{"InUse", true, false, false, false, "Off", 0xFF000000},
                                         RowLook{"NotInUse", false, false, false, false, "Off", 0xFFCCCCCC},
                                         RowLook{"Forced", true, true, false, false, "On", 0xFF808000},
                                         RowLook{"PermanentlyOn", true, false, true, false, "On", 0xFF808000},
                                         RowLook{"Faulty", true, true, false, true, "Fault", 0xFFFF0000}),
                         [](const auto& row) { return row.param.name; });

TEST_F(OutputViewTest, ReportedFaultIsShownAlsoWhenTheOutputWasMadeAnew)
{
    window.faults[{3, 2}] = QStringLiteral("Fault detected!");
    SelectFilledNode();
    Open();
    EXPECT_EQ(frame.Tree().IndexOf(2).data(PointTreeModel::IconKeyRole).toString(), QStringLiteral("Fault"));
    ClickNode(2);
    EXPECT_EQ(Text("lblFaults"), QStringLiteral("Fault detected!"));
    ClickNode(1);
    EXPECT_EQ(Text("lblFaults"), QStringLiteral("No Faults Detected"));
    EXPECT_EQ(Find<QLabel>("lblFaults").palette().color(QPalette::WindowText), QColor(0, 0x80, 0));
}

TEST_F(OutputViewTest, ValuesAreThoseOfTheOutputInFocus)
{
    SelectFilledNode();
    Open();
    EXPECT_EQ(Text("lblShed"), QStringLiteral("12.5v"));
    EXPECT_EQ(Text("lblFlashing"), QStringLiteral("False"));
    EXPECT_EQ(Text("lblSeqOnTitle"), QStringLiteral("Sequence:"));
    EXPECT_EQ(Text("lblSeqOn"), QStringLiteral("7"));
    EXPECT_FALSE(Shown("lblOff"));
    EXPECT_FALSE(Shown("lblOffTitle"));
    ClickNode(2);
    EXPECT_EQ(view.OutputSelected(), 2);
    EXPECT_EQ(Text("lblShed"), QStringLiteral("Unavailable"));
}

TEST_F(OutputViewTest, DelaysStandInPlaceOfTheSequence)
{
    SelectFilledNode().COutputs()[1].setDelayOff(Fixed4::Whole(20));
    Open();
    EXPECT_EQ(Text("lblSeqOnTitle"), QStringLiteral("On Delay:"));
    EXPECT_EQ(Text("lblSeqOn"), QStringLiteral("0 Seconds"));
    EXPECT_TRUE(Shown("lblOff"));
    EXPECT_EQ(Text("lblOff"), QStringLiteral("20 Seconds"));
}

TEST_F(OutputViewTest, LevelShowsItsTermsAndNothingOfTheWholeOutput)
{
    SelectFilledNode();
    Open();
    EXPECT_THAT(Terms(), ElementsAre("NOT|Wiper"));
    ClickNode(1, 1);
    EXPECT_EQ(view.RLevelSelected(), 1);
    EXPECT_THAT(Terms(), ElementsAre("ON|Horn", "AND|Door"));
    EXPECT_EQ(Text("lblFlashing"), QStringLiteral("Unavailable"));
    EXPECT_EQ(Text("lblShed"), QStringLiteral("Unavailable"));
}

TEST_F(OutputViewTest, WordInPlaceOfTermsHasTheWholeWidth)
{
    SelectFilledNode().COutputs()[2].setPermOn(true);
    Open();
    const auto& list = Find<QTreeView>("lvRelations");
    EXPECT_FALSE(list.isFirstColumnSpanned(0, QModelIndex()));
    ClickNode(2);
    EXPECT_THAT(Terms(), ElementsAre("(Permanently On)|"));
    EXPECT_TRUE(list.isFirstColumnSpanned(0, QModelIndex()));
}

TEST_F(OutputViewTest, LevelThatTheOutputDoesNotHaveCountsAsZero)
{
    SelectFilledNode();
    Open();
    view.setRLevelSelected(2);
    EXPECT_EQ(view.RLevelSelected(), 0);
    EXPECT_THAT(Terms(), ElementsAre("NOT|Wiper"));
}

TEST_F(OutputViewTest, OutputThatDoesNotExistIsReported)
{
    SelectFilledNode();
    Open();
    view.setOutputSelected(33);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 9);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("OutputDiagnostics:OutputSelected:Let"));
}

TEST_F(OutputViewTest, LevelWithoutAnOutputIsReported)
{
    Open();
    view.setRLevelSelected(1);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("OutputDiagnostics:RLevelSelected:Let"));
}

TEST_F(OutputViewTest, EachRebuildPutsTheFirstOutputIntoFocus)
{
    SelectFilledNode();
    Open();
    ClickNode(5);
    Open();
    EXPECT_EQ(view.OutputSelected(), 1);
    EXPECT_EQ(Tree().currentIndex(), frame.Tree().IndexOf(1));
}

TEST_F(OutputViewTest, NodeThatIsSelectedDuringTheWaitIsTheOneShown)
{
    SelectFilledNode();
    window.onVerify = [this] {
        window.onVerify = [] {};
        Select(4, 2);
        view.DisplayOutputsFrame();
    };
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Output Information for Node 4 (Petite 4x12)"));
    EXPECT_EQ(frame.Tree().rowCount(), 12);
    EXPECT_EQ(frame.Buttons().Count(), 12);
}

TEST_F(OutputViewTest, NodeThatGoesDuringTheWaitLeavesWords)
{
    SelectFilledNode();
    window.onVerify = [this] { system.DeselectNode(); };
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("No Node Selected"));
    EXPECT_EQ(frame.Tree().rowCount(), 0);
}

TEST_F(OutputViewTest, TermsGoToTheComposerWithTheStateThatTheyWant)
{
    SelectFilledNode();
    Open();
    auto& list = Find<QTreeView>("lvRelations");
    Q_EMIT list.doubleClicked(list.model()->index(0, 1));
    ClickNode(1, 1);
    Q_EMIT list.doubleClicked(list.model()->index(1, 0));
    EXPECT_THAT(window.composed, ElementsAre(std::pair(300, false), std::pair(302, true)));
}

TEST_F(OutputViewTest, TermThatIsNoCommandStaysOutOfTheComposer)
{
    Select(3, 16);
    Open();
    auto& list = Find<QTreeView>("lvRelations");
    ASSERT_EQ(list.model()->rowCount(), 1);
    Q_EMIT list.doubleClicked(list.model()->index(0, 0));
    EXPECT_THAT(window.composed, IsEmpty());
}

TEST_F(OutputViewTest, CommandBeyondTheTableStaysOutOfTheComposer)
{
    SelectFilledNode().COutputs()[1].setRPN(QByteArray::fromHex("FE7FFF FF"));
    Open();
    auto& list = Find<QTreeView>("lvRelations");
    EXPECT_THAT(Terms(), ElementsAre("ON|Unknown"));
    Q_EMIT list.doubleClicked(list.model()->index(0, 0));
    EXPECT_THAT(window.composed, IsEmpty());
}

TEST_F(OutputViewTest, EnterOnATermIsADoubleClick)
{
    SelectFilledNode();
    Open();
    auto& list = Find<QTreeView>("lvRelations");
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_THAT(window.composed, ElementsAre(std::pair(300, false)));
}

}  // namespace
}  // namespace fenrik
