// What the user has set in the views of outputs and inputs, when they are built anew: after a fault report, or a ping.

#include "OutputViewFixture.h"
#include "diagnostics/FrameInputs.h"
#include "diagnostics/InputDiagnostics.h"

#include <QScrollBar>
#include <QToolButton>

namespace fenrik {
namespace {

class OutputRebuildTest : public OutputViewTest {
protected:
    OutputRebuildTest()
    {
        frame.show();
        frame.activateWindow();
    }

    /// Node 3 with two levels under its outputs 1 and 30.
    CNode& SelectNode()
    {
        CNode& node = SelectFilledNode();
        node.COutputs()[30].setRPN(node.COutputs()[1].RPN());
        return node;
    }

    bool IsOpen(int number) { return Tree().isExpanded(frame.Tree().IndexOf(number)); }
    int Top() { return Tree().verticalScrollBar()->value(); }
};

TEST_F(OutputRebuildTest, OpenRowsStayOpenAndTheScrollBarWhereItWas)
{
    SelectNode();
    Open();
    Tree().expand(frame.Tree().IndexOf(30));
    Tree().verticalScrollBar()->setValue(9);
    ASSERT_EQ(Top(), 9);
    Open();
    EXPECT_TRUE(IsOpen(30));
    EXPECT_FALSE(IsOpen(1));
    EXPECT_EQ(Top(), 9);
    EXPECT_EQ(view.OutputSelected(), 1);
}

TEST_F(OutputRebuildTest, RowsOfAnotherNodeAreNew)
{
    SelectNode();
    Open();
    Tree().expand(frame.Tree().IndexOf(1));
    Tree().verticalScrollBar()->setValue(9);
    Select(4, 16).COutputs()[1].setRPN(system.Node(3)->COutputs()[1].RPN());
    Open();
    EXPECT_FALSE(IsOpen(1));
    EXPECT_EQ(Top(), 0);
}

TEST_F(OutputRebuildTest, RowsThatComeBackAreAsTheyWereLeft)
{
    SelectNode();
    Open();
    Tree().expand(frame.Tree().IndexOf(30));
    system.DeselectNode();
    Open();
    ASSERT_EQ(frame.Tree().rowCount(), 0);
    system.SelectNode(3);
    Open();
    EXPECT_TRUE(IsOpen(30));
}

TEST_F(OutputRebuildTest, OutputThatIsGoneIsForgotten)
{
    SelectNode();
    Open();
    Tree().expand(frame.Tree().IndexOf(1));
    Tree().expand(frame.Tree().IndexOf(30));
    system.Node(3)->setTypeID(2);
    system.Node(3)->COutputs()[1].setRPN(QByteArray::fromHex("FD010203 FF FF"));
    Open();
    EXPECT_EQ(frame.Tree().rowCount(), 12);
    EXPECT_TRUE(IsOpen(1));
}

// Hidden widgets hand the keyboard on, in the tool to the composer, where Enter sends a message.
TEST_F(OutputRebuildTest, KeyboardStaysInTheView)
{
    SelectNode();
    Open();
    for (const char* name : {"tvOutputs", "cmbDPWMC", "cmdDPWMC", "lvRelations"}) {
        Find<QWidget>(name).setFocus();
        Open();
        EXPECT_EQ(frame.focusWidget(), &Find<QWidget>(name)) << name;
    }
}

TEST_F(OutputRebuildTest, KeyboardStaysOnTheButtonOfAnOutput)
{
    SelectNode();
    Open();
    frame.Buttons().setFocus();
    QTest::keyClick(frame.focusWidget(), Qt::Key_Right);
    Open();
    const auto* button = qobject_cast<QToolButton*>(frame.focusWidget());
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("2"));
}

TEST_F(OutputRebuildTest, KeyboardGoesToTheTreeFromAControlThatIsGone)
{
    SelectNode();
    Open();
    Levels().setFocus();
    window.portOpen = false;
    Open();
    EXPECT_EQ(frame.focusWidget(), &Tree());
}

TEST_F(OutputRebuildTest, KeyboardThatIsElsewhereStaysThere)
{
    QWidget around;
    auto* composer = new QComboBox(&around);
    frame.setParent(&around);
    around.show();
    around.activateWindow();
    SelectNode();
    Open();
    composer->setFocus();
    Open();
    EXPECT_EQ(around.focusWidget(), composer);

    Tree().setFocus();
    auto* other = new QComboBox(&around);
    other->show();
    window.onVerify = [other] { other->setFocus(); };
    Open();
    EXPECT_EQ(around.focusWidget(), other) << "the user went there during the wait";
    frame.setParent(nullptr);
}

TEST(InputRebuild, InputsStayWhereTheyWereScrolledTo)
{
    FrameInputs frame;
    frame.resize(500, 140);
    frame.show();
    frame.Tree().SetPoints(QList<PointRow>(16));
    frame.ShowPanel(true);
    frame.SelectInput(1);
    frame.RestorePlace(3);
    auto& tree = *frame.findChild<QTreeView*>(QStringLiteral("tvInputs"));
    tree.verticalScrollBar()->setValue(5);
    ASSERT_EQ(tree.verticalScrollBar()->value(), 5);
    frame.Clear();
    frame.Tree().SetPoints(QList<PointRow>(16));
    frame.ShowPanel(true);
    frame.SelectInput(1);
    frame.RestorePlace(3);
    EXPECT_EQ(tree.verticalScrollBar()->value(), 5);
}

}  // namespace
}  // namespace fenrik
