#include "app/Connection.h"

#include "AppFixture.h"
#include "link/ConnectAdvice.h"
#include "link/Transceiver.h"
#include "model/CSystem.h"

#include <QFile>
#include <QGuiApplication>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The window, as far as a connection knows it. Its transceiver is found on USB, so that it is ready at once.
class WindowRecorder : public ConnectionHost, public TransceiverHost {
public:
    void SetUIState(int state) override { Note("state", state); }
    void setDisplayState(int state) override { Note("view", state); }
    void SetTrafficTimers(bool receive, bool sendSync) override
    {
        calls.push_back(std::string("timers") + (receive ? " receive" : "") + (sendSync ? " sync" : ""));
    }
    void ReadPanels() override { calls.push_back("read panels"); }
    void ResetPanels() override { calls.push_back("reset panels"); }
    void DetectNodes() override
    {
        calls.push_back("detect");
        onDetect();
    }
    bool UnmountNode(int node) override
    {
        Note("unmount", node);
        return true;
    }
    void SetToolbarEnabled(bool enabled) override { calls.push_back(enabled ? "toolbar on" : "toolbar off"); }
    void ModemConnect() override { calls.push_back("dial"); }
    void DisconnectModem() override { calls.push_back("hang up"); }
    void RDconnect() override { calls.push_back("relay"); }
    void RDdisconnect() override { calls.push_back("no relay"); }
    void ShowMessage(const QString& text) override { messages.push_back(text.toStdString()); }
    void ShowStatus(const QString&) override {}
    void RefreshConnection(bool readPanels, bool detect) override { connection->RefreshConnection(readPanels, detect); }

    Connection* connection = nullptr;
    std::vector<std::string> calls;
    std::vector<std::string> messages;
    std::function<void()> onDetect = [] {};

private:
    void Note(const char* what, int number) { calls.push_back(what + (' ' + std::to_string(number))); }
};

class ConnectionTest : public AppTest {
protected:
    ConnectionTest()
    {
        window.connection = &connection;
        window.onDetect = [this] { system.ActivateNode(1); };
        run.USBTransceiverSelected = true;
        settings.CommPort = 5;
        settings.AutoDetect = true;
        settings.LoggingOn = true;
        settings.LoggingUnique = true;
        portFolder.Link(5, terminal.Path());
    }

    PseudoTerminal terminal;
    CSystem system{settings, dir.path()};
    WindowRecorder window;
    Transceiver transceiver{port, handler, pump, boxes, version, settings, run, window};
    Connection connection{services, portState, system, transceiver, window};
};

TEST_F(ConnectionTest, ConnectingGoesStepByStep)
{
    connection.Connect();
    EXPECT_THAT(window.calls, ElementsAre("toolbar off", "reset panels", "view 0", "timers receive", "state 1",
                                          "read panels", "detect"));
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(handler.TargetPort(), Transport::kTransceiver);
    EXPECT_EQ(system.NodesInSystem(), 8) << "the system was loaded, as it has no name";
    EXPECT_TRUE(QFile::exists(log.Path()));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ConnectionTest, ANamedSystemIsNotLoadedAgain)
{
    settings.SystemName = "Bus";
    settings.SystemPath = "/somewhere";
    connection.CommonPreConnect();
    EXPECT_EQ(system.NodesInSystem(), 0);
}

TEST_F(ConnectionTest, EachConnectMakesANewLogFileOnlyWithUniqueOn)
{
    const QString first = log.Path();
    clock.Advance(60);
    settings.LoggingUnique = false;
    connection.CommonPreConnect();
    EXPECT_EQ(log.Path(), first);
    settings.LoggingUnique = true;
    connection.CommonPreConnect();
    EXPECT_NE(log.Path(), first);
    EXPECT_TRUE(QFile::exists(first));
    EXPECT_TRUE(QFile::exists(log.Path()));
}

TEST_F(ConnectionTest, WithLoggingOffNoFileIsMade)
{
    settings.LoggingOn = false;
    connection.CommonPreConnect();
    EXPECT_FALSE(QFile::exists(log.Path()));
}

TEST_F(ConnectionTest, AnUnwritableLogIsReportedAndTheConnectionGoesOn)
{
    run.DiagLogPath = dir.path() + "/no such folder";
    connection.Connect();
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmDiag.CommonPreConnect");
    EXPECT_TRUE(port.PortOpen());
}

// --- Errors of the port --------------------------------------------------------------------------------------------

TEST_F(ConnectionTest, APortThatDoesNotExistIsTold)
{
    settings.CommPort = 9;
    connection.Connect();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Comm Port 9 does not exist." + ConnectAdvice::NoPort());
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Ok);
    EXPECT_TRUE(QFile::exists(log.Path())) << "the head that was written before stays in the file";
}

TEST_F(ConnectionTest, APortInUseIsTriedAgainUntilTheUserGivesUp)
{
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    boxes.answers = {QMessageBox::Retry, QMessageBox::Retry, QMessageBox::Cancel};
    connection.Connect();
    ASSERT_THAT(boxes.boxes, SizeIs(3));
    EXPECT_EQ(boxes.boxes[0].text, "Comm Port 5 already open.\n"
                                   "Close the port and click Retry to continue, or Cancel to abort operation." +
                                       ConnectAdvice::PortInUse());
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Retry | QMessageBox::Cancel);
    EXPECT_FALSE(port.PortOpen());
}

/// Gives the port free before it answers.
class FreeingBoxes : public BoxRecorder {
public:
    explicit FreeingBoxes(SerialControl& other) : mOther(other) {}
    Button MsgBox(const QString& text, QMessageBox::Icon icon, Buttons buttons, const QString& title) override
    {
        mOther.setPortOpen(false);
        BoxRecorder::MsgBox(text, icon, buttons, title);
        return QMessageBox::Retry;
    }

private:
    SerialControl& mOther;
};

