#include "remote/frmPipeChatDialog.h"

#include "RemoteWindowFixture.h"

#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ChatWindow : public RemoteWindowTest {
protected:
    ChatWindow()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        window.SetLocalClient(CUser{"Ann", "7", "", ""});
        window.SetRemoteClient(CUser{"Bob", "9", "", ""});
    }
    ~ChatWindow() override { QLocale::setDefault(QLocale::system()); }

    void OpenIn(int state)
    {
        window.setState(state);
        Open(window);
    }
    [[nodiscard]] QString History() const { return Find<QPlainTextEdit>(window, "txtMessages").toPlainText(); }
    [[nodiscard]] QString Draft() const { return Find<QLineEdit>(window, "txtSend").text(); }
    [[nodiscard]] QLabel& Status() const { return Find<QLabel>(window, "lblStatus"); }

    frmPipeChatDialog window{host, clock, boxes, errors};
};

struct Shown {
    int state;
    const char* text;
    const char* color;
    bool canSend;
};

class ChatState : public ChatWindow, public testing::WithParamInterface<Shown> {};

TEST_P(ChatState, IsToldInTextAndColour)
{
    OpenIn(GetParam().state);
    EXPECT_EQ(Status().text(), GetParam().text);
    const QColor back = Status().palette().color(QPalette::Window);
    EXPECT_EQ(back, *GetParam().color ? QColor(GetParam().color) : window.palette().color(QPalette::Button));
    EXPECT_TRUE(Status().autoFillBackground());
    EXPECT_EQ(Find<QPushButton>(window, "cmdSend").isEnabled(), GetParam().canSend);
    EXPECT_EQ(Find<QTimer>(window, "tmrWaitProgress").isActive(), GetParam().state == RemoteStates::kWaiting);
    EXPECT_FALSE(window.windowIcon().pixmap(16).isNull());
    EXPECT_EQ(Status().width(), Status().fontMetrics().horizontalAdvance(Status().text()) + 2);
}

INSTANTIATE_TEST_SUITE_P(States, ChatState,
                         testing::Values(Shown{0, " No remote user is currently connected.", "", false},
                                         Shown{1, " No remote user is currently connected.", "", false},
                                         Shown{3, " No remote user is currently connected.", "", false},
                                         Shown{4, " Waiting for Bob to accept the connection . . .", "#ff8080", true},
                                         Shown{5, " Bob has denied access to Remote Network.", "#ff8080", true},
                                         Shown{6, " Bob has granted access to Remote Network.", "#00c000", true}));

TEST_F(ChatWindow, BeginsInTheStateOfTheConnection)
{
    host.state = RemoteStates::kDenied;
    const frmPipeChatDialog late(host, clock, boxes, errors);
    EXPECT_EQ(Find<QLabel>(late, "lblStatus").text(), " User has denied access to Remote Network.");
    EXPECT_EQ(late.windowTitle(), "Connected to User");
}

TEST_F(ChatWindow, TheDotsGrowUntilThereAreThreeAndBeginAnewWithOne)
{
    OpenIn(RemoteStates::kWaiting);
    EXPECT_EQ(Find<QTimer>(window, "tmrWaitProgress").interval(), 750);
    const QString text = " Waiting for Bob to accept the connection";
    const int full = Status().width();
    for (const char* dots : {" .", " . .", " . . .", " ."}) {
        Fire(window, "tmrWaitProgress");
        EXPECT_EQ(Status().text(), text + QLatin1String(dots));
    }
    EXPECT_LT(Status().width(), full);
}

TEST_F(ChatWindow, TheCaptionNamesTheOtherUser)
{
    EXPECT_EQ(window.windowTitle(), "Connected to Bob");
    window.SetRemoteClient(std::nullopt);
    EXPECT_EQ(window.windowTitle(), "Not Connected");
}

