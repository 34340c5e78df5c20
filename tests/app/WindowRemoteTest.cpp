// Remote diagnostics in the main window: what each state shows, and what ends a connection.

#include "RemoteWindowFixture.h"
#include "model/CSystem.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using WindowRemoteTest = RemoteWindowTest;

TEST_F(WindowRemoteTest, APipeOpensTheConnectionForListening)
{
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    EXPECT_EQ(Msg(), "Piped to Bob");
    EXPECT_TRUE(Window().windowTitle().endsWith(" [Piped to Bob]")) << Window().windowTitle().toStdString();
    EXPECT_TRUE(IsShown("frmPipeChatDialog"));
    EXPECT_FALSE(IsShown("frmPipeUsersDialog"));
    for (const char* key : {"RDChat", "RDPing", "RDUsers", "Disconnect", "Analog"})
        EXPECT_TRUE(Button(key).isEnabled()) << key;
    for (const char* key : {"Connect", "Port", "System", "DetectNodes"})
        EXPECT_FALSE(Button(key).isEnabled()) << key;
    EXPECT_FALSE(Control<QPushButton>("cmdSend").isEnabled());
    EXPECT_FALSE(Entry("mnuCommandQuery").isEnabled());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    SendFrame({1, true, false, 7});
    EXPECT_TRUE(Until([this] { return Lines().size() == 1; }));
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowRemoteTest, AGrantOpensItForSending)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    EXPECT_EQ(Status(), "Piped");
    EXPECT_FALSE(IsShown("frmPipeChatDialog"));
    EXPECT_TRUE(Button("DetectNodes").isEnabled());
    EXPECT_TRUE(Control<QPushButton>("cmdSend").isEnabled());
    EXPECT_TRUE(Entry("mnuCommandQuery").isEnabled());

    AttachNodes();
    Click("DetectNodes");
    EXPECT_EQ(Msg(), "Nodes Detected");
    EXPECT_EQ(relay.Count(frameNetworkMessage), 3);
    EXPECT_TRUE(Control<QToolBar>("Nodebar").findChild<QAction*>("Node3")->isEnabled());
}

TEST_F(WindowRemoteTest, ADenialClosesItForSendingAndLeavesItOpenForListening)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Answer(false);
    ASSERT_TRUE(Until([this] { return Msg() == "Piped to Bob"; }));
    EXPECT_FALSE(Control<QPushButton>("cmdSend").isEnabled());
    EXPECT_FALSE(Button("DetectNodes").isEnabled());
    EXPECT_TRUE(IsShown("frmPipeChatDialog"));
    SendFrame({1, true, false, 7});
    EXPECT_TRUE(Until([this] { return Lines().size() == 1; }));
}

TEST_F(WindowRemoteTest, TheChatButtonShowsTheAnswer)
{
    const auto picture = [this] { return Button("RDChat").icon().pixmap(24, 24).toImage(); };
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    const QImage waiting = picture();
    Answer(true);
    ASSERT_TRUE(Until([&] { return picture() != waiting; }));
    const QImage granted = picture();
    Answer(false);
    ASSERT_TRUE(Until([&] { return picture() != granted; }));
    EXPECT_NE(picture(), waiting);
    Click("Disconnect");
    EXPECT_FALSE(Button("RDChat").isEnabled());
}

