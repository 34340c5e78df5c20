#include "WindowFixture.h"

#include "link/ConnectAdvice.h"
#include "platform/SerialControl.h"

#include <QElapsedTimer>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class WindowConnectionTest : public WindowTest {
protected:
    [[nodiscard]] int CountHeard(const std::string& frame) const
    {
        return int(std::count(vehicle.heard.begin(), vehicle.heard.end(), frame));
    }

    [[nodiscard]] bool Hears(const std::string& frame)
    {
        return Until([this, frame] { return CountHeard(frame) > 0; });
    }
};

TEST_F(WindowConnectionTest, ConnectingFindsTheNodes)
{
    vehicle.alive = {1, 3};
    StartAndConnect();
    EXPECT_THAT(vehicle.heard, ElementsAre("901 0 1", "901 0 2", "901 0 3"));
    EXPECT_EQ(Msg(), "Nodes Detected");
    EXPECT_EQ(System().ActiveNodeCount(), 2);
    EXPECT_EQ(System().SelectedNodeNumber(), 1);
    EXPECT_TRUE(Window().Nodes().NodeButton(1)->isEnabled());
    EXPECT_TRUE(Window().Nodes().NodeButton(1)->isChecked());
    EXPECT_FALSE(Window().Nodes().NodeButton(2)->isEnabled());
    EXPECT_FALSE(Button("Connect").isEnabled());
    EXPECT_TRUE(Button("Disconnect").isEnabled());
    EXPECT_TRUE(Window().Hub().State().Ready());
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_EQ(Lines(), QStringList({"Ping", "Ping Reply", "Ping", "Ping", "Ping Reply"}));
}

TEST_F(WindowConnectionTest, TheTrafficIsNamedListedAndLogged)
{
    StartAndConnect();
    vehicle.Send({12, true, false, 258});
    ASSERT_TRUE(Until([this] { return Lines().contains("Rear Fog Lamps"); }));
    Window().MessageList().ShowNews();
    EXPECT_EQ(Window().MessageList().SelectedRow(), Window().Messages().rowCount() - 1) << "the list follows";

    const QDir logs(ProgramFile("diaglogs"));
    const QStringList files = logs.entryList({"*.txt"});
    ASSERT_THAT(files, SizeIs(1));
    QFile file(logs.filePath(files[0]));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = file.readAll();
    EXPECT_TRUE(text.contains("\r\nConnected - "));
    EXPECT_TRUE(text.contains("\r\nRear Fog Lamps             258     1 ")) << text.toStdString();
    EXPECT_EQ(text.count("\r\nPing  "), 3);
}

TEST_F(WindowConnectionTest, DisconnectingBringsTheFirstStateBack)
{
    StartAndConnect();
    Click("Mount");
    ASSERT_EQ(System().MountedNodeNumber(), 1);
    Click("Disconnect");
    EXPECT_EQ(CountHeard("905 0 1"), 1) << "the node is let go";
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_EQ(Msg(), "");
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_FALSE(Button("Disconnect").isEnabled());
    EXPECT_FALSE(Button("OutputDiagnostics").isEnabled());
    EXPECT_EQ(System().MountedNodeNumber(), 0);

    Click("Connect");
    EXPECT_EQ(Status(), "Connected");
}

TEST_F(WindowConnectionTest, TheSecondConnectForgetsNodesThatAreGone)
{
    StartAndConnect();
    Click("Disconnect");
    vehicle.alive = {2, 3};
    Click("Connect");
    EXPECT_FALSE(Window().Nodes().NodeButton(1)->isEnabled());
    EXPECT_FALSE(Window().Nodes().NodeButton(1)->isChecked());
    EXPECT_EQ(System().SelectedNodeNumber(), 2);
}

TEST_F(WindowConnectionTest, ASilentNetworkIsToldInABox)
{
    vehicle.alive = {};
    ASSERT_TRUE(Start("AutoDetect=True\n"));
    Click("Connect");
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].startsWith("A transceiver was detected, but no network traffic was heard.\n"));
    EXPECT_EQ(Status(), "Connected");
    EXPECT_EQ(Msg(), "Nodes Not Detected");
}

// --- Ports that fail -----------------------------------------------------------------------------------------------

TEST_F(WindowConnectionTest, APortThatDoesNotExistIsTold)
{
    ASSERT_TRUE(Start("CommPort=9\n"));
    Click("Connect");
    EXPECT_EQ(user.seen, QStringList{"Comm Port 9 does not exist." + ConnectAdvice::NoPort()});
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Window().Hub().State().Ready());
    EXPECT_TRUE(Button("Connect").isEnabled());
}