TEST_F(ChatWindow, AMessageThatComesShowsTheWindow)
{
    window.SubmitChatMessage("  hello there ", " Bob ");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(History(), "[Bob: 9:05:07 AM]\nhello there");
    clock.Advance(5 * 3600);
    window.SubmitChatMessage("again", "Bob");
    EXPECT_EQ(History(), "[Bob: 9:05:07 AM]\nhello there\n\n[Bob: 2:05:07 PM]\nagain");
}

TEST_F(ChatWindow, AMessageEndsAtItsFirstZeroByte)
{
    window.SubmitChatMessage(QString::fromLatin1("seen\0not seen\0", 14), "Bob");
    EXPECT_EQ(History(), "[Bob: 9:05:07 AM]\nseen");
}

TEST_F(ChatWindow, AMessageIsNoMarkup)
{
    window.SubmitChatMessage("<b>a & b</b>", "<i>");
    EXPECT_EQ(History(), "[<i>: 9:05:07 AM]\n<b>a & b</b>");
}

TEST_F(ChatWindow, TheHistoryMovesToItsEnd)
{
    OpenIn(RemoteStates::kGranted);
    for (int i = 0; i < 30; ++i)
        window.SubmitChatMessage(QString::number(i), "Bob");
    const QScrollBar& bar = *Find<QPlainTextEdit>(window, "txtMessages").verticalScrollBar();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(ChatWindow, EnterSendsWhatIsTypedAndListsIt)
{
    OpenIn(RemoteStates::kWaiting);
    EXPECT_EQ(window.focusWidget()->objectName(), "txtSend");
    Type(window, "txtSend", "  let me in ");
    QTest::keyClick(&Find(window, "txtSend"), Qt::Key_Return);
    EXPECT_THAT(host.sent, ElementsAre("chat let me in"));
    EXPECT_EQ(History(), "[Ann: 9:05:07 AM]\nlet me in");
    EXPECT_EQ(Draft(), "");
}

TEST_F(ChatWindow, BlanksSendNothing)
{
    OpenIn(RemoteStates::kGranted);
    Click(window, "cmdSend");
    Type(window, "txtSend", "   ");
    Click(window, "cmdSend");
    EXPECT_THAT(host.sent, IsEmpty());
    EXPECT_EQ(History(), "");
}

TEST_F(ChatWindow, WithoutARemoteUserNothingIsSentAndTheTextStays)
{
    window.SetRemoteClient(std::nullopt);
    OpenIn(RemoteStates::kWaiting);
    Type(window, "txtSend", "hello");
    Click(window, "cmdSend");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "No remote user is currently connected.");
    EXPECT_THAT(host.sent, IsEmpty());
    EXPECT_EQ(Draft(), "hello");
}

TEST_F(ChatWindow, ClearEmptiesTheHistory)
{
    OpenIn(RemoteStates::kGranted);
    window.SubmitChatMessage("one", "Bob");
    Click(window, "cmdClear");
    EXPECT_EQ(History(), "");
}

TEST_F(ChatWindow, TheHistorySwallowsWhatIsTypedIntoIt)
{
    OpenIn(RemoteStates::kGranted);
    Type(window, "txtSend", "draft");
    window.SubmitChatMessage("one", "Bob");
    const QString before = History();
    Type(window, "txtMessages", "xyz");
    QTest::keyClick(&Find(window, "txtMessages"), Qt::Key_Delete);
    QTest::keyClick(&Find(window, "txtMessages"), Qt::Key_Return);
    QTest::keyClick(&Find(window, "txtMessages"), Qt::Key_Escape);
    EXPECT_EQ(History(), before);
    EXPECT_THAT(host.sent, IsEmpty());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ChatWindow, TabLeavesTheHistory)
{
    OpenIn(RemoteStates::kGranted);
    Find(window, "txtMessages").setFocus();
    QTest::keyClick(&Find(window, "txtMessages"), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget()->objectName(), "txtSend");
}

TEST_F(ChatWindow, ClosingOnlyHidesItAndKeepsTheHistory)
{
    OpenIn(RemoteStates::kGranted);
    window.SubmitChatMessage("one", "Bob");
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(History(), "[Bob: 9:05:07 AM]\none");
}

}  // namespace
}  // namespace fenrik