TEST_F(WindowRemoteTest, DisconnectingBreaksThePipeAndLogsOff)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("Disconnect");
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_EQ(Msg(), "");
    EXPECT_FALSE(Window().windowTitle().contains("Piped"));
    EXPECT_FALSE(IsShown("frmPipeChatDialog"));
    for (const char* key : {"Connect", "Port", "System", "ConnectUsing"})
        EXPECT_TRUE(Button(key).isEnabled()) << key;
    for (const char* key : {"Disconnect", "RDChat", "RDPing", "DetectNodes"})
        EXPECT_FALSE(Button(key).isEnabled()) << key;
    EXPECT_TRUE(Until([this] { return !relay.HasClient(); }));
    EXPECT_EQ(relay.Count(frameBreakPipe), 1);
    EXPECT_EQ(relay.Count(frameLogoff), 1);

    Click("Connect");
    EXPECT_EQ(Status(), "Piped");
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowRemoteTest, APipeThatTheOtherEndBreaksForgetsTheMountedNode)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    AttachNodes();
    Click("DetectNodes");
    Click("Node2");
    Click("Mount");
    ASSERT_EQ(System().MountedNodeNumber(), 2);
    Click("States");

    BreakPipe();
    ASSERT_TRUE(Until([this] { return !timedMessages.empty(); }));
    EXPECT_THAT(timedMessages, ElementsAre("Bob has disconnected from you!"));
    EXPECT_EQ(System().MountedNodeNumber(), 0);
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Button("Analog").isChecked());
}

TEST_F(WindowRemoteTest, ARelayThatClosesForgetsTheMountedNodeToo)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    AttachNodes();
    Click("DetectNodes");
    Click("Node1");
    Click("Mount");
    relay.Hang();
    ASSERT_TRUE(Until([this] { return Status() == "Disconnected"; }));
    EXPECT_EQ(Msg(), "Disconnected from Server");
    EXPECT_EQ(System().MountedNodeNumber(), 0);
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowRemoteTest, WithoutAProfileTheUserIsAskedAndNoChangesNothing)
{
    ASSERT_TRUE(StartRemote(false));
    user.answers = {QMessageBox::No};
    Click("Connect");
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].startsWith("You have not selected a Remote Diagnostics User Profile.  "));
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_TRUE(Window().Hub().IsReady());
    EXPECT_EQ(relay.frames.size(), 0U);
}

TEST_F(WindowRemoteTest, CancellingTheUsersWindowLogsOff)
{
    ASSERT_TRUE(StartRemote());
    bool sawHourglass = true;
    onUsers = [&](QDialog& users) {
        sawHourglass = QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
        QTest::keyClick(&users, Qt::Key_Escape);
    };
    Click("Connect");
    EXPECT_FALSE(sawHourglass);
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Until([this] { return relay.Count(frameLogoff) == 1; }));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(WindowRemoteTest, AConnectionThatIsRefusedIsToldTwice)
{
    ASSERT_TRUE(StartRemote());
    relay.Close();
    Click("Connect");
    ASSERT_THAT(user.seen, SizeIs(2));
    EXPECT_TRUE(user.seen[0].startsWith("Remote Diagnostics communications error [10061]\n\n"));
    EXPECT_EQ(user.seen[1], "Cannot connect to Remote Diagnostics:\nAuthentication has timed out.");
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Button("Connect").isEnabled());
}

TEST_F(WindowRemoteTest, TheMethodCantBeChangedWhileConnectingIsUnderWay)
{
    ASSERT_TRUE(StartRemote());
    relay.On(frameAuthenticate, [this](auto&) {
        Entry("mnuConnectUsing_101").trigger();
        relay.Send(frameAuthenticated, PipeWelcome{7, "Welcome"}.Encode());
    });
    Click("Connect");
    EXPECT_EQ(Status(), "Piped");
    EXPECT_TRUE(Entry("mnuConnectUsing_103").isChecked());
    Click("Disconnect");
    EXPECT_TRUE(Until([this] { return relay.Count(frameLogoff) == 1; }));
}

TEST_F(WindowRemoteTest, TheWindowsOfTheToolbarOpenWithoutAWait)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    for (const char* key : {"RDUsers", "RDChat", "RDPing"})
        Click(key);
    for (const char* name : {"frmPipeUsersDialog", "frmPipeChatDialog", "frmRDNetLatency"})
        EXPECT_TRUE(IsShown(name)) << name;
    EXPECT_EQ(Dialog("frmPipeChatDialog")->windowTitle(), "Connected to Bob");
    EXPECT_TRUE(Window().Hub().IsReady());

    Click("Disconnect");
    for (const char* name : {"frmPipeUsersDialog", "frmPipeChatDialog", "frmRDNetLatency"})
        EXPECT_FALSE(IsShown(name)) << name;
}

