// The window of the older network, worked by clicks, on a port whose far end the test holds.

#include "legacy/FrmDiag98.h"

#include "legacy/LegacyDatabase.h"
#include "legacy/LegacyFixture.h"
#include "legacy/LegacyHost.h"
#include "legacy/Toolbar98.h"
#include "platform/SettingsStore.h"
#include "shared/EventPump.h"
#include "support/BoxRecorder.h"
#include "support/WhenShown.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QSocketNotifier>
#include <QTest>
#include <QToolBar>

#include <unistd.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class HostRecorder : public LegacyHost {
public:
    void OpenNetworkOptions(QWidget&) override { onCall("port"); }
    void OpenToolOptions(QWidget&) override { onCall("harnwick"); }
    void OpenAbout(QWidget&) override { onCall("about"); }
    void SaveAndEnd() override { onCall("end"); }

    std::vector<std::string> calls;
    std::function<void(const char*)> onCall = [this](const char* call) { calls.emplace_back(call); };
};

class LegacyWindow : public FaceFixture {
protected:
    LegacyWindow()
    {
        run.DiagLogPath = dir.path();
        settings.CommPort = 5;
        settings.DatabasePath = dir.path();
        settings.DatabaseName = "Bus.dav";
        settings.DatabaseSystemName = "Bus 12";
        MakeLegacyDatabase(dir.filePath("Bus.dav"), 255);
        log.NewFileName();
        portFolder.Link(5, terminal->Path());
        QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] { AnswerWake(); });
    }

    void AnswerWake()
    {
        char byte = 0;
        if (::read(terminal->Handle(), &byte, 1) == 1 && byte == '\x9E')
            onWake();
    }

    void Open()
    {
        window = std::make_unique<FrmDiag98>(services, host);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void OpenAndConnect()
    {
        ASSERT_NO_FATAL_FAILURE(Open());
        Click("Connect");
        ASSERT_EQ(Text("txtStatus"), "Connected");
    }

    void Click(const char* key) const
    {
        auto& bar = Find<QToolBar>("Toolbar");
        QTest::mouseClick(bar.widgetForAction(bar.findChild<QAction*>(key)), Qt::LeftButton);
    }

    /// The keys of the buttons that can be pressed.
    [[nodiscard]] std::vector<std::string> Enabled() const
    {
        std::vector<std::string> keys;
        for (const QAction* action : Find<QToolBar>("Toolbar").actions()) {
            if (!action->isSeparator() && action->isEnabled())
                keys.push_back(action->objectName().toStdString());
        }
        return keys;
    }

    template <typename Widget>
    [[nodiscard]] Widget& Find(const char* name) const
    {
        return *window->findChild<Widget*>(QLatin1String(name));
    }

    [[nodiscard]] std::string Text(const char* label) const { return Find<QLabel>(label).text().toStdString(); }
    [[nodiscard]] std::string Misc(int row) const { return Row(Find<CharacterFace>("PicMiscFace"), row).toStdString(); }
    [[nodiscard]] std::string Analog(int row) const
    {
        return Row(Find<CharacterFace>("PicAnalogFace"), row).toStdString();
    }
    [[nodiscard]] int LineCount() const { return int(LinesOf(window->Messages()).size()); }

    void Hear(const QByteArray& bytes, const std::function<bool()>& until)
    {
        terminal->Write(bytes);
        ASSERT_TRUE(QTest::qWaitFor(until, 3000));
    }

    [[nodiscard]] QByteArray Logged() const
    {
        QFile file(log.Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
    SystemClock clock;
    QtEventPump pump{clock};
    ErrorRecorder errors;
    BoxRecorder boxes;
    Settings settings;
    RunState run;
    CommandTable commands;
    VersionInfo version{1, 0, 7, QString()};
    SettingsStore store{dir.filePath("settings.ini")};
    MsgLogging log{run, settings, commands, clock, version};
    std::unique_ptr<PseudoTerminal> terminal = std::make_unique<PseudoTerminal>();
    QSocketNotifier notifier{terminal->Handle(), QSocketNotifier::Read};
    std::function<void()> onWake = [this] { terminal->Write("\x8A"); };
    PortFolder portFolder;
    ComPorts ports = portFolder.Ports();
    SerialControl port{ports};
    HostRecorder host;
    const LegacyServices services{settings, store, port, log, clock, pump, boxes, errors, version, map, dir.path()};
    std::unique_ptr<FrmDiag98> window;
};

const std::vector<std::string> kIdle{"Connect", "Port", "DB", "Clear", "Log", "Harnwick", "About"};
const std::vector<std::string> kConnected{"Disconnect", "Analog", "Info", "Clear", "Harnwick", "About"};

// --- Opening and closing
// ----------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, BeginsDisconnectedWithADarkPanel)
{
    Open();
    EXPECT_EQ(window->objectName(), "FrmDiag98");
    EXPECT_EQ(window->windowTitle(), "FenrikII Diagnostics");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Misc(1), "*123456*");
    EXPECT_EQ(Misc(4), "->    <-");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Text("txtMsg"), "Database: Bus.dav");
    EXPECT_EQ(LineCount(), 0);
}