TEST_F(ConnectionTest, ARetryThatFindsThePortFreeConnects)
{
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    FreeingBoxes freeing(other);
    const Services own{settings, store,   windowStore, run,    commands, specials, port,  handler, log,     clock,
                       pump,     freeing, shell,       errors, version,  folder,   ports, rd,      profiles};
    Connection patient(own, portState, system, transceiver, window);
    window.connection = &patient;
    patient.Connect();
    EXPECT_THAT(freeing.boxes, SizeIs(1));
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(ConnectionTest, LineParametersThatADeviceRefusesAreTold)
{
    portFolder.Link(5, "/dev/null");
    connection.Connect();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Unable to set Comm State on Comm Port 5 .  Please retry.  ");
    EXPECT_FALSE(port.PortOpen());
}

// --- After the port ------------------------------------------------------------------------------------------------

TEST_F(ConnectionTest, ANetworkWithoutTrafficIsTold)
{
    window.onDetect = [] {};
    connection.Connect();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "A transceiver was detected, but no network traffic was heard.\n"
                                   "Please check all connections to the transceiver and the network, and\n"
                                   "make sure power has been recycled since the last download.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(boxes.boxes[0].title, "") << "the program's";
}

TEST_F(ConnectionTest, APortLostInsideTheDetectionIsNotCalledASilentNetwork)
{
    window.onDetect = [this] { port.setPortOpen(false); };
    connection.Connect();
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(ConnectionTest, DetectionIsAnOption)
{
    settings.AutoDetect = false;
    connection.Connect();
    EXPECT_EQ(window.calls.back(), "read panels");
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(ConnectionTest, TheSyncTimerRunsOnlyWithItsOption)
{
    settings.SendSync = true;
    connection.Connect();
    EXPECT_THAT(window.calls, testing::Contains("timers receive sync"));
}

TEST_F(ConnectionTest, AListeningRelayReceivesAndNeitherSyncsNorDetects)
{
    handler.setTargetPort(Transport::kRemote);
    remote.state = 4;
    settings.SendSync = true;
    connection.RefreshConnection(true, true);
    EXPECT_THAT(window.calls, ElementsAre("timers receive", "state 1", "read panels"));
}

// --- Disconnecting -------------------------------------------------------------------------------------------------

TEST_F(ConnectionTest, DisconnectingUnmountsAndClosesThePort)
{
    connection.Connect();
    system.MountNode(3);
    window.calls.clear();
    connection.Disconnect();
    EXPECT_THAT(window.calls, ElementsAre("unmount 3", "view 0", "timers", "state 2"));
    EXPECT_THAT(window.messages.back(), "");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
}

TEST_F(ConnectionTest, TheRelayKeepsItsTransportUntilItsOwnEnd)
{
    handler.setTargetPort(Transport::kRemote);
    settings.ConnectionType = 3;
    connection.CommonPreDisconnect();
    EXPECT_EQ(handler.TargetPort(), Transport::kRemote);
}

TEST_F(ConnectionTest, ALostPortIsTold)
{
    connection.Connect();
    system.MountNode(3);
    port.setPortOpen(false);
    window.calls.clear();
    connection.PortWasLost("Input/output error");
    EXPECT_THAT(window.calls, ElementsAre("view 0", "timers", "state 2"));
    EXPECT_EQ(window.messages.back(), "Comm Port 5 has gone away: Input/output error");
    EXPECT_EQ(system.MountedNodeNumber(), 0);
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
}

// --- By modem ------------------------------------------------------------------------------------------------------

TEST_F(ConnectionTest, AModemIsDialledAfterWhatAllConnectionsBeginWith)
{
    settings.ConnectionType = 2;
    connection.Connect();
    EXPECT_THAT(window.calls, ElementsAre("toolbar off", "reset panels", "view 0", "dial"));
}

TEST_F(ConnectionTest, DisconnectingFromAModemHangsUpBehindTheUnmount)
{
    connection.Connect();
    handler.setTargetPort(Transport::kModem);
    settings.ConnectionType = 2;
    system.MountNode(3);
    window.calls.clear();
    connection.Disconnect();
    ASSERT_GE(window.calls.size(), 2u);
    EXPECT_EQ(window.calls[0], "unmount 3");
    EXPECT_EQ(window.calls[1], "hang up");
    EXPECT_EQ(handler.TargetPort(), Transport::kNone) << "nothing is sent while the modem hangs up";
}

TEST_F(ConnectionTest, ALostCarrierIsToldWhenEverythingIsPutAway)
{
    connection.Connect();
    system.MountNode(3);
    port.setPortOpen(false);
    window.calls.clear();
    connection.CarrierWasLost();
    EXPECT_THAT(window.calls, ElementsAre("view 0", "timers", "state 2"));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Carrier lost, disconnected");
    EXPECT_EQ(boxes.boxes[0].title, "Disconnected");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
}

struct TypeRow {
    int setting;
    int type;
};

class ConnectionTypes : public ConnectionTest, public testing::WithParamInterface<TypeRow> {};

TEST_P(ConnectionTypes, OutsideOfTheThreeCountAsTheFirst)
{
    settings.ConnectionType = GetParam().setting;
    EXPECT_EQ(connection.ConnectionType(), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Connection, ConnectionTypes,
                         testing::Values(TypeRow{0, 1}, TypeRow{1, 1}, TypeRow{2, 2}, TypeRow{3, 3}, TypeRow{4, 1},
                                         TypeRow{-1, 1}));

}  // namespace
}  // namespace fenrik