TEST_F(WindowRemoteTest, EachOpeningOfTheLatencyWindowIsANewOne)
{
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    relay.On(frameEchoServer, [this](const std::string& body) { relay.Send(frameEchoReply, body); });
    Click("RDPing");
    Dialog("frmRDNetLatency")->findChild<QPushButton*>("cmdServer")->click();
    const auto info = [this] { return Dialog("frmRDNetLatency")->findChild<QLabel*>("lblInfo")->text(); };
    ASSERT_TRUE(Until([&] { return info().startsWith("Measurement Complete!\nAverage round trip latency is 0.0"); }))
        << info().toStdString();
    EXPECT_EQ(relay.Count(frameEchoServer), 20);
    Dialog("frmRDNetLatency")->close();

    Click("RDPing");
    EXPECT_EQ(info().section('\n', 0, 0), "Average latency of (20) 32 byte frames.");
    // A window that is still open only comes to the front.
    Dialog("frmRDNetLatency")->setProperty("mark", true);
    Click("RDPing");
    EXPECT_TRUE(Dialog("frmRDNetLatency")->property("mark").toBool());
}

TEST_F(WindowRemoteTest, AnEchoTooManyIsReportedAndTheConnectionGoesOn)
{
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    Click("RDPing");
    for (int i = 0; i < 21; ++i)
        relay.Send(frameEchoReply, "late");
    ASSERT_TRUE(Until([this] { return !user.seen.empty(); }));
    EXPECT_TRUE(user.seen[0].contains("Subscript out of range")) << user.seen[0].toStdString();
    EXPECT_TRUE(user.seen[0].contains("frmDiag.Winsock.DataArrival")) << user.seen[0].toStdString();
    Answer(true);
    EXPECT_TRUE(Until([this] { return Control<QPushButton>("cmdSend").isEnabled(); }));
}

TEST_F(WindowRemoteTest, TheChatGoesBothWays)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    relay.Send(frameChat, "Good morning");
    ASSERT_TRUE(Until([this] { return IsShown("frmPipeChatDialog"); }));
    QDialog& chat = *Dialog("frmPipeChatDialog");
    QTest::keyClicks(chat.findChild<QLineEdit*>("txtSend"), "Hello");
    chat.findChild<QPushButton*>("cmdSend")->click();
    ASSERT_TRUE(Until([this] { return relay.Count(frameChat) == 1; }));
    EXPECT_EQ(relay.frames.back().body, "Hello");
    const QString history = chat.findChild<QPlainTextEdit*>("txtMessages")->toPlainText();
    EXPECT_TRUE(history.startsWith("[Bob: ") && history.contains("]\nGood morning\n\n[Me: ")) << history.toStdString();
    EXPECT_TRUE(history.endsWith("]\nHello")) << history.toStdString();
}

TEST_F(WindowRemoteTest, AChatThatClosesInsideItsOwnBoxIsNoTrouble)
{
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    QDialog& chat = *Dialog("frmPipeChatDialog");
    // The pipe's end takes the other user away before it closes the window.
    onTimedMessage = [&] {
        chat.findChild<QLineEdit*>("txtSend")->setText("Hello");
        chat.findChild<QPushButton*>("cmdSend")->setEnabled(true);
        chat.findChild<QPushButton*>("cmdSend")->click();
    };
    BreakPipe();
    ASSERT_TRUE(Until([this] { return !timedMessages.empty(); }));
    EXPECT_THAT(user.seen, ElementsAre("No remote user is currently connected."));
    EXPECT_EQ(relay.Count(frameChat), 0);
}

TEST_F(WindowRemoteTest, TheChoiceOfAProfileIsStored)
{
    ASSERT_TRUE(StartRemote());
    Window().close();
    EXPECT_EQ(Stored("Settings/RDEnable"), "True");
    EXPECT_EQ(Stored("Settings/RDRecentProfileKey"), "{ANN}");
}