TEST_F(LegacyWindow, GreetsWhenItIsFirstActivated)
{
    Open();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Analog(6) == "        Version   1.0.7         "; }, 3000));
    EXPECT_EQ(Analog(2), "    Harnwick Technologies Inc.  ");
    Click("Clear");
    QEvent again(QEvent::WindowActivate);
    QApplication::sendEvent(window.get(), &again);
    QCoreApplication::processEvents();
    EXPECT_EQ(Analog(2), std::string(32, ' '));
}

TEST_F(LegacyWindow, ClosingSavesAndEndsTheProgram)
{
    OpenAndConnect();
    window->close();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(host.calls, ElementsAre("end"));
}

TEST_F(LegacyWindow, CanBeClosedWhileTheTransceiverIsWoken)
{
    Open();
    host.onCall = [this](const char* call) {
        host.calls.emplace_back(call);
        pump.Stop();
    };
    onWake = [this] { window->close(); };
    Click("Connect");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(host.calls, ElementsAre("end"));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- Connecting
// -------------------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, ConnectingSetsTheButtonsAndDisconnectingSetsThemBack)
{
    OpenAndConnect();
    EXPECT_EQ(Enabled(), kConnected);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.Settings(), "9600,n,8,1");
    EXPECT_EQ(Misc(2), "MT 00000");
    EXPECT_EQ(Misc(5), "BC 00000");
    Click("Disconnect");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(LegacyWindow, TheToolbarIsOffAndTheHourglassOnWhileItConnects)
{
    Open();
    bool toolbarOn = true;
    Qt::CursorShape pointer = Qt::ArrowCursor;
    onWake = [&] {
        toolbarOn = Find<QToolBar>("Toolbar").isEnabled();
        pointer = QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : Qt::ArrowCursor;
        EXPECT_EQ(Text("txtStatus"), "Initializing Transceiver...");
        terminal->Write("\x8A");
    };
    Click("Connect");
    EXPECT_FALSE(toolbarOn);
    EXPECT_EQ(pointer, Qt::WaitCursor);
    EXPECT_TRUE(Find<QToolBar>("Toolbar").isEnabled());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(LegacyWindow, WithoutADatabaseTheUserIsToldWhereToChooseOne)
{
    settings.DatabaseName.clear();
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "A system database has not been selected.\n"
                                   "Use the database icon to select a system database.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(LegacyWindow, WithoutTheDatabasesFileTheUserIsTold)
{
    QFile::remove(dir.filePath("Bus.dav"));
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Bus.dav\nhas been moved or deleted. The Diagnostic tool cannot connect "
                                   "to the Fenrik system. Please select a new system Database.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(Enabled(), kIdle);
}

TEST_F(LegacyWindow, ADatabaseThatCannotBeReadKeepsItFromConnecting)
{
    settings.LoggingOn = true;
    MakeFile(dir.filePath("Bus.dav"), "no database");
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), HasSubstr("will not be able to connect"));
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Logged(), "") << "nothing was begun";
}

TEST_F(LegacyWindow, AShortTableIsWarnedOfAndItConnects)
{
    MakeLegacyDatabase(dir.filePath("Bus.dav"), 254);
    OpenAndConnect();
    EXPECT_THAT(boxes.boxes, SizeIs(1));
}

TEST_F(LegacyWindow, APortThatIsNotThereIsToldAndTheHeadOfTheLogStays)
{
    settings.LoggingOn = true;
    settings.CommPort = 6;
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Comm Port 6 does not exist.");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Logged().toStdString(), HasSubstr("FenrikII Diagnostics Log 98\r\n\r\nConnected - "));
}

