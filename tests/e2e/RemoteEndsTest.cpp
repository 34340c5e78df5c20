// What ends a remote connection, at each state that it can be in: the relay goes, the pipe breaks, the program closes.

#include "e2e/RemoteFixture.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RemoteEnds : public RemoteTest {
protected:
    /// Does `work` as soon as the download's bar has moved.
    void InTheMiddleOfADownload(const std::function<void()>& work)
    {
        Click("Nodebar", "Node1");
        boxes.AnswerNext(QMessageBox::Yes);
        QTimer watch;
        QElapsedTimer rest;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (Find<QProgressBar>("pbProgress").value() < 5)
                return;
            watch.stop();
            rest.start();
            work();
        });
        watch.start(1);
        Click("Toolbar", "Refresh");
        ASSERT_TRUE(rest.isValid()) << "the download never got so far";
        // Not one of the 15 seconds that an answer may take.
        EXPECT_LT(rest.elapsed(), 8000);
    }

    /// As of any link that fails, and nothing else.
    void ExpectTroubleIsTold()
    {
        const QStringList told = boxes.Take();
        ASSERT_EQ(told.size(), 1);
        EXPECT_TRUE(told[0].startsWith("Diagnostics is having trouble communicating with the node."));
    }

    void CloseTimedMessage()
    {
        boxes.WorkNext("frmRDTimedMessage", [this](QDialog& dialog) {
            message = dialog.findChild<QLabel*>("lblInformation")->text().toStdString();
            QTest::mouseClick(&dialog, Qt::LeftButton);
        });
    }

    void OnUsersWindow(const std::function<void()>& work)
    {
        boxes.WorkNext("frmPipeUsersDialog", [work](QDialog&) { work(); });
    }

    [[nodiscard]] bool ColleagueIsAlone()
    {
        return Eventually([this] { return vehicle.HasNote("no longer piped to Ann [Diag Client]"); });
    }

    std::string message;
};

// --- The relay -----------------------------------------------------------------------------------------------------

TEST_F(RemoteEnds, WithoutARelay)
{
    relay.Kill();
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    const QStringList told = boxes.Take();
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].startsWith("Remote Diagnostics communications error [10061]\n\n"));
    EXPECT_EQ(told[1], "Cannot connect to Remote Diagnostics:\nAuthentication has timed out.");
    ExpectDisconnected();
}

TEST_F(RemoteEnds, WithARelayThatIsSilentFromTheStart)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    relay.Pause(true);
    QElapsedTimer timer;
    timer.start();
    Click("Toolbar", "Connect");
    EXPECT_THAT(boxes.Take(), ElementsAre("Cannot connect to Remote Diagnostics:\nAuthentication has timed out."));
    EXPECT_LE(timer.elapsed(), 3000);
    ExpectDisconnected();

    relay.Pause(false);
    ASSERT_NO_FATAL_FAILURE(vehicle.StartAtRelay(relay.Address(), "--ask", "quiet\n"));
    Connect();
    EXPECT_EQ(Text("txtStatus"), "Piped");
}

TEST_F(RemoteEnds, WithARelayThatGoesWhileTheUserChooses)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    OnUsersWindow([this] { relay.Kill(); });
    Click("Toolbar", "Connect");
    EXPECT_THAT(boxes.Take(), IsEmpty());
    ExpectDisconnected();
}

TEST_F(RemoteEnds, WithARelayThatFallsSilentBeforeThePipe)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    boxes.WorkNext("frmPipeUsersDialog", [this](QDialog& users) {
        relay.Pause(true);
        ChooseBob(users);
    });
    Click("Toolbar", "Connect");
    EXPECT_THAT(boxes.Take(), ElementsAre("Cannot connect to Remote Diagnostics:\nPipe to Bob has timed out."));
    ExpectDisconnected();
}

