#include "commands/frmSpecialCommand.h"

#include "SpecialFixture.h"
#include "support/BoxRecorder.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString kUnknown9 = QStringLiteral("Diagnostics is not aware of a Node 9 in the system.\n"
                                         "Are you sure you want to send this message with Node 9 in the Data field?");
const QString kMount3 =
    QStringLiteral("This message requires that the target Node 3 be mounted; however, Node 2 is currently mounted.\n"
                   "Do you want to temporarily mount Node 3 in order to send this message?");

class SpecialWindow : public SpecialTest {
protected:
    void Open(const CMessage& message) { Open(&special, message); }
    void Open(CSpecialCommand* command, const CMessage& message)
    {
        window = std::make_unique<frmSpecialCommand>(CommandsServices{handler, system, boxes, errors, mainWindow},
                                                     command, message);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    template <typename Widget>
    Widget& Find(const char* name) const
    {
        return *window->findChild<Widget*>(name);
    }
    [[nodiscard]] QComboBox& List(const char* name) const { return Find<QComboBox>(name); }
    [[nodiscard]] bool IsEnabled(const char* name) const { return Find<QWidget>(name).isEnabled(); }
    void Click(const char* name) const { QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton); }
    void Choose(const char* list, Qt::Key key = Qt::Key_Down) const
    {
        List(list).setFocus();
        QTest::keyClick(&List(list), key);
    }
    void TypeNode(const char* text) const
    {
        auto* field = List("cmbNode").lineEdit();
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }
    [[nodiscard]] QStringList Entries(const char* name) const
    {
        QStringList texts;
        for (int row = 0; row < List(name).count(); ++row)
            texts.append(List(name).itemText(row));
        return texts;
    }
    [[nodiscard]] QString Node() const { return List("cmbNode").currentText(); }

    BoxRecorder boxes;
    CommandsHostRecorder mainWindow{system, host};
    std::unique_ptr<frmSpecialCommand> window;
};

// --- Filling -------------------------------------------------------------------------------------------------------

TEST_F(SpecialWindow, ShowsWhatTheMessageSays)
{
    Open(Of(0x0306, 1));
    EXPECT_EQ(window->windowTitle(), "Special Commands");
    EXPECT_EQ(Find<QLabel>("lblNode").text(), "This Command applies to Node:");
    EXPECT_EQ(Find<QLabel>("lblState").text(), "Command Specifics:");
    EXPECT_EQ(Find<QPushButton>("bCancel").text(), "Close");
    EXPECT_THAT(Entries("cmbName"), ElementsAre("Restart", "Doors", "Assign"));
    EXPECT_EQ(List("cmbName").currentText(), "Doors");
    EXPECT_EQ(List("cmbName").currentData().toInt(), 26);
    EXPECT_THAT(Entries("cmbState"), ElementsAre("Open", "<default>"));
    EXPECT_EQ(List("cmbState").currentText(), "Open");
    EXPECT_THAT(Entries("cmbNode"), ElementsAre("1", "2", "3", "4", "5", "6", "7", "8"));
    EXPECT_EQ(Node(), "3");
    EXPECT_TRUE(IsEnabled("cmbState"));
}

TEST_F(SpecialWindow, DisablesAListOfFewerThanTwoSpecifics)
{
    Open(Of(0x0305));
    EXPECT_THAT(Entries("cmbState"), ElementsAre("<default>"));
    EXPECT_FALSE(IsEnabled("cmbState"));
}

TEST_F(SpecialWindow, ShowsAHintBesideAnItemThatBearsOne)
{
    Open(Of(0x0305));
    EXPECT_FALSE(Find<QLabel>("lblHint").isVisible());
    Choose("cmbName", Qt::Key_End);
    EXPECT_EQ(Find<QLabel>("lblHint").text(), "Press the switch");
    EXPECT_TRUE(Find<QLabel>("lblHint").isVisible());
    EXPECT_THAT(Entries("cmbState"), IsEmpty());
}

TEST_F(SpecialWindow, TakesTheSelectedNodeWhereTheMessageNamesNone)
{
    SelectNode(4);
    Open(Of(5));
    EXPECT_EQ(Node(), "4");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 1029"));
}

TEST_F(SpecialWindow, WithoutANodePartOffersNoNode)
{
    special.NodeMask = 0;
    Open(Of(5));
    EXPECT_FALSE(IsEnabled("cmbNode"));
    EXPECT_FALSE(IsEnabled("lblNode"));
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 5"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(SpecialWindow, WithoutAPortOffersNothingButTheWayOut)
{
    host.open = false;
    Open(Of(0x0306, 1));
    for (const char* name : {"bSend", "cmbName", "cmbState", "cmbNode"})
        EXPECT_FALSE(IsEnabled(name)) << name;
    EXPECT_TRUE(IsEnabled("bCancel"));
}

TEST_F(SpecialWindow, WithoutASpecialCommandHasANodeOnly)
{
    Open(nullptr, Request(969, 0, 0, 1));
    for (const char* name : {"cmbName", "cmbState", "lblName", "lblState", "lblHint"})
        EXPECT_FALSE(Find<QWidget>(name).isVisible()) << name;
    TypeNode("5");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("969 0 5"));
}

