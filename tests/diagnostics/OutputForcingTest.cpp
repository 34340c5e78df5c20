#include "OutputViewFixture.h"

#include <QLineEdit>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OutputForcingTest : public OutputViewTest {
protected:
    QStringList LevelTexts()
    {
        QStringList texts;
        for (int i = 0; i < Levels().count(); ++i)
            texts.append(Levels().itemText(i));
        return texts;
    }

    void Force(const QString& level)
    {
        Levels().setEditText(level);
        Find<QPushButton>("cmdDPWMC").click();
    }

    QString Tip() { return Find<QPushButton>("cmdDPWMC").toolTip(); }
};

TEST_F(OutputForcingTest, NewerNodesForceFromZero)
{
    SelectFilledNode();
    Open();
    EXPECT_TRUE(Shown("cmbDPWMC"));
    EXPECT_TRUE(Shown("cmdDPWMC"));
    EXPECT_EQ(LevelTexts().join(' '), QStringLiteral("Release 0% 10% 20% 30% 40% 50% 60% 70% 80% 90% 100%"));
    EXPECT_EQ(Levels().property("Tag").toString(), QStringLiteral("2"));
    EXPECT_EQ(Levels().itemData(11).toInt(), 100);
}

TEST_F(OutputForcingTest, FirstGenerationForcesFromTen)
{
    Select(3, 0);
    Open();
    EXPECT_EQ(LevelTexts().join(' '), QStringLiteral("Release 10% 20% 30% 40% 50% 60% 70% 80% 90% 100%"));
    EXPECT_EQ(Levels().property("Tag").toString(), QStringLiteral("1"));
}

TEST_F(OutputForcingTest, OutputThatCannotBeForcedHasNoControl)
{
    Select(3, 0);
    Open();
    ClickNode(3);
    EXPECT_FALSE(Shown("cmbDPWMC"));
    EXPECT_FALSE(Shown("cmdDPWMC"));
    EXPECT_EQ(Levels().count(), 0);
    EXPECT_FALSE(Button(3).isEnabled());
    EXPECT_TRUE(Button(15).isEnabled());
}

TEST_F(OutputForcingTest, ClosedPortHidesTheControlAndLeavesTheButtons)
{
    window.portOpen = false;
    SelectFilledNode();
    Open();
    EXPECT_FALSE(Shown("cmbDPWMC"));
    EXPECT_TRUE(Button(1).isEnabled());
}

TEST_F(OutputForcingTest, ListStaysForAnOutputOfTheSameKind)
{
    SelectFilledNode();
    Open();
    Levels().addItem(QStringLiteral("mark"));
    ClickNode(2);
    EXPECT_EQ(Levels().count(), 13);
    Open();  // without an output in focus it counts as not filled
    EXPECT_EQ(Levels().count(), 12);
}

TEST_F(OutputForcingTest, ButtonsReachToNode16)
{
    Select(16, 16);
    Open();
    EXPECT_TRUE(Button(1).isEnabled());
    Select(17, 16);
    Open();
    EXPECT_FALSE(Button(1).isEnabled());
    EXPECT_TRUE(Shown("cmdDPWMC"));
}

TEST_F(OutputForcingTest, OutputThatFollowsItsRelationshipReadsRelease)
{
    SelectFilledNode();
    Open();
    EXPECT_EQ(Levels().currentText(), QStringLiteral("Release"));
    EXPECT_EQ(Tip(), QStringLiteral("Release this Output"));
}

TEST_F(OutputForcingTest, ForcedOutputReadsItsLevel)
{
    SelectFilledNode().COutputs()[1].TakeForce(true, 25);
    Open();
    EXPECT_EQ(Levels().currentText(), QStringLiteral("12.5%"));
    EXPECT_EQ(Tip(), QStringLiteral("Force this Output to 12.5%"));
}

TEST_F(OutputForcingTest, TipFollowsTheChosenLevel)
{
    SelectFilledNode();
    Open();
    Levels().setCurrentIndex(6);
    EXPECT_EQ(Tip(), QStringLiteral("Force this Output to 50%"));
    Levels().setCurrentIndex(0);
    EXPECT_EQ(Tip(), QStringLiteral("Release this Output"));
}

TEST_F(OutputForcingTest, ChosenLevelIsForced)
{
    CNode& node = SelectFilledNode();
    Open();
    Force(QStringLiteral("50%"));
    EXPECT_THAT(Sent(), ElementsAre("987 1 0 " + std::to_string(3 | 1 << 4 | 50 << 9)));
    EXPECT_EQ(node.COutputs()[1].Value(), 50);
    EXPECT_TRUE(Button(1).isChecked());
    EXPECT_EQ(Levels().currentText(), QStringLiteral("50%"));
}

