#pragma once

#include "link/CMsgHandler.h"
#include "platform/SerialControl.h"
#include "remote/FakeRelay.h"
#include "remote/RemoteParts.h"
#include "remote/RemoteView.h"
#include "shared/CommandTable.h"
#include "shared/EventPump.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/PortFolder.h"
#include "support/Printers.h"

#include <QEventLoop>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace fenrik {

/// Delivers real socket events, while the clock stands still unless a test lets it run.
class SocketPump : public EventPump {
public:
    explicit SocketPump(FakeClock& clock) : EventPump(clock), mClock(clock) {}

    /// Time passes in waits while this is true.
    std::function<bool()> timePasses = [] { return false; };
    /// Runs in each turn, as the user would.
    std::function<void()> onTurn = [] {};

protected:
    void Pump(double seconds) override
    {
        QEventLoop loop;
        QTimer::singleShot(2, &loop, &QEventLoop::quit);
        loop.exec();
        onTurn();
        if (timePasses())
            mClock.Advance(std::min(seconds + 0.001, 0.25));
        else if (++mTurns > kTooMany) {
            ADD_FAILURE() << "a wait never ended";
            Stop();
        }
    }

private:
    static constexpr int kTooMany = 5000;
    FakeClock& mClock;
    int mTurns = 0;
};

class ViewRecorder : public RemoteStateView {
public:
    void ShowStatus(const QString& text) override { statuses.push_back(text); }
    void ShowMessage(const QString& text) override { messages.push_back(text); }
    void ShowChatButton(const char* image, bool chat, bool ping) override
    {
        chatImage = image;
        chatEnabled = chat;
        pingEnabled = ping;
    }
    void ShowWaitCursor(bool wait) override { waitCursor = wait; }
    void AdjustFormCaption() override { ++captions; }
    void RefreshTrafficTimers() override { ++timers; }
    void RefreshActions() override { ++actions; }

    QString Message() const { return messages.empty() ? QString() : messages.back(); }

    std::vector<QString> statuses;
    std::vector<QString> messages;
    std::string chatImage;
    bool chatEnabled = false;
    bool pingEnabled = false;
    bool waitCursor = false;
    int captions = 0;
    int timers = 0;
    int actions = 0;
};

class ChatRecorder : public RemoteChat {
public:
    bool Exists() const override { return exists; }
    void Create() override { exists = true; }
    void SetClients(const std::optional<CUser>& l, const std::optional<CUser>& r) override
    {
        local = l;
        remote = r;
    }
    void ClearRemoteClient() override { remote.reset(); }
    void ClearHistory() override { ++cleared; }
    void SetVisible(bool show) override
    {
        visible = show;
        ++visibilityCalls;
    }
    void CloseWindow() override { exists = visible = false; }
    void SubmitChatMessage(const QString& message, const QString& userName) override
    {
        lines.push_back(userName + QStringLiteral(": ") + message);
    }

    bool exists = false;
    bool visible = false;
    int visibilityCalls = 0;
    std::optional<CUser> local;
    std::optional<CUser> remote;
    int cleared = 0;
    std::vector<QString> lines;
};

class WindowsRecorder : public RemoteWindows {
public:
    void EnsureUsersWindow() override { usersWindow = true; }
    void SetUserList(const UserList& users, int excludeClientID) override
    {
        lists.push_back(users.Count());
        excluded = excludeClientID;
    }
    Choice ChooseUser() override
    {
        ++choices;
        return choose();
    }
    void HideUsersWindow() override { ++usersHidden; }
    void replyReceived(const QString& text) override { replies.push_back(text); }
    void HideLatencyWindow() override { ++latencyHidden; }
    void ShowTimedMessage(const QString& text, int milliseconds) override { timed.push_back({text, milliseconds}); }

    bool usersWindow = false;
    std::vector<int> lists;
    int excluded = 0;
    std::function<Choice()> choose = [] { return Choice{}; };
    int choices = 0;
    int usersHidden = 0;
    std::vector<QString> replies;
    int latencyHidden = 0;
    std::vector<std::pair<QString, int>> timed;
};

class ProgramRecorder : public RemoteConnectionHost {
public:
    std::optional<RemoteLogon> CurrentProfile() const override { return profile; }
    void OpenPortOptions() override { onPortOptions(); }
    void SetUIState(int state) override { uiStates.push_back(state); }
    bool PortOpenForRx() const override { return openForRx; }
    bool NodeMounted() const override { return mounted; }
    void UnmountNode() override
    {
        mounted = false;
        ++unmounted;
    }
    void ForgetMountedNode() override
    {
        mounted = false;
        ++forgotten;
    }
    void ResetPanels() override { ++panelResets; }

    std::optional<RemoteLogon> profile;
    std::function<void()> onPortOptions = [] {};
    std::vector<int> uiStates;
    bool openForRx = false;
    bool mounted = false;
    int unmounted = 0;
    int forgotten = 0;
    int panelResets = 0;
};

/// Boxes in which the program goes on until the test closes them.
class OpenBoxes : public BoxRecorder {
public:
    Button MsgBox(const QString& text, QMessageBox::Icon icon, Buttons buttons, const QString& title) override
    {
        const Button answer = BoxRecorder::MsgBox(text, icon, buttons, title);
        whileOpen();
        return answer;
    }

    std::function<void()> whileOpen = [] {};
};

class RemoteFixture : public testing::Test {
protected:
    [[nodiscard]] RemoteParts Parts() { return {handler, clock, pump, boxes, errors, view, chat, windows, host}; }

    /// Delivers events until `done`; false if that never happens.
    bool Until(const std::function<bool()>& done) { return pump.WaitFor(done, 3600); }

    /// All that was sent has arrived and was handled: what takes many frames comes in this order.
    void Turns(int count)
    {
        for (int i = 0; i < count; ++i)
            pump.Once();
    }

    PortFolder folder;
    ComPorts ports = folder.Ports();
    SerialControl port{ports};
    FakeClock clock;
    SocketPump pump{clock};
    CommandTable commands;
    ErrorRecorder errors;
    OpenBoxes boxes;
    ViewRecorder view;
    ChatRecorder chat;
    WindowsRecorder windows;
    ProgramRecorder host;
    CMsgHandler handler{port, clock, pump, commands, errors};
};

}  // namespace fenrik