TEST_F(SpecialWindow, WithoutASpecialCommandStillAsksAboutAnUnknownNode)
{
    boxes.answers = {QMessageBox::Yes};
    Open(nullptr, Request(969));
    TypeNode("9");
    Click("bSend");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, kUnknown9);
    EXPECT_THAT(sent, ElementsAre("969 0 9"));
}

// --- Choosing ------------------------------------------------------------------------------------------------------

TEST_F(SpecialWindow, SendsWhatIsChosen)
{
    Open(Of(0x0305));
    Choose("cmbName");
    EXPECT_THAT(Entries("cmbState"), ElementsAre("Open", "<default>"));
    Choose("cmbState");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 774"));
    EXPECT_EQ(host.shown.size(), 1u);
}

TEST_F(SpecialWindow, ANameChosenAgainShowsAndSendsItsFirstItem)
{
    Open(Of(0x0306, 0));
    ASSERT_EQ(List("cmbState").currentText(), "<default>");
    Q_EMIT List("cmbName").activated(List("cmbName").currentIndex());
    EXPECT_EQ(List("cmbState").currentText(), "Open");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 1 774"));
}

TEST_F(SpecialWindow, AHintGoesWithItsItem)
{
    Open(Of(0x0307));
    ASSERT_EQ(Find<QLabel>("lblHint").text(), "Sent by the node");
    Choose("cmbState");
    EXPECT_EQ(List("cmbState").currentText(), "Open");
    EXPECT_FALSE(Find<QLabel>("lblHint").isVisible());
}

TEST_F(SpecialWindow, SendsTheItemBehindAName)
{
    Open(Of(0x0305));
    Choose("cmbName");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 1 774"));
}

TEST_F(SpecialWindow, CutsANodeByItsMaskWhenTheFieldIsLeft)
{
    Open(Of(0x0305));
    TypeNode("36");
    EXPECT_EQ(Node(), "36");
    Find<QWidget>("bSend").setFocus();
    EXPECT_EQ(Node(), "4");
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 1029"));
}

TEST_F(SpecialWindow, EnterInTheNodeSendsWithIt)
{
    Open(Of(0x0305));
    TypeNode("6");
    QTest::keyClick(List("cmbNode").lineEdit(), Qt::Key_Return);
    EXPECT_THAT(sent, ElementsAre("930 0 1541"));
}

TEST_F(SpecialWindow, AfterSendingIsReadyToSendAgain)
{
    Open(Of(0x0305));
    window->activateWindow();
    TypeNode("4");
    QTest::keyClick(List("cmbNode").lineEdit(), Qt::Key_Return);
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(window->focusWidget(), &Find<QPushButton>("bSend"));
    QTest::keyClick(window->focusWidget(), Qt::Key_Space);
    EXPECT_THAT(sent, SizeIs(2));
}

TEST_F(SpecialWindow, TakesDigitsOnlyForANode)
{
    boxes.answers = {QMessageBox::No};
    Open(Of(0x0305));
    TypeNode("-x");
    EXPECT_EQ(Node(), "");
    Click("bSend");
    EXPECT_EQ(Node(), "0");
    EXPECT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(SpecialWindow, KeepsItsChoiceWhileTheListNamesMessages)
{
    Open(Of(0x0305));
    special.SelectItem(0x0A63, 1, 1, false);
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 773"));
}

// --- A node that the system doesn't have ---------------------------------------------------------------------------

TEST_F(SpecialWindow, AsksAboutAnUnknownNodeAndStopsOnNo)
{
    boxes.answers = {QMessageBox::No};
    Open(Of(0x0905));
    Click("bSend");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, kUnknown9);
    EXPECT_EQ(boxes.boxes[0].title, "Send Special Command");
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_TRUE(List("cmbNode").lineEdit()->hasFocus());
    EXPECT_EQ(List("cmbNode").lineEdit()->selectedText(), "9");
}

TEST_F(SpecialWindow, RemembersAYesForTheRestOfItsLife)
{
    boxes.answers = {QMessageBox::Yes};
    Open(Of(0x0905));
    Click("bSend");
    Click("bSend");
    EXPECT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(sent, ElementsAre("930 0 2309", "930 0 2309"));
}

TEST_F(SpecialWindow, AsksAgainAfterANo)
{
    boxes.answers = {QMessageBox::No, QMessageBox::Yes};
    Open(Of(0x0905));
    Click("bSend");
    Click("bSend");
    EXPECT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_THAT(sent, SizeIs(1));
}

// --- Temporary mounts ----------------------------------------------------------------------------------------------

class MountingWindow : public SpecialWindow {
protected:
    MountingWindow() { special.RequiresMount = true; }
};