TEST_F(OutputForcingTest, TypedLevelIsForcedByEnter)
{
    SelectFilledNode();
    Open();
    Levels().lineEdit()->clear();
    QTest::keyClicks(&Levels(), QStringLiteral("5"));
    QTest::keyClick(&Levels(), Qt::Key_Return);
    EXPECT_THAT(Sent(), ElementsAre("987 1 0 " + std::to_string(3 | 1 << 4 | 5 << 9)));
}

TEST_F(OutputForcingTest, ZeroPercentIsNotRelease)
{
    CNode& node = SelectFilledNode();
    Open();
    Force(QStringLiteral("0%"));
    EXPECT_TRUE(node.COutputs()[1].Override());
    EXPECT_EQ(Levels().currentText(), QStringLiteral("0%"));
    Force(QStringLiteral("Release"));
    EXPECT_FALSE(node.COutputs()[1].Override());
    EXPECT_THAT(Sent(), ElementsAre("987 1 0 19", "987 0 0 19"));
}

TEST_F(OutputForcingTest, FocusGoesBackToTheLevel)
{
    SelectFilledNode();
    Open();
    frame.activateWindow();
    Force(QStringLiteral("50%"));
    EXPECT_EQ(frame.focusWidget(), &Levels());
}

TEST_F(OutputForcingTest, ButtonForcesFullyAndReleases)
{
    CNode& node = SelectFilledNode();
    Open();
    Button(5).trigger();
    EXPECT_EQ(node.COutputs()[5].Value(), 100);
    EXPECT_EQ(view.OutputSelected(), 5);
    EXPECT_EQ(frame.Tree().IndexOf(5).data(PointTreeModel::IconKeyRole).toString(), QStringLiteral("On"));
    EXPECT_EQ(Levels().currentText(), QStringLiteral("100%"));
    Button(5).trigger();
    EXPECT_FALSE(node.COutputs()[5].Override());
    EXPECT_FALSE(Button(5).isChecked());
    const int data = 3 | 5 << 4;
    EXPECT_THAT(Sent(), ElementsAre("987 1 0 " + std::to_string(data | 100 << 9), "987 0 0 " + std::to_string(data)));
}

// The row of the level stays selected: it is one of the forced output's own.
TEST_F(OutputForcingTest, ForcingFromALevelShowsTheWholeOutput)
{
    SelectFilledNode();
    Open();
    ClickNode(1, 1);
    ASSERT_EQ(view.RLevelSelected(), 1);
    Force(QStringLiteral("50%"));
    EXPECT_EQ(view.RLevelSelected(), 0);
    EXPECT_EQ(Text("lblShed"), QStringLiteral("12.5v"));
    EXPECT_EQ(Tree().currentIndex(), frame.Tree().IndexOf(1, 1));
}

TEST_F(OutputForcingTest, NothingIsSentWithoutANode)
{
    Open();
    Q_EMIT frame.ForceClicked();
    Q_EMIT frame.ButtonClicked(1, true);
    EXPECT_THAT(Sent(), IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(OutputForcingTest, ButtonOfANodeThatIsNotMountedForcesItAllTheSame)
{
    SelectFilledNode();
    Open();
    ASSERT_EQ(system.MountedNode(), nullptr);
    Button(1).trigger();
    EXPECT_THAT(Sent(), ElementsAre("987 1 0 " + std::to_string(3 | 1 << 4 | 100 << 9)));
}

TEST_F(OutputForcingTest, ButtonTipIsTheShorterName)
{
    SelectFilledNode().COutputs()[2].setName(QString(60, QLatin1Char('n')));
    Open();
    EXPECT_TRUE(Button(2).toolTip().endsWith(QStringLiteral("n.)")));
    EXPECT_LT(Button(2).toolTip().size(), frame.Tree().IndexOf(2).data().toString().size());
}

TEST_F(OutputForcingTest, NodeThatChangesItsTypeDuringTheCommandIsShownAsItIs)
{
    SelectFilledNode();
    Open();
    host.onDisplay = [this] {
        system.Node(3)->setTypeID(2);
        view.DisplayOutputsFrame();
    };
    Button(20).trigger();
    EXPECT_EQ(frame.Buttons().Count(), 12);
    EXPECT_EQ(view.OutputSelected(), 1);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(OutputForcingTest, NodeThatGoesDuringTheCommandLeavesTheView)
{
    SelectFilledNode();
    Open();
    host.onDisplay = [this] {
        system.DeselectNode();
        view.DisplayOutputsFrame();
    };
    Force(QStringLiteral("50%"));
    EXPECT_EQ(frame.title(), QStringLiteral("No Node Selected"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

}  // namespace
}  // namespace fenrik