TEST_F(WindowConnectionTest, APortInUseMayBeTriedAgain)
{
    const ComPorts ports(dir.filePath("config/ports"), [] { return QList<SerialDevice>(); });
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    user.answers = {QMessageBox::Retry, QMessageBox::Cancel};
    ASSERT_TRUE(Start());
    Click("Connect");
    const QString text = "Comm Port 5 already open.\n"
                         "Close the port and click Retry to continue, or Cancel to abort operation." +
                         ConnectAdvice::PortInUse();
    EXPECT_EQ(user.seen, QStringList({text, text}));
    EXPECT_FALSE(user.sawHourglass);
    EXPECT_EQ(Status(), "Disconnected");
    other.setPortOpen(false);
    Click("Connect");
    EXPECT_EQ(Status(), "Connected");
}

TEST_F(WindowConnectionTest, APluggedOutTransceiverIsToldAndItsSuccessorWorks)
{
    StartAndConnect();
    Click("Mount");
    vehicle.Unplug();
    ASSERT_TRUE(Until([this] { return Status() == "Disconnected"; }));
    EXPECT_TRUE(Msg().startsWith("Comm Port 5 has gone away: ")) << Msg().toStdString();
    EXPECT_EQ(System().MountedNodeNumber(), 0);
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_THAT(user.seen, IsEmpty());

    FakeVehicle next;
    PlugIn(next);
    Click("Connect");
    EXPECT_EQ(Status(), "Connected");
    EXPECT_EQ(Msg(), "Nodes Detected");
}

TEST_F(WindowConnectionTest, APlugPulledInsideADetectionEndsItWithTheReason)
{
    vehicle.onFrame = [this](const Frame& frame) {
        if (frame.data == 2)
            vehicle.Unplug();
    };
    ASSERT_TRUE(Start());
    Click("Connect");
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Msg().startsWith("Comm Port 5 has gone away: ")) << Msg().toStdString();
    EXPECT_THAT(user.seen, IsEmpty()) << "no box says that the network is silent";
    EXPECT_TRUE(Window().Hub().State().Ready());
}

// --- Nodes ---------------------------------------------------------------------------------------------------------

TEST_F(WindowConnectionTest, ANodeIsMountedItsTypeAskedAndUnmounted)
{
    StartAndConnect();
    Click("Node2");
    EXPECT_EQ(System().SelectedNodeNumber(), 2);
    EXPECT_FALSE(Window().Nodes().NodeButton(1)->isChecked());
    Click("Mount");
    EXPECT_EQ(System().MountedNodeNumber(), 2);
    EXPECT_EQ(System().Node(2)->typeID(), 4);
    EXPECT_EQ(Msg(), "Node 2 Mounted ");
    EXPECT_TRUE(Window().Nodes().NodeButton(2)->toolTip().startsWith("Node 2-"));
    for (const char* key : {"States", "FlashInfo", "Collision", "OutputDiagnostics", "InputDiagnostics"})
        EXPECT_TRUE(Button(key).isEnabled()) << key;
    EXPECT_FALSE(Button("DetectNodes").isEnabled());

    Click("Unmount");
    EXPECT_EQ(System().MountedNodeNumber(), 0);
    EXPECT_EQ(Msg(), "Node 2 Unmounted");
    EXPECT_FALSE(Button("States").isEnabled());
    EXPECT_TRUE(Button("DetectNodes").isEnabled());
}

TEST_F(WindowConnectionTest, UnmountingLeavesAViewThatNeedsAMount)
{
    StartAndConnect();
    Click("Mount");
    Click("FlashInfo");
    ASSERT_TRUE(Button("FlashInfo").isChecked());
    Click("Unmount");
    EXPECT_TRUE(Button("Analog").isChecked());
    EXPECT_EQ(Window().Hub().Views().DisplayState(), 0);
}

TEST_F(WindowConnectionTest, ANodeThatRestartsDropsItsMountWithoutTraffic)
{
    StartAndConnect();
    Click("Mount");
    const auto heard = vehicle.heard.size();
    vehicle.Send({988, false, false, 1});
    ASSERT_TRUE(Until([this] { return System().MountedNodeNumber() == 0; }));
    EXPECT_EQ(vehicle.heard.size(), heard);
    ASSERT_TRUE(Until([this] { return Lines().contains("Node Started"); }));
}

TEST_F(WindowConnectionTest, ANodeThatStartsBecomesActive)
{
    StartAndConnect("AutoDetect=False\n");
    EXPECT_FALSE(Window().Nodes().NodeButton(3)->isEnabled());
    vehicle.Send({988, false, false, 3});
    ASSERT_TRUE(Until([this] { return System().Node(3)->Active(); }));
    EXPECT_TRUE(Window().Nodes().NodeButton(3)->isEnabled());
}