TEST_F(LegacyWindow, APortInUseCanBeTriedAgain)
{
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    boxes.answers = {QMessageBox::Retry, QMessageBox::Cancel};
    Open();
    Click("Connect");
    EXPECT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_EQ(Enabled(), kIdle);
    other.setPortOpen(false);
    Click("Connect");
    EXPECT_EQ(Enabled(), kConnected);
}

TEST_F(LegacyWindow, WithUniqueLogsEachConnectionHasItsFile)
{
    settings.LoggingOn = true;
    settings.LoggingUnique = true;
    OpenAndConnect();
    const QString first = log.Path();
    Click("Disconnect");
    ASSERT_TRUE(QTest::qWaitFor([&] {
        log.NewFileName();
        return log.Path() != first;
    }));
    Click("Connect");
    EXPECT_NE(log.Path(), first);
    EXPECT_EQ(Logged().count("Connected - "), 1);
}

TEST_F(LegacyWindow, WithoutUniqueLogsConnectionsShareAFile)
{
    settings.LoggingOn = true;
    OpenAndConnect();
    Click("Disconnect");
    Click("Connect");
    EXPECT_EQ(Logged().count("Connected - "), 2);
}

TEST_F(LegacyWindow, AConnectionBeginsWithEmptyPanelsAndCounts)
{
    settings.DatabaseName = "Analog.dav";
    MakeDatabase(dir.filePath("Analog.dav"),
                 {kInfoTable, kSystemTable, "INSERT INTO System VALUES (50, 'Volts', 'Analog', 0, 10)",
                  "INSERT INTO System VALUES (51, 'Amps', 'Analog', 0, 1)"});
    OpenAndConnect();
    Hear("\x65\x67\x32\x80", [this] { return Analog(1).starts_with("Volts"); });
    EXPECT_EQ(Misc(2), "MT 00001");
    Click("Info");
    Click("Disconnect");
    Click("Connect");
    EXPECT_EQ(Misc(2), "MT 00000");
    EXPECT_EQ(Analog(2), std::string(32, ' '));
    Hear("\x6A\x33\x05", [this] { return Analog(1).starts_with("Amps"); });
    EXPECT_EQ(Misc(2), "MT 00000") << "the first token is not missed";
}

// --- Listening
// --------------------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, MessagesAreListed)
{
    OpenAndConnect();
    Hear("\x67\x0A", [this] { return LineCount() == 1; });
    EXPECT_THAT(LinesOf(window->Messages())[0], testing::StartsWith("3|M10|10|Body|"));
    EXPECT_EQ(Row(Find<CharacterFace>("PicMiscFace").DimText(), 1), "*12 456*");
}

TEST_F(LegacyWindow, TheAnalogAndTheInformationButtonSwitchTheWidePanel)
{
    OpenAndConnect();
    Click("Info");
    EXPECT_EQ(Analog(2), "          System Info           ");
    EXPECT_EQ(Analog(4), "Name    : Bus 12                ");
    EXPECT_EQ(window->Link().Monitor().Panel(), Panel98::SystemInformation);
    Click("Analog");
    EXPECT_EQ(Analog(4), std::string(32, ' '));
    EXPECT_EQ(window->Link().Monitor().Panel(), Panel98::Analog);
}

TEST_F(LegacyWindow, ClearEmptiesTheListAndTheWidePanel)
{
    OpenAndConnect();
    Hear("\x67\x0A", [this] { return LineCount() == 1; });
    Click("Info");
    Click("Clear");
    EXPECT_EQ(LineCount(), 0);
    EXPECT_EQ(Analog(4), std::string(32, ' '));
    EXPECT_EQ(Misc(1), "*123456*");
}

