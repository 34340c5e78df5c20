// A vehicle that is attached to a colleague's computer, worked through a real relay.

#include "e2e/HeldNode.h"
#include "e2e/RemoteFixture.h"
#include "e2e/Scenarios.h"
#include "model/CNode.h"
#include "model/CSystem.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using Remote = RemoteTest;

TEST_F(Remote, WaitsForTheColleagueAndWatchesMeanwhile)
{
    ASSERT_NO_FATAL_FAILURE(StartAll("--ask", "quiet\nevery 0.05 send 1 on\n"));
    Connect();
    EXPECT_EQ(Text("txtStatus"), "Piped");
    EXPECT_EQ(Text("txtMsg"), "Piped to Bob");
    EXPECT_TRUE(program->Window()->windowTitle().endsWith(" [Piped to Bob]"));
    EXPECT_THAT(LabelOf("frmPipeChatDialog", "lblStatus"), StartsWith(" Waiting for Bob to accept the connection"));
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("Ann [Diag Client] asks for access"); }));

    EXPECT_TRUE(Eventually([this] { return LineCount() >= 3; }));
    EXPECT_THAT(Line(0), StartsWith("Head Lamps Low Beam|On|"));
    EXPECT_FALSE(Find<QPushButton>("cmdSend").isEnabled());
    EXPECT_FALSE(IsEnabled("Toolbar", "DetectNodes"));
}

TEST_F(Remote, MaySendOnceItIsGrantedAndNoMoreOnceItIsDenied)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    Connect();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("grant"));
    ASSERT_TRUE(Eventually([this] { return Text("txtMsg") == "Bob has granted access to remote network"; }));
    EXPECT_FALSE(Shown("frmPipeChatDialog"));

    Click("Toolbar", "DetectNodes");
    EXPECT_EQ(Text("txtMsg"), "Nodes Detected");
    EXPECT_THAT(vehicle.Meanings("RX"), Contains("901 state=0 ext=0 data=8"));
    Find<QLineEdit>("TxtData").setText("7");
    QTest::mouseClick(&Find<QPushButton>("cmdSend"), Qt::LeftButton);
    EXPECT_TRUE(Eventually([this] { return vehicle.Meanings("RX").back().ends_with(" data=7"); }))
        << vehicle.Meanings("RX").back();

    ASSERT_NO_FATAL_FAILURE(vehicle.Control("deny"));
    ASSERT_TRUE(Eventually([this] { return Text("txtMsg") == "Piped to Bob"; }));
    EXPECT_FALSE(Find<QPushButton>("cmdSend").isEnabled());
    EXPECT_EQ(LabelOf("frmPipeChatDialog", "lblStatus"), " Bob has denied access to Remote Network.");
    // It may be granted once more.
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("grant"));
    EXPECT_TRUE(Eventually([this] { return Find<QPushButton>("cmdSend").isEnabled(); }));
}

TEST_F(Remote, GoesOnWaitingIfTheFirstAnswerIsNo)
{
    ASSERT_NO_FATAL_FAILURE(StartAll("--deny"));
    Connect();
    ASSERT_TRUE(Eventually([this] { return vehicle.HasNote("access denied"); }));
    EXPECT_THAT(LabelOf("frmPipeChatDialog", "lblStatus"), StartsWith(" Waiting for Bob"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("grant"));
    EXPECT_TRUE(Eventually([this] { return Find<QPushButton>("cmdSend").isEnabled(); }));
}

TEST_F(Remote, DownloadsANodeAsItIs)
{
    SetNodes(11);
    ASSERT_NO_FATAL_FAILURE(StartGranted(ScenarioText("download.txt").constData()));
    for (const int number : {1, 7}) {
        DownloadNode(number);
        ExpectAsDescribed(*program->Window()->System().Nodes().Find(number),
                          DescribedNode(ScenarioPath("download.txt"), number));
    }
}

TEST_F(Remote, ChatsBothWays)
{
    ASSERT_NO_FATAL_FAILURE(StartAll());
    Connect();
    const auto history = [] {
        return Shown("frmPipeChatDialog")->findChild<QPlainTextEdit*>("txtMessages")->toPlainText();
    };
    ASSERT_TRUE(Eventually(
        [&] { return history().endsWith("\nHello Ann [Diag Client], this is Bob. The vehicle is connected."); }));
    QTest::keyClicks(Shown("frmPipeChatDialog")->findChild<QLineEdit*>("txtSend"), "Good morning");
    QTest::keyClick(Shown("frmPipeChatDialog")->findChild<QLineEdit*>("txtSend"), Qt::Key_Return);
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("Ann [Diag Client] says: Good morning"); }));
    EXPECT_TRUE(Eventually([&] { return history().endsWith("]\nYou said: Good morning"); }));
    EXPECT_TRUE(history().contains("[Ann [Diag Client]: "));

    // After the grant the window is out of the way, and a message brings it back.
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("grant"));
    ASSERT_TRUE(Eventually([] { return !Shown("frmPipeChatDialog"); }));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("say Look at node 2"));
    ASSERT_TRUE(Eventually([] { return Shown("frmPipeChatDialog") != nullptr; }));
    EXPECT_TRUE(history().contains("You said: Good morning") && history().endsWith("Look at node 2"));
}

TEST_F(Remote, MeasuresTheLatencyToTheRelayAndToTheColleague)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("Toolbar", "RDPing");
    for (const char* button : {"cmdServer", "cmdClient"}) {
        SCOPED_TRACE(button);
        // A window that opens in a pipe has its client button off until a test has come to its end.
        EXPECT_EQ(Shown("frmRDNetLatency")->findChild<QPushButton*>("cmdClient")->isEnabled(),
                  QByteArray(button) == "cmdClient");
        Shown("frmRDNetLatency")->findChild<QPushButton*>(button)->click();
        EXPECT_EQ(LabelOf("frmRDNetLatency", "lblInfo"), "Measuring Network Latency ...\nSending 32 byte frames");
        ASSERT_TRUE(Eventually([] {
            return LabelOf("frmRDNetLatency", "lblInfo")
                .starts_with("Measurement Complete!\nAverage round trip latency is 0.0");
        })) << LabelOf("frmRDNetLatency", "lblInfo");
    }
}

TEST_F(Remote, IsBrokenOffByTheColleague)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    std::string message;
    boxes.WorkNext("frmRDTimedMessage", [&message](QDialog& dialog) {
        message = dialog.findChild<QLabel*>("lblInformation")->text().toStdString();
        QTest::mouseClick(&dialog, Qt::LeftButton);
    });
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("break"));
    ASSERT_TRUE(Eventually([&] { return !message.empty(); }));
    EXPECT_EQ(message, "Bob has disconnected from you!");
    ExpectDisconnected();
    EXPECT_EQ(Text("txtMsg"), "Disconnected from Server");
}

TEST_F(Remote, LogsOffAndConnectsAgain)
{
    ASSERT_NO_FATAL_FAILURE(StartGranted());
    Click("Toolbar", "Disconnect");
    ExpectDisconnected();
    EXPECT_EQ(Text("txtMsg"), "");
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("no longer piped to Ann [Diag Client]"); }));
    Connect();
    EXPECT_TRUE(Eventually([this] { return Find<QPushButton>("cmdSend").isEnabled(); }));
}

TEST_F(Remote, IsToldThatNobodyElseIsThere)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    EXPECT_THAT(boxes.Take(), ElementsAre(testing::Truly([](const QString& text) {
                    return text.startsWith("There are currently no other Users logged on");
                })));
    ExpectDisconnected();
}

}  // namespace
}  // namespace fenrik