TEST_F(WindowRemoteTest, AProfileStorageThatIsOutOfOrderIsToldAtTheStart)
{
    ASSERT_TRUE(QDir(dir.filePath("config")).mkpath("registry.ini"));
    ASSERT_TRUE(StartRemote(false));
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].startsWith("There is a problem with your list of saved Profiles."));
    Window().close();
    EXPECT_EQ(Stored("Settings/RDEnable"), "False");
    EXPECT_EQ(Stored("Settings/RDRecentProfileKey"), "");
}

// --- Closing the window --------------------------------------------------------------------------------------------

struct Wait {
    const char* name;
    PipeFrameType closesAt;
};

class ClosingWhileConnecting : public RemoteWindowTest, public testing::WithParamInterface<Wait> {};

TEST_P(ClosingWhileConnecting, EndsTheProgramAndTheConnectionWithoutABox)
{
    ASSERT_TRUE(StartRemote());
    relay.On(GetParam().closesAt, [this](auto&) { Window().close(); });
    Click("Connect");
    EXPECT_FALSE(Window().isVisible());
    EXPECT_TRUE(Until([this] { return !relay.HasClient(); }));
    EXPECT_EQ(relay.Count(frameLogoff), 1);
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    program.reset();
}

INSTANTIATE_TEST_SUITE_P(WindowRemoteTest, ClosingWhileConnecting,
                         testing::Values(Wait{"InTheWaitForTheLogon", PipeFrameType::frameAuthenticate},
                                         Wait{"InTheWaitForTheList", PipeFrameType::frameUserListRequest},
                                         Wait{"InTheWaitForThePipe", PipeFrameType::framePipeTo}),
                         [](const auto& row) { return row.param.name; });

TEST_F(WindowRemoteTest, ClosingBeforeTheSocketStandsEndsTheProgram)
{
    ASSERT_TRUE(StartRemote());
    QTimer::singleShot(0, &Window(), [this] { Window().close(); });
    Click("Connect");
    EXPECT_FALSE(Window().isVisible());
    EXPECT_THAT(user.seen, IsEmpty());
    program.reset();
}

TEST_F(WindowRemoteTest, ClosingWhileTheUsersWindowIsOpenEndsTheProgram)
{
    ASSERT_TRUE(StartRemote());
    onUsers = [this](QDialog&) { Window().close(); };
    Click("Connect");
    EXPECT_FALSE(Window().isVisible());
    EXPECT_FALSE(IsShown("frmPipeUsersDialog"));
    EXPECT_TRUE(Until([this] { return relay.Count(frameLogoff) == 1; }));
    EXPECT_EQ(relay.Count(framePipeTo), 0);
    program.reset();
}

TEST_F(WindowRemoteTest, ClosingInAPipeUnmountsBreaksThePipeAndLogsOff)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    AttachNodes();
    Click("DetectNodes");
    Click("Node1");
    Click("Mount");
    const int before = relay.Count(frameNetworkMessage);
    Window().close();
    EXPECT_FALSE(Window().isVisible());
    EXPECT_TRUE(Until([this] { return relay.Count(frameLogoff) == 1; }));
    EXPECT_EQ(relay.Count(frameNetworkMessage), before + 1);
    EXPECT_EQ(relay.Count(frameBreakPipe), 1);
    EXPECT_THAT(user.seen, IsEmpty());
    program.reset();
}

TEST_F(WindowRemoteTest, ClosingUnderATimedMessageEndsTheProgram)
{
    ASSERT_NO_FATAL_FAILURE(StartPiped());
    onTimedMessage = [this] { Window().close(); };
    BreakPipe();
    EXPECT_TRUE(Until([this] { return !timedMessages.empty(); }));
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(WindowRemoteTest, AProgramThatIsDroppedInAPipeGoesQuietly)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("RDPing");
    program.reset();
    EXPECT_TRUE(Until([this] { return !relay.HasClient(); }));
}

}  // namespace
}  // namespace fenrik
