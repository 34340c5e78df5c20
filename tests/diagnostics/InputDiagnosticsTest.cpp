#include "diagnostics/InputDiagnostics.h"

#include "PointViewFixture.h"
#include "diagnostics/FrameInputs.h"

#include <QLabel>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class InputViewTest : public PointViewTest {
protected:
    CNode& SelectFilledNode()
    {
        CNode& node = Select(3, 16);
        CDigitalInput& input = node.CDigitalInputs()[2];
        input.setName(QStringLiteral("Door"));
        input.setInCommand(302);
        input.setSwitchType(3);
        input.setOnState(17);
        input.setThreeWay(1);
        return node;
    }

    void Open()
    {
        view.DisplayInputsFrame();
        frame.show();
    }

    QString Text(const char* label) { return frame.findChild<QLabel*>(QLatin1String(label))->text(); }
    bool Shown(const char* name) { return frame.findChild<QWidget*>(QLatin1String(name))->isVisibleTo(&frame); }
    QTreeView& Tree() { return *frame.findChild<QTreeView*>(QStringLiteral("tvInputs")); }

    FrameInputs frame;
    InputDiagnostics view{system, commands, errors, window, frame};
};

TEST_F(InputViewTest, NoNodeIsToldInWords)
{
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("No Node Selected"));
    EXPECT_EQ(Text("lblNoInputs"), QStringLiteral("Node not selected, information not available."));
    EXPECT_TRUE(Shown("lblNoInputs"));
    EXPECT_FALSE(Shown("tvInputs"));
    EXPECT_EQ(view.InputSelected(), 0);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(InputViewTest, NodeWithInputsShowsThemAndPutsTheFirstIntoFocus)
{
    SelectFilledNode();
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Input Information for Node 3 (Brontes-HC)"));
    EXPECT_THAT(window.verified, ElementsAre(3));
    EXPECT_FALSE(Shown("lblNoInputs"));
    EXPECT_FALSE(Shown("lblNotDownloaded"));
    EXPECT_TRUE(Shown("tvInputs"));
    EXPECT_EQ(frame.Tree().rowCount(), 16);
    EXPECT_EQ(view.InputSelected(), 1);
    EXPECT_EQ(Tree().currentIndex(), frame.Tree().IndexOf(1));
}

// The keys have the letter of the outputs.
TEST_F(InputViewTest, RowsBearKeyTagAndPicture)
{
    SelectFilledNode();
    Open();
    EXPECT_EQ(Describe(frame.Tree().IndexOf(2)), "2 Pin E2 (Door)|O0200|Input|DigitalInput");
}

TEST_F(InputViewTest, ValuesAreThoseOfTheInputInFocus)
{
    SelectFilledNode();
    Open();
    Tree().setCurrentIndex(frame.Tree().IndexOf(2));
    EXPECT_EQ(view.InputSelected(), 2);
    EXPECT_EQ(Text("lblCommandName"), QStringLiteral("Door"));
    EXPECT_EQ(Text("lblSwitchType"), QStringLiteral("Latching N/O"));
    EXPECT_EQ(Text("lblOnState"), QStringLiteral("Ground"));
    EXPECT_EQ(Text("lbl3Way"), QStringLiteral("True"));
}

TEST_F(InputViewTest, InputThatWasNeverReadIsUnavailable)
{
    Select(3, 16);
    Open();
    for (const char* label : {"lblCommandName", "lblSwitchType", "lblOnState", "lbl3Way"})
        EXPECT_EQ(Text(label), QStringLiteral("Unavailable")) << label;
    EXPECT_TRUE(Shown("lblNotDownloaded"));
}

TEST_F(InputViewTest, SelectingByNumberMovesTheTree)
{
    SelectFilledNode();
    Open();
    view.setInputSelected(2);
    EXPECT_EQ(Tree().currentIndex(), frame.Tree().IndexOf(2));
    view.setInputSelected(0);
    EXPECT_FALSE(Tree().currentIndex().isValid());
    EXPECT_EQ(Text("lblOnState"), QString());
}

TEST_F(InputViewTest, NodeWithoutInputsShowsItsLabel)
{
    Select(4, 1).setName(QStringLiteral("Lamp"));
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Input Information for Lamp (Lumen)"));
    EXPECT_EQ(Text("lblNoInputs"), QStringLiteral("The Lumen node does not have any physical inputs."));
    EXPECT_TRUE(Shown("lblNoInputs"));
    EXPECT_FALSE(Shown("tvInputs"));
}

TEST_F(InputViewTest, NodeOfUnknownTypeShowsItsLabel)
{
    Select(4, CNode::kUnknownType);
    Open();
    EXPECT_EQ(Text("lblNoInputs"), QStringLiteral("Inputs not defined for Unknown Node Type."));
    EXPECT_EQ(view.InputSelected(), 0);
}

TEST_F(InputViewTest, NodeThatGoesDuringTheWaitLeavesWords)
{
    SelectFilledNode();
    window.onVerify = [this] { system.DeselectNode(); };
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("No Node Selected"));
    EXPECT_EQ(frame.Tree().rowCount(), 0);
}

TEST_F(InputViewTest, InputThatDoesNotExistIsReported)
{
    SelectFilledNode();
    Open();
    view.setInputSelected(17);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("InputDiagnostics:InputSelected:Let"));
}

TEST_F(InputViewTest, NodeThatIsSelectedDuringTheWaitIsTheOneShown)
{
    SelectFilledNode();
    window.onVerify = [this] {
        window.onVerify = [] {};
        Select(4, 2);
        view.DisplayInputsFrame();
    };
    Open();
    EXPECT_EQ(frame.title(), QStringLiteral("Input Information for Node 4 (Petite 4x12)"));
    EXPECT_EQ(frame.Tree().rowCount(), 4);
}

TEST_F(InputViewTest, LongNameIsCut)
{
    CDigitalInput& input = SelectFilledNode().CDigitalInputs()[1];
    input.setName(QString(80, QLatin1Char('n')));
    Open();
    EXPECT_TRUE(frame.Tree().IndexOf(1).data().toString().endsWith(QStringLiteral("n.)")));
}

}  // namespace
}  // namespace fenrik