TEST_F(MountingWindow, WithNothingMountedMountsAtOnceAndUnmountsOnClose)
{
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3"));
    EXPECT_THAT(sent, ElementsAre("930 0 773"));
    Click("bCancel");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3", "unmount 3"));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MountingWindow, LeavesTheRightMountAlone)
{
    system.MountNode(3);
    Open(Of(0x0305));
    Click("bSend");
    Click("bCancel");
    EXPECT_THAT(mainWindow.calls, IsEmpty());
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(sent, SizeIs(1));
}

TEST_F(MountingWindow, AsksBeforeItTakesTheMountFromAnotherNode)
{
    boxes.answers = {QMessageBox::Yes};
    system.MountNode(2);
    Open(Of(0x0305));
    Click("bSend");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, kMount3);
    EXPECT_EQ(boxes.boxes[0].title, "Send Special Command");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3"));
    EXPECT_THAT(sent, SizeIs(1));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3", "mount 2"));
}

TEST_F(MountingWindow, StopsWhereTheMountIsNotToBeTaken)
{
    boxes.answers = {QMessageBox::No};
    system.MountNode(2);
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_THAT(mainWindow.calls, IsEmpty());
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_TRUE(List("cmbNode").lineEdit()->hasFocus());
    EXPECT_EQ(List("cmbNode").lineEdit()->selectedText(), "3");
}

TEST_F(MountingWindow, AsksBothQuestionsOfAnUnknownNode)
{
    boxes.answers = {QMessageBox::Yes, QMessageBox::Yes};
    system.MountNode(2);
    Open(Of(0x0905));
    Click("bSend");
    EXPECT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 9"));
}

TEST_F(MountingWindow, SendsAlsoWhenTheMountFailedAndThenMountsTheEarlierNodeAgain)
{
    boxes.answers = {QMessageBox::Yes};
    mainWindow.mountable = 2;
    system.MountNode(2);
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_THAT(sent, ElementsAre("930 0 773"));
    Click("bCancel");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3", "mount 2"));
    EXPECT_EQ(system.MountedNodeNumber(), 2);
}

TEST_F(MountingWindow, HasNothingToUndoWhenTheMountFailedOrTheNodeRestarted)
{
    mainWindow.mountable = 7;
    Open(Of(0x0305));
    Click("bSend");
    Click("bCancel");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3"));
}

TEST_F(MountingWindow, UndoesTheLastOfSeveralMounts)
{
    boxes.answers = {QMessageBox::Yes};
    Open(Of(0x0305));
    Click("bSend");
    TypeNode("5");
    Click("bSend");
    Click("bCancel");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3", "mount 5", "unmount 5"));
}

TEST_F(MountingWindow, WithoutANodePartIsContentWithAnyMount)
{
    special.NodeMask = 0;
    system.MountNode(2);
    Open(Of(5));
    Click("bSend");
    EXPECT_THAT(mainWindow.calls, IsEmpty());
    EXPECT_THAT(sent, SizeIs(1));
}

TEST_F(MountingWindow, WithoutANodePartMountsTheSelectedNode)
{
    special.NodeMask = 0;
    SelectNode(4);
    Open(Of(5));
    Click("bSend");
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 4"));
}

TEST_F(MountingWindow, ShowsTheHourglassWhileItMounts)
{
    Qt::CursorShape shape = Qt::ArrowCursor;
    bool enabled = true;
    mainWindow.onMount = [&] {
        shape = window->cursor().shape();
        enabled = IsEnabled("bSend") || IsEnabled("cmbName") || IsEnabled("cmbNode");
    };
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_EQ(shape, Qt::WaitCursor);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(IsEnabled("bSend"));
}

// Closing inside the wait takes the message back, and the undoing waits until the mount has come to its end.
TEST_F(MountingWindow, ClosedDuringTheMountSendsNothingAndUndoesItAfterwards)
{
    std::vector<std::string> callsAtClose;
    mainWindow.onMount = [&] {
        Click("bCancel");
        callsAtClose = mainWindow.calls;
    };
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(callsAtClose, ElementsAre("mount 3"));
    EXPECT_THAT(mainWindow.calls, ElementsAre("mount 3", "unmount 3"));
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(MountingWindow, APortThatVanishesDuringTheMountLeavesNothingToSend)
{
    mainWindow.onMount = [&] { host.open = false; };
    Open(Of(0x0305));
    Click("bSend");
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_FALSE(IsEnabled("bSend"));
    EXPECT_FALSE(IsEnabled("cmbName"));
    EXPECT_TRUE(IsEnabled("bCancel"));
}

TEST_F(MountingWindow, AFailureIsReportedAndTheWindowGoesOn)
{
    mainWindow.onMount = [] { throw Error(ErrorNumber::kOverflow, "Overflow"); };
    Open(Of(0x0305));
    Click("bSend");
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmSpecialCommand:bSend:Click");
    EXPECT_TRUE(IsEnabled("bSend"));
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace fenrik