TEST_F(LegacyWindow, AnEventCanDisconnect)
{
    settings.LoggingOn = settings.LoggingBuffered = settings.LoggingDisconnect = true;
    settings.LoggingBufferMax = 25;
    settings.LoggingEventTrigger = 10;
    OpenAndConnect();
    Hear("\x67\x0A\x0B\x0C", [this] { return !port.PortOpen(); });
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(LineCount(), 2) << "the message and the event";
    EXPECT_EQ(Logged().count("\r\n"), 7 + 3);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(LegacyWindow, APortThatGoesAwayEndsTheConnection)
{
    OpenAndConnect();
    notifier.setEnabled(false);
    terminal->Unplug();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Text("txtStatus") == "Disconnected"; }, 5000));
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Text("txtMsg"), testing::StartsWith("Comm Port 5 has gone away"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(LegacyWindow, APortThatGoesAwayWhileItIsWokenEndsTheConnection)
{
    Open();
    onWake = [this] {
        notifier.setEnabled(false);
        terminal->Unplug();
    };
    Click("Connect");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Text("txtMsg"), testing::StartsWith("Comm Port 5 has gone away"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- The other buttons
// ------------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, OptionsAndAboutAreTheProgramsMatter)
{
    Open();
    for (const char* key : {"Port", "Harnwick", "About"})
        Click(key);
    EXPECT_THAT(host.calls, ElementsAre("port", "harnwick", "about"));
}

TEST_F(LegacyWindow, AnErrorOfAButtonIsReportedAndTheToolbarComesBack)
{
    Open();
    host.onCall = [](const char*) { throw Error(75, "no room"); };
    Click("Port");
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmmain98:Toolbar:ButtonClick");
    EXPECT_TRUE(Find<QToolBar>("Toolbar").isEnabled());
}

TEST_F(LegacyWindow, LogOpensTheOptionsOfTheLogWithTheEvent)
{
    settings.Protocol = Settings::kLegacyProtocol;
    Open();
    bool showsEvent = false;
    WhenShown user{"FrmMsgLogging", [&](QDialog& dialog) {
                       showsEvent = dialog.findChild<QWidget*>("ChkEvent")->isVisible();
                       dialog.close();
                   }};
    Click("Log");
    EXPECT_EQ(user.Times(), 1);
    EXPECT_TRUE(showsEvent);
}

TEST_F(LegacyWindow, TheDatabaseIsChosenInItsDialog)
{
    MakeFile(dir.filePath("Other.dav"), "no database");
    MakeLegacyDatabase(dir.filePath("New.dav"), 3);
    Open();
    WhenShown user{"FrmFileDialog", [](QDialog& dialog) {
                       auto& files = *dialog.findChild<QListWidget*>("File1");
                       for (const char* name : {"Other.dav", "New.dav"}) {
                           auto* item = files.findItems(name, Qt::MatchExactly).constFirst();
                           QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, files.visualItemRect(item).center());
                       }
                       dialog.close();
                   }};
    Click("DB");
    EXPECT_EQ(user.Times(), 1);
    EXPECT_EQ(settings.DatabaseName, "New.dav");
    EXPECT_EQ(settings.DatabaseBy, "Miller");
    EXPECT_EQ(Text("txtMsg"), "Database: New.dav");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), testing::StartsWith("An error occured loading the database : "));
}

TEST_F(LegacyWindow, IsWorkedByKeysToo)
{
    Open();
    QTest::keyClick(window.get(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(Enabled(), kConnected);
    QTest::keyClick(window.get(), Qt::Key_F6);
    EXPECT_EQ(Analog(2), "          System Info           ");
    QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(Enabled(), kIdle);
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_THAT(host.calls, ElementsAre("end"));
}

TEST_F(LegacyWindow, TheBarMovesTheWidePanelUpByItsValue)
{
    Open();
    auto& bar = Find<QScrollBar>("VScrlanalogFace");
    auto& face = Find<CharacterFace>("PicAnalogFace");
    ASSERT_GT(bar.maximum(), 0);
    for (const int value : {0, 100, bar.maximum()}) {
        bar.setValue(value);
        EXPECT_EQ(face.y(), -value);
    }
    const int bottomOfRow25 = 24 * Glass::kCellHeight + Glass::kMargin + Glass::kGlyphHeight;
    EXPECT_LE(bottomOfRow25 + face.y(), face.parentWidget()->height());
}

TEST_F(LegacyWindow, AllOfTheNarrowPanelIsSeenInASmallWindow)
{
    Open();
    window->resize(1, 1);
    QCoreApplication::processEvents();
    EXPECT_GE(Find<QWidget>("PicMiscDisplay").height(), 142 + Glass::kGlyphHeight);
    EXPECT_GE(Find<QWidget>("PicMiscDisplay").width(), 148);
    EXPECT_GT(Find<QWidget>("ListView98").height(), 30);
}

}  // namespace
}  // namespace fenrik