TEST_F(WindowConnectionTest, ThePingOfTheSelectedNode)
{
    StartAndConnect();
    vehicle.heard.clear();
    Click("Ping");
    EXPECT_THAT(vehicle.heard, ElementsAre("901 0 1"));
    EXPECT_TRUE(Window().Hub().State().Ready());
}

/// Counts how often a widget is enabled and disabled.
class EnabledChanges : public QObject {
public:
    explicit EnabledChanges(QWidget& widget) { widget.installEventFilter(this); }

    int count = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::EnabledChange ? 1 : 0;
        return false;
    }
};

TEST_F(WindowConnectionTest, TheFillerOfTheSecondBarDoesNothing)
{
    StartAndConnect("NodesInSystem=17\nAutoDetect=False\n");
    EnabledChanges toolbar(Window().Toolbar());
    Control<QAction>("yourmom").trigger();
    EXPECT_EQ(toolbar.count, 0) << "not even the state has changed";
    Button("Clear").trigger();
    EXPECT_EQ(toolbar.count, 2) << "as it does at any other button";
}

// --- Keys ----------------------------------------------------------------------------------------------------------

TEST_F(WindowConnectionTest, EscapeEndsADetectionAtOnce)
{
    vehicle.alive = {1};
    vehicle.onFrame = [this](const Frame& frame) {
        if (frame.data == 2)
            QTimer::singleShot(0, &Window(), [this] { QTest::keyClick(&Window(), Qt::Key_Escape); });
    };
    ASSERT_TRUE(Start());
    QElapsedTimer timer;
    timer.start();
    Click("Connect");
    EXPECT_LT(timer.elapsed(), 600) << "less than one time-out";
    EXPECT_THAT(vehicle.heard, ElementsAre("901 0 1", "901 0 2"));
    EXPECT_EQ(Msg(), "Nodes Detected");
}

struct ViewKeyRow {
    Qt::Key key;
    const char* button;
};

TEST_F(WindowConnectionTest, TheFunctionKeysActOnTheirRelease)
{
    StartAndConnect();
    Click("Mount");
    const ViewKeyRow rows[] = {{Qt::Key_F6, "InputDiagnostics"},
                               {Qt::Key_F7, "OutputDiagnostics"},
                               {Qt::Key_F9, "FlashInfo"},
                               {Qt::Key_F5, "Analog"},
                               {Qt::Key_F10, "Collision"}};
    for (const ViewKeyRow& row : rows) {
        QTest::keyPress(&Window(), row.key);
        EXPECT_EQ(Button(row.button).isChecked(), false) << row.button << " on the press";
        QTest::keyRelease(&Window(), row.key);
        EXPECT_TRUE(Button(row.button).isChecked()) << row.button;
    }
    ASSERT_THAT(Lines(), Not(IsEmpty()));
    QTest::keyPress(&Window(), Qt::Key_F4);
    EXPECT_THAT(Lines(), Not(IsEmpty()));
    QTest::keyRelease(&Window(), Qt::Key_F4);
    EXPECT_EQ(Window().Messages().rowCount(), 0);
    EXPECT_EQ(Msg(), "");
}

TEST_F(WindowConnectionTest, TheFunctionKeysReachTheWindowFromTheComposer)
{
    StartAndConnect();
    for (const char* name : {"CboCategory", "CboCommand", "TxtData", "cmdSend", "lvMessages"}) {
        vehicle.Send({12, true, false, 1});
        ASSERT_TRUE(Until([this] { return Lines().contains("Rear Fog Lamps"); }));
        auto& control = Control<QWidget>(name);
        QTest::keyClick(&control, Qt::Key_F4);
        EXPECT_EQ(Window().Messages().rowCount(), 0) << name;
    }
}

TEST_F(WindowConnectionTest, TheFunctionKeysDoNothingWhileTheWindowIsBusy)
{
    StartAndConnect();
    const auto lines = Lines().size();
    ASSERT_GT(lines, 0);
    Window().Hub().SetUIState(UiState::kBusy);
    for (int key = Qt::Key_F4; key <= Qt::Key_F10; ++key)
        QTest::keyClick(&Window(), Qt::Key(key));
    EXPECT_EQ(Lines().size(), lines);
    EXPECT_TRUE(Button("Analog").isChecked());
    Window().Hub().SetUIState(UiState::kReady);
}

TEST_F(WindowConnectionTest, AClickInsideAnExchangeLeavesTheWindowBusy)
{
    StartAndConnect("AutoDetect=False\n");
    Window().Hub().SetUIState(UiState::kBusy);
    Button("Clear").trigger();  // as a menu may do, which is open to the user all the time
    EXPECT_FALSE(Window().Hub().State().Ready());
    Window().Hub().SetUIState(UiState::kReady);
}

