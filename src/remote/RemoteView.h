#pragma once

#include "remote/CUser.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace fenrik {

/// Who logs on, and where.
struct RemoteLogon {
    QString UserName;
    QString LogonID;
    QString ServerName;
    std::int32_t ServerPort = 0;
};

/// The chat window. While it doesn't exist only Create does something.
class RemoteChat {
public:
    virtual ~RemoteChat() = default;
    [[nodiscard]] virtual bool Exists() const = 0;
    virtual void Create() = 0;  ///< without showing it
    virtual void SetClients(const std::optional<CUser>& local, const std::optional<CUser>& remote) = 0;
    virtual void ClearRemoteClient() = 0;
    virtual void ClearHistory() = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void CloseWindow() = 0;  ///< for good, not only from sight
    virtual void SubmitChatMessage(const QString& message, const QString& userName) = 0;
};

/// The other windows around a connection. Those that don't exist have nothing done to them.
class RemoteWindows {
public:
    struct Choice {
        int clientID = CUser::kNobody;  ///< nobody: cancelled
        QString userName;
    };

    virtual ~RemoteWindows() = default;
    virtual void EnsureUsersWindow() = 0;  ///< made if it isn't there, not shown
    virtual void SetUserList(const UserList& users, int excludeClientID) = 0;
    [[nodiscard]] virtual Choice ChooseUser() = 0;  ///< modal: runs the event loop
    virtual void HideUsersWindow() = 0;
    virtual void replyReceived(const QString& text) = 0;  ///< of the latency test
    virtual void HideLatencyWindow() = 0;
    virtual void ShowTimedMessage(const QString& text, int milliseconds) = 0;  ///< modal
};

/// What the main window shows of a connection's state.
class RemoteStateView {
public:
    virtual ~RemoteStateView() = default;
    virtual void ShowStatus(const QString& text) = 0;                          ///< txtStatus
    virtual void ShowMessage(const QString& text) = 0;                         ///< txtMsg
    virtual void ShowChatButton(const char* image, bool chat, bool ping) = 0;  ///< image of "RDChat"; which are enabled
    virtual void ShowWaitCursor(bool wait) = 0;
    virtual void AdjustFormCaption() = 0;
    virtual void RefreshTrafficTimers() = 0;  ///< by PortOpenForRx and PortOpenForTx
    virtual void RefreshActions() = 0;        ///< what else depends on PortOpenForTx; leaves the status texts alone
};

/// What connecting and disconnecting ask of the program around them.
class RemoteConnectionHost {
public:
    virtual ~RemoteConnectionHost() = default;
    [[nodiscard]] virtual std::optional<RemoteLogon> CurrentProfile() const = 0;
    virtual void OpenPortOptions() = 0;  ///< as a press of "Port"; modal
    virtual void SetUIState(int state) = 0;
    [[nodiscard]] virtual bool PortOpenForRx() const = 0;  ///< over any transport
    [[nodiscard]] virtual bool NodeMounted() const = 0;
    virtual void UnmountNode() = 0;        ///< with its question to the node
    virtual void ForgetMountedNode() = 0;  ///< its network can't be asked any more
    virtual void ResetPanels() = 0;        ///< displays and load shed tables of the previous connection
};

}  // namespace fenrik
