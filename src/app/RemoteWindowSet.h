#pragma once

#include "remote/RemoteView.h"

#include <memory>

class QWidget;

namespace fenrik {

class frmPipeChatDialog;
class frmPipeUsersDialog;
class frmRDNetLatency;
class RemoteConnection;
struct Services;

/// The windows around a remote connection: each is made when it is first needed, lies over the main window and follows
/// the connection's state.
class RemoteWindowSet : public RemoteChat, public RemoteWindows {
public:
    /// Both outlive the object; the windows go before `window` does.
    RemoteWindowSet(const Services& services, QWidget& window);
    ~RemoteWindowSet() override;

    /// Before anything else is called. `connection` outlives the windows.
    void Attach(RemoteConnection& connection) { mConnection = &connection; }

    /// The toolbar's "RDUsers", "RDChat" and "RDPing": none of them waits.
    void OpenUsers();
    void OpenChat();
    void OpenLatency();

    // RemoteChat
    [[nodiscard]] bool Exists() const override { return mChatExists; }
    void Create() override;
    void SetClients(const std::optional<CUser>& local, const std::optional<CUser>& remote) override;
    void ClearRemoteClient() override;
    void ClearHistory() override;
    void SetVisible(bool visible) override;
    void CloseWindow() override;
    void SubmitChatMessage(const QString& message, const QString& userName) override;

    // RemoteWindows
    void EnsureUsersWindow() override;
    void SetUserList(const UserList& users, int excludeClientID) override;
    [[nodiscard]] Choice ChooseUser() override;
    void HideUsersWindow() override;
    void replyReceived(const QString& text) override;
    void HideLatencyWindow() override;
    void ShowTimedMessage(const QString& text, int milliseconds) override;

private:
    void DropLatencyWindow();

    const Services& mServices;
    QWidget& mWindow;
    RemoteConnection* mConnection = nullptr;
    std::unique_ptr<frmPipeUsersDialog> mUsers;
    std::unique_ptr<frmPipeChatDialog> mChat;
    std::unique_ptr<frmRDNetLatency> mLatency;
    bool mChatExists = false;  // a closed chat is kept and begins anew: one of its handlers may still be running
};

}  // namespace fenrik