TEST_F(WindowConnectionTest, AClickOnTheNodeBarsInsideAnExchangeLeavesTheWindowBusy)
{
    StartAndConnect();
    for (const char* key : {"Node2", "Ping"}) {
        Window().Hub().SetUIState(UiState::kBusy);
        Control<QToolBar>("Nodebar").findChild<QAction*>(key)->trigger();
        EXPECT_FALSE(Window().Hub().State().Ready()) << key;
    }
    EXPECT_EQ(System().SelectedNodeNumber(), 2) << "the clicks did their work";
    EXPECT_THAT(vehicle.heard, Contains("901 0 2").Times(2)) << "at the detection, and by the click";
}

// --- Sync ----------------------------------------------------------------------------------------------------------

TEST_F(WindowConnectionTest, TheArtificialSyncIsSentWhileItsOptionIsOn)
{
    StartAndConnect("AutoDetect=False\n");
    auto& timer = Control<QTimer>("TSendSync");
    EXPECT_EQ(timer.interval(), 2500);
    EXPECT_FALSE(timer.isActive());
    timer.setInterval(1);
    Entry("mnuDiagSendSync").trigger();
    EXPECT_TRUE(Hears("980 0 1"));
    EXPECT_THAT(Lines(), Not(Contains("Network Sync")));
    Entry("mnuDiagSendSync").trigger();
    EXPECT_FALSE(timer.isActive());
}

// --- Closing -------------------------------------------------------------------------------------------------------

TEST_F(WindowConnectionTest, ClosingLetsTheNodeGoAndSavesTheSettings)
{
    StartAndConnect();
    Click("Mount");
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(CountHeard("905 0 1"), 1);
    EXPECT_FALSE(Window().isVisible());
    EXPECT_EQ(Stored("Settings/FirstRun"), "False");
    EXPECT_EQ(Stored("Settings/CommPort"), "5");
}

TEST_F(WindowConnectionTest, ANodeThatDoesNotLetGoMayKeepTheWindowOpen)
{
    StartAndConnect();
    Click("Mount");
    vehicle.alive = {};
    user.answers = {QMessageBox::No, QMessageBox::Yes};
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(user.seen, QStringList{"Node 1 should be un-mounted before exiting the program.\n"
                                     "Exit the program anyway ?"});
    EXPECT_TRUE(Window().close());
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(WindowConnectionTest, ClosingInsideTheBringUpEndsIt)
{
    vehicle.wakes = false;
    vehicle.onWake = [this] { QTimer::singleShot(0, &Window(), &QWidget::close); };
    ASSERT_TRUE(Start());
    QElapsedTimer timer;
    timer.start();
    Click("Connect");
    EXPECT_LT(timer.elapsed(), 600);
    EXPECT_FALSE(Window().isVisible());
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_EQ(Stored("Settings/FirstRun"), "False");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(WindowConnectionTest, ClosingInsideADetectionEndsIt)
{
    vehicle.alive = {};
    vehicle.onFrame = [this](const Frame&) { QTimer::singleShot(0, &Window(), &QWidget::close); };
    ASSERT_TRUE(Start());
    QElapsedTimer timer;
    timer.start();
    Click("Connect");
    EXPECT_LT(timer.elapsed(), 600);
    EXPECT_THAT(vehicle.heard, ElementsAre("901 0 1"));
    EXPECT_FALSE(Window().isVisible());
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowConnectionTest, ClosingInsideAWaitForAQuietBusEndsIt)
{
    StartAndConnect();
    const Frame::Bytes frame = Frame{12, true, false, 1}.Encode();
    // A good frame, and behind it one that never ends.
    vehicle.Write(QByteArray(reinterpret_cast<const char*>(frame.data()), qsizetype(frame.size())) +
                  QByteArray("\x00\xA0", 2));
    ASSERT_TRUE(Until([this] { return Lines().contains("Rear Fog Lamps"); }));
    vehicle.heard.clear();
    QTimer::singleShot(100, &Window(), &QWidget::close);
    QElapsedTimer timer;
    timer.start();
    Click("Ping");
    EXPECT_GT(timer.elapsed(), 50);
    EXPECT_LT(timer.elapsed(), 600);
    EXPECT_FALSE(Window().isVisible());
    EXPECT_THAT(vehicle.heard, IsEmpty());
}

TEST_F(WindowConnectionTest, AProgramThatIsDroppedWhileConnectedGoesQuietly)
{
    StartAndConnect();
    program.reset();
    vehicle.Send({12, true, false, 1});
    QCoreApplication::processEvents();
    EXPECT_THAT(user.seen, IsEmpty());
}

}  // namespace
}  // namespace fenrik
