#pragma once

#include "app/PortState.h"
#include "app/Services.h"
#include "catalogue/CatalogueHost.h"
#include "catalogue/SpecialCommands.h"
#include "link/CMsgHandler.h"
#include "link/LinkHost.h"
#include "logging/MsgLogging.h"
#include "platform/ProgramFolder.h"
#include "platform/RegistryStore.h"
#include "platform/SerialControl.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"
#include "platform/VersionInfo.h"
#include "remote/MRegistry.h"
#include "remote/PipeSettings.h"
#include "remote/RDMain.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/DatabaseFile.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/PortFolder.h"
#include "support/Printers.h"
#include "support/PseudoTerminal.h"
#include "support/ScriptedPump.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fenrik {

/// Keeps what would have been opened on the desktop.
class ShellRecorder : public Shell {
public:
    int OpenFile(const QString& path) override { return Open(path); }
    int OpenPage(const QString& address) override { return Open(address); }
    int Explore(const QString& folder) override { return Open(folder); }

    QStringList opened;
    int result = kOpened;

private:
    int Open(const QString& what)
    {
        opened.append(what);
        return result;
    }
};

/// A relay connection that has come as far as a test says; 6 is open for sending.
class RemoteProgressStub : public RemoteProgress {
public:
    [[nodiscard]] int RemoteState() const override { return state; }

    int state = 6;
};

class CatalogueHostStub : public CatalogueHost {
public:
    void EndProgram() override { ++ends; }
    [[nodiscard]] int SelectedNodeNumber() const override { return 0; }

    int ends = 0;
};

/// What everything in a main window may need, all under the test's control: a clock that jumps, a pump that plays a
/// script, boxes and errors that are kept, and a folder of the test's own.
class AppTest : public testing::Test {
protected:
    AppTest()
    {
        run.DiagLogPath = dir.path();
        settings.NodesInSystem = 8;
        settings.ConnectionType = 1;
        log.NewFileName();
    }

    /// Special command 969 with a node in the low byte of its data, and 930 without one.
    void LoadSpecialCommands()
    {
        const QString path = dir.filePath("SpecialCommands.dav");
        MakeDatabase(path,
                     {"CREATE TABLE Version (Version TEXT)", "INSERT INTO Version VALUES ('1.0')",
                      "CREATE TABLE General (Command INTEGER, CodeMask INTEGER, CodeShift INTEGER, NodeMask INTEGER, "
                      "NodeShift INTEGER, \"Text Seperator\" TEXT)",
                      "CREATE TABLE Defaults (Command INTEGER, State INTEGER, extended INTEGER, Extra TEXT, Icon TEXT)",
                      "CREATE TABLE Details (Command INTEGER, Name TEXT, Code INTEGER, State INTEGER, "
                      "extended INTEGER, Extra TEXT, Icon TEXT)",
                      "INSERT INTO General VALUES (969, 65280, 8, 255, 0, ':')",
                      "INSERT INTO General VALUES (930, 65535, 0, NULL, NULL, NULL)",
                      "INSERT INTO Details VALUES (969, 'Restart', 2, 0, 0, NULL, 'Node')",
                      "INSERT INTO Details VALUES (930, 'Wake Up', 1, 0, 0, NULL, 'Sleep')"});
        specials.LoadSpecialCommands(path, boxes);
        ASSERT_EQ(specials.Count(), 2);
    }

    QTemporaryDir dir;
    FakeClock clock;
    ScriptedPump pump{clock};
    ErrorRecorder errors;
    BoxRecorder boxes;
    ShellRecorder shell;
    Settings settings;
    RunState run;
    VersionInfo version{1, 0, 7, QString()};
    ProgramFolder folder{dir.path() + "/none", dir.path(), dir.path() + "/none"};
    SettingsStore store{dir.path() + "/settings.ini"};
    SettingsStore windowStore{dir.path() + "/window.ini"};
    CommandTable commands;
    CatalogueHostStub catalogueHost;
    SpecialCommands specials{commands, catalogueHost};
    PortFolder portFolder;
    ComPorts ports = portFolder.Ports();
    SerialControl port{ports};
    CMsgHandler handler{port, clock, pump, commands, errors};
    MsgLogging log{run, settings, commands, clock, version};
    RemoteProgressStub remote;
    PortState portState{port, handler, remote};
    RegistryStore registryStore{dir.path() + "/registry.ini"};
    MRegistry registry{registryStore, errors};
    PipeSettings profiles{registry, boxes, clock};
    RDMain rd{profiles, store};
    const Services services{.settings = settings,
                            .store = store,
                            .windowStore = windowStore,
                            .run = run,
                            .commands = commands,
                            .specials = specials,
                            .port = port,
                            .handler = handler,
                            .log = log,
                            .clock = clock,
                            .pump = pump,
                            .boxes = boxes,
                            .shell = shell,
                            .errors = errors,
                            .version = version,
                            .folder = folder,
                            .ports = ports,
                            .remote = rd,
                            .profiles = profiles};
};

/// A network at the far end of the link: keeps what is sent, as "command state data", and plays the answers.
class FakeNetwork : public LinkHost {
public:
    FakeNetwork(CMsgHandler& handler, ScriptedPump& pump, const PortState& ports)
        : mHandler(handler), mPump(pump), mPorts(ports)
    {
        mHandler.setHost(this);
        mHandler.Reset(Transport::kRemote);
    }
    ~FakeNetwork() override { mHandler.setHost(nullptr); }

    [[nodiscard]] bool PortOpenForTx() const override { return mPorts.PortOpenForTx(); }
    [[nodiscard]] bool ModemActive() const override { return false; }
    void DisplayMessage(CMessage& message) override { shown.push_back(message.Command); }
    void CloseModemLink() override {}
    void ShowPC(int) override {}
    void ShowBC(int) override {}
    void ShowCollisionMark(bool, const char*) override {}
    void TrafficWaiting() override { onTraffic(); }

    void sendFrame(int, const QByteArray& payload) override
    {
        Frame::Bytes bytes{};
        std::copy_n(payload.begin(), bytes.size(), bytes.begin());
        const Frame frame = Frame::Decode(bytes).value();
        sent.push_back(std::to_string(frame.command) + (frame.state ? " 1 " : " 0 ") + std::to_string(frame.data));
        if (const auto reply = answer(frame))
            mPump.After(0.1, [this, reply] { Receive(*reply); });
    }

    void Receive(const Frame& frame)
    {
        for (const std::uint8_t byte : frame.Encode())
            mHandler.ReceiveMsgByte(byte);
    }

    std::function<std::optional<Frame>(const Frame&)> answer = [](const Frame&) { return std::nullopt; };
    std::function<void()> onTraffic = [] {};
    std::vector<std::string> sent;
    std::vector<int> shown;  ///< commands of echoed messages and replies

private:
    CMsgHandler& mHandler;
    ScriptedPump& mPump;
    const PortState& mPorts;
};

}  // namespace fenrik
