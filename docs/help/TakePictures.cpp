// Takes the pictures of the manual from the running program: TakePictures BIN-FOLDER PICTURE-FOLDER
//
// The program runs in this process with a profile of its own, the simulated vehicle and the relay beside it. A step
// that does not come about ends the run with code 1, so that no picture shows less than it should.

#include "PictureSession.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>

#include <cstdio>

namespace {

using namespace fenrik;

/// Parts of the day in which several things show: outputs on, a fault, a load shed.
constexpr char kVehicle[] = R"(
node 1 type 9  "Front body"
node 2 type 0  "Rear body"
node 3 type 2  "Door left"
node 4 type 1  "Driver's display"
node 5 type 6  "Climate"
node 6 type 10 "Roof lights" push
node 7 type 16 "Engine bay" push
node 8 type 5  "Switch panel" push memory
at 14 shed 2 1
)";

void TakeMainWindow(PictureSession& session)
{
    session.StartTool();
    session.ClickTool("Connect");
    session.Wait(9000);
    session.Take("main");
}

void TakeViews(PictureSession& session)
{
    session.TakeViewArea("view-analog");
    session.ClickNode("Node1");
    session.ClickNode("Mount");
    session.AnswerBoxes(QMessageBox::Yes);
    session.ClickTool("Refresh");
    session.ClickTool("States");
    session.Wait(1500);
    session.TakeViewArea("view-states");
    session.ClickTool("FlashInfo");
    session.Wait(500);
    session.TakeViewArea("view-flash");
    session.ClickTool("InputDiagnostics");
    session.TakeViewArea("view-inputs");
    session.ClickTool("OutputDiagnostics");
    session.Control("fault 1 3");
    session.Wait(500);
    session.Find<QTreeView>("tvOutputs").expandAll();
    session.TakeViewArea("view-outputs");
}

void TakeMessages(PictureSession& session)
{
    auto& category = session.Find<QComboBox>("CboCategory");
    category.setCurrentIndex(1);
    session.TakeMessageArea("messages");
}

void TakeDialogs(PictureSession& session)
{
    session.TakeDialog(
        "command-query", "frmCmdQry", [&session] { session.Choose("mnuCommandQuery"); },
        [&session](QWidget& window) {
            window.findChild<QCheckBox*>("chkVerbose")->setChecked(true);
            window.findChild<QComboBox*>("cboNodeNumber")->setCurrentIndex(1);
            window.findChild<QPushButton*>("bSend")->click();
            session.Wait(700);
        });
    session.TakeDialog("special-command", "frmSpecialCommand", [&session] { session.Choose("mnuAssignEatonE33"); });
    session.AnswerBoxes(QMessageBox::No);
    session.ClickTool("Disconnect");
    session.TakeDialog(
        "database-options", "frmDBProperties", [&session] { session.ClickTool("System"); },
        [](QWidget& window) { window.findChild<QListWidget*>("lstSystems")->setCurrentRow(1); });
    session.TakeDialog("message-logging", "FrmMsgLogging", [&session] { session.ClickTool("Log"); });
    session.TakeDialog("tool-options", "FrmOptions", [&session] { session.ClickTool("Harnwick"); });
    session.TakeDialog("about", "frmAbout", [&session] { session.ClickTool("About"); });
}

void TakeProfiles(PictureSession& session, QWidget& options)
{
    session.TakeDialog("remote-profiles", "frmRemoteSettings",
                       [&options] { options.findChild<QPushButton*>("cmdRDProfiles")->click(); });
}

void TakeNetworkOptions(PictureSession& session)
{
    const char* const names[] = {"network-transceiver", "network-modem", "network-pipe-server"};
    for (int tab = 0; tab < 3; ++tab)
        session.TakeDialog(
            names[tab], "frmCommSetup", [&session] { session.ClickTool("Port"); },
            [&session, tab](QWidget& window) {
                window.findChild<QTabWidget*>("sstabPortSelection")->setCurrentIndex(tab);
                if (tab == 2)
                    TakeProfiles(session, window);
            });
}

void TakeModemWindows(PictureSession& session)
{
    session.Choose("mnuConnectUsing_102");
    session.TakeDialog(
        "dialer", "frmDialer", [&session] { session.ClickTool("Connect"); },
        [](QWidget& window) { window.findChild<QLineEdit*>("tbPhoneNumber")->setText("555-0142"); });
}

void TakeRemoteWindows(PictureSession& session)
{
    session.StartRelay();
    session.Choose("mnuConnectUsing_103");
    session.TakeDialog(
        "remote-users", "frmPipeUsersDialog", [&session] { session.ClickTool("Connect"); },
        [](QWidget& window) { window.findChild<QListWidget*>("lstUsers")->setCurrentRow(0); },
        [](QWidget& window) { window.findChild<QPushButton*>("cmdConnect")->click(); });
    session.Wait(2000);
    session.Take("remote-main");
    session.TakeDialog(
        "remote-chat", "frmPipeChatDialog", [&session] { session.ClickTool("RDChat"); },
        [&session](QWidget& window) {
            window.findChild<QLineEdit*>("txtSend")->setText("Which lamp stays dark?");
            window.findChild<QPushButton*>("cmdSend")->click();
            session.Wait(800);
        });
    session.TakeDialog(
        "remote-latency", "frmRDNetLatency", [&session] { session.ClickTool("RDPing"); },
        [&session](QWidget& window) {
            for (auto* button : window.findChildren<QPushButton*>()) {
                if (button->text().contains(QStringLiteral("Server")))
                    button->click();
            }
            session.Wait(1500);
        });
    session.ClickTool("Disconnect");
}

void TakeLegacyWindow(const QString& bin, const QString& pictures)
{
    PictureSession session(bin, pictures, PictureSession::Network::Fenrik98);
    session.StartVehicle("");
    session.StartTool();
    session.Wait(1500);
    session.ClickTool("Connect");
    session.Wait(9000);
    session.Take("older-network");
    session.CloseTool();
}

void TakeAll(const QString& bin, const QString& pictures)
{
    {
        PictureSession session(bin, pictures, PictureSession::Network::Fenrik2000);
        session.StartVehicle(kVehicle);
        TakeMainWindow(session);
        TakeViews(session);
        TakeMessages(session);
        TakeDialogs(session);
        TakeNetworkOptions(session);
        TakeModemWindows(session);
        TakeRemoteWindows(session);
        session.CloseTool();
    }
    TakeLegacyWindow(bin, pictures);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3)
        return 2;
    try {
        TakeAll(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "take-pictures: %s\n", error.what());
        return 1;
    }
    return 0;
}
