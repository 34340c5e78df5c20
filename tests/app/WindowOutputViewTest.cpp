#include "WindowFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>

namespace fenrik {
namespace {

using testing::Contains;
using testing::Not;

/// A connected window that shows the outputs of node 1. Output 1 is on without the command 12, or with 1 and 12; the
/// relationship of output 2 has a command that stands in no catalogue.
class WindowOutputViewTest : public WindowTest {
protected:
    void SetUp() override
    {
        StartAndConnect("AutoDetect=False\n");
        CNode& node = *System().Node(1);
        node.setTypeID(16);
        node.setVerified(true);
        node.COutputs()[1].setRPN(QByteArray::fromHex("FE000CF0 FD010203 FE0001 FE000CF1 FF FF"));
        node.COutputs()[2].setRPN(QByteArray::fromHex("FE001B FF"));
        System().ActivateNode(1);
        System().SelectNode(1);
        Click("Mount");
        Click("OutputDiagnostics");
        ASSERT_TRUE(Tree().isVisible());
        vehicle.heard.clear();
    }

    [[nodiscard]] QTreeView& Tree() { return Control<QTreeView>("tvOutputs"); }
    [[nodiscard]] QTreeView& Terms() { return Control<QTreeView>("lvRelations"); }

    /// Where the mouse hits a cell of a list.
    [[nodiscard]] static QPoint PlaceOf(const QTreeView& list, const QModelIndex& index)
    {
        return list.visualRect(index).topLeft() + QPoint(4, 4);
    }
    static void ClickRow(QTreeView& list, const QModelIndex& index)
    {
        list.scrollTo(index);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, PlaceOf(list, index));
    }
    void DoubleClickTerm(int row)
    {
        const QModelIndex term = Terms().model()->index(row, 1);
        ASSERT_TRUE(term.isValid());
        ClickRow(Terms(), term);
        QTest::mouseDClick(Terms().viewport(), Qt::LeftButton, {}, PlaceOf(Terms(), term));
    }

    void SetComposer(const QString& state, const QString& extended, const QString& data)
    {
        Control<QPushButton>("cmdState").setText(state);
        Control<QPushButton>("cmdExtended").setText(extended);
        Control<QLineEdit>("TxtData").setText(data);
    }
    /// "command state three-way data"
    [[nodiscard]] QString Composed()
    {
        return Control<QComboBox>("CboCommand").currentText() + ' ' + Control<QPushButton>("cmdState").text() + ' ' +
               Control<QPushButton>("cmdExtended").text() + ' ' + Control<QLineEdit>("TxtData").text();
    }

    void OpenLevel()
    {
        const QModelIndex output = Tree().model()->index(0, 0);
        Tree().expand(output);
        ClickRow(Tree(), Tree().model()->index(0, 0, output));
    }
};

TEST_F(WindowOutputViewTest, ADoubleClickOnATermThatSaysNotComposesTheCommandOff)
{
    SetComposer("On", "True", "5");
    ASSERT_NO_FATAL_FAILURE(DoubleClickTerm(0));
    EXPECT_EQ(Composed(), "Rear Fog Lamps Off False 0");
    EXPECT_THAT(vehicle.heard, Not(Contains("12 0 0"))) << "it is ready to be sent, and not sent";

    QTest::mouseClick(&Control<QPushButton>("cmdSend"), Qt::LeftButton);
    EXPECT_TRUE(Until([this] { return !vehicle.heard.empty(); }));
    EXPECT_THAT(vehicle.heard, Contains("12 0 0"));
}

TEST_F(WindowOutputViewTest, TermsOfALevelAreComposedOn)
{
    OpenLevel();
    ASSERT_EQ(Terms().model()->rowCount(), 2);
    SetComposer("Off", "False", "0x5");
    ASSERT_NO_FATAL_FAILURE(DoubleClickTerm(0));
    EXPECT_EQ(Composed(), "Head Lamps Low Beam On False 0");
    SetComposer("Off", "True", "9");
    ASSERT_NO_FATAL_FAILURE(DoubleClickTerm(1));
    EXPECT_EQ(Composed(), "Rear Fog Lamps On False 0");
}

TEST_F(WindowOutputViewTest, ATermOfAnUnlistedCategoryIsNotComposed)
{
    ClickRow(Tree(), Tree().model()->index(1, 0));
    SetComposer("Off", "True", "5");
    const QString before = Composed();
    ASSERT_NO_FATAL_FAILURE(DoubleClickTerm(0));
    EXPECT_EQ(Composed(), before);
    EXPECT_EQ(Msg(), "\"<Undefined message   27>\" is in a category that is not listed.");
}

TEST_F(WindowOutputViewTest, AFaultReportBuildsTheViewAnewAndLeavesItOpenAsItWas)
{
    OpenLevel();
    vehicle.Send({983, false, false, 0x0101});
    ASSERT_TRUE(Until([this] { return Control<QLabel>("lblFaults").text() == "Fault detected!"; }));
    EXPECT_TRUE(Tree().isExpanded(Tree().model()->index(0, 0)));
    EXPECT_EQ(Tree().currentIndex(), Tree().model()->index(0, 0)) << "the first output is in focus again";
}

TEST_F(WindowOutputViewTest, APingReplyBuildsTheViewAnew)
{
    System().Node(1)->setName("Engine bay");
    vehicle.Send({902, false, false, 1});
    EXPECT_TRUE(Until([this] {
        return Control<QWidget>("FrameOutputs").property("title").toString() ==
               "Output Information for Engine bay (Brontes-HC)";
    }));
}

TEST_F(WindowOutputViewTest, AButtonForcesAndReleasesItsOutput)
{
    QToolButton& button = *Control<QWidget>("tbOutputs").findChildren<QToolButton*>().at(4);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(button.isChecked());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_FALSE(button.isChecked());
    EXPECT_TRUE(Until([this] { return vehicle.heard.size() >= 2; }));
    EXPECT_THAT(vehicle.heard, testing::ElementsAre("987 1 51281", "987 0 81"));
}

TEST_F(WindowOutputViewTest, ARestartOfTheNodeEndsItsMountAndLeavesTheViewOfWhatIsKnown)
{
    vehicle.Send({988, false, false, 1});
    ASSERT_TRUE(Until([this] { return System().MountedNodeNumber() == 0; }));
    EXPECT_TRUE(Tree().isVisible());
    EXPECT_EQ(Tree().model()->rowCount(), 32);
}

TEST_F(WindowOutputViewTest, AViewThatNeedsMoreRoomIsScrolledAndLeavesTheWindowOnTheScreen)
{
    const int height = Window().height();
    Control<QWidget>("pnlOutputs").setMinimumHeight(3000);  // as with a very large font
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Window().height(), height);
    EXPECT_LT(Window().minimumSizeHint().height(), 1000);
    EXPECT_GE(Control<QWidget>("FrameOutputs").height(), 3000);
}

}  // namespace
}  // namespace fenrik