TEST_F(RemoteEnds, WithARelayThatGoesWhileTheColleagueIsAsked)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    Connect();
    ASSERT_EQ(Text("txtMsg"), "Piped to Bob");
    relay.Kill();
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    ExpectDisconnected();
}

TEST_F(RemoteEnds, WithARelayThatGoesFromAMountedNode)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("Nodebar", "Node2");
    Click("Nodebar", "Mount");
    ASSERT_TRUE(IsVisible("Nodebar", "Unmount"));
    relay.Kill();
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    ExpectDisconnected();
    EXPECT_FALSE(IsVisible("Nodebar", "Unmount"));
}

TEST_F(RemoteEnds, WithARelayThatGoesInTheMiddleOfADownload)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    ASSERT_NO_FATAL_FAILURE(InTheMiddleOfADownload([this] { relay.Kill(); }));
    ExpectTroubleIsTold();
    ExpectDisconnected();
}

// --- The pipe ------------------------------------------------------------------------------------------------------

TEST_F(RemoteEnds, WithAColleagueWhoBreaksThePipeInTheMiddleOfADownload)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    CloseTimedMessage();
    ASSERT_NO_FATAL_FAILURE(InTheMiddleOfADownload([this] { vehicle.Control("break"); }));
    ExpectTroubleIsTold();
    EXPECT_EQ(message, "Bob has disconnected from you!");
    ExpectDisconnected();
}

TEST_F(RemoteEnds, WithAColleagueWhoGoesWhileAsked)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    Connect();
    CloseTimedMessage();
    EXPECT_EQ(vehicle.End(), 0);
    ASSERT_TRUE(Eventually([this] { return !message.empty(); }));
    ExpectDisconnected();
}

TEST_F(RemoteEnds, NotWithADenialInTheMiddleOfADownload)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    ASSERT_NO_FATAL_FAILURE(InTheMiddleOfADownload([this] { vehicle.Control("deny"); }));
    ExpectTroubleIsTold();
    EXPECT_EQ(Text("txtStatus"), "Piped");
    EXPECT_FALSE(IsEnabled("Toolbar", "Refresh"));
    EXPECT_TRUE(IsEnabled("Toolbar", "Disconnect"));
    Click("Toolbar", "Disconnect");
    ExpectDisconnected();
}

// --- The program ---------------------------------------------------------------------------------------------------

TEST_F(RemoteEnds, WithTheProgramWhileItLogsOn)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    relay.Pause(true);
    QTimer::singleShot(100, program->Window(), [this] { program->Window()->close(); });
    Click("Toolbar", "Connect");
    EXPECT_FALSE(program->Window()->isVisible());
    program.reset();
}

TEST_F(RemoteEnds, WithTheProgramWhileTheUserChooses)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    OnUsersWindow([this] { program->Window()->close(); });
    Click("Toolbar", "Connect");
    EXPECT_FALSE(program->Window()->isVisible());
    program.reset();
    EXPECT_TRUE(Eventually([this] { return relay.Logged("logged off"); }));
}

TEST_F(RemoteEnds, WithTheProgramWhileTheColleagueIsAsked)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    Connect();
    CloseTool();
    EXPECT_TRUE(ColleagueIsAlone());
}

TEST_F(RemoteEnds, WithTheProgramThatLetsTheMountedNodeGoFirst)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("Nodebar", "Node2");
    Click("Nodebar", "Mount");
    CloseTool();
    EXPECT_TRUE(ColleagueIsAlone());
    EXPECT_EQ(vehicle.Meanings("RX").back(), "905 state=0 ext=0 data=2");
}

TEST_F(RemoteEnds, WithTheProgramInTheMiddleOfADownload)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    ASSERT_NO_FATAL_FAILURE(InTheMiddleOfADownload([this] { program->Window()->close(); }));
    EXPECT_FALSE(program->Window()->isVisible());
    program.reset();
    EXPECT_TRUE(ColleagueIsAlone());
}

}  // namespace
}  // namespace fenrik
