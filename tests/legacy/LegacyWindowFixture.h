#pragma once

#include "legacy/FrmDiag98.h"
#include "legacy/LegacyDatabase.h"
#include "legacy/LegacyFixture.h"
#include "legacy/LegacyHost.h"
#include "platform/SettingsStore.h"
#include "shared/EventPump.h"
#include "support/BoxRecorder.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QSocketNotifier>
#include <QTest>
#include <QToolBar>

#include <unistd.h>

namespace fenrik {

/// Keeps what the window asks of the program.
class LegacyHostRecorder : public LegacyHost {
public:
    void OpenNetworkOptions(QWidget&) override { onCall("port"); }
    void OpenToolOptions(QWidget&) override { onCall("harnwick"); }
    void OpenAbout(QWidget&) override { onCall("about"); }
    void SaveAndEnd() override { onCall("end"); }

    std::vector<std::string> calls;
    std::function<void(const char*)> onCall = [this](const char* call) { calls.emplace_back(call); };
};

/// The window on a port whose far end the test holds; boxes and errors are kept.
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
    LegacyHostRecorder host;
    const LegacyServices services{.settings = settings,
                                  .store = store,
                                  .port = port,
                                  .log = log,
                                  .clock = clock,
                                  .pump = pump,
                                  .boxes = boxes,
                                  .errors = errors,
                                  .version = version,
                                  .asciiMap = map,
                                  .programFolder = dir.path()};
    std::unique_ptr<FrmDiag98> window;
};

/// The buttons that can be pressed without and with a connection.
inline const std::vector<std::string> kIdle{"Connect", "Port", "DB", "Clear", "Log", "Harnwick", "About"};
inline const std::vector<std::string> kConnected{"Disconnect", "Analog", "Info", "Clear", "Harnwick", "About"};

}  // namespace fenrik
