#include "app/RemoteWindowSet.h"

#include "app/Services.h"
#include "platform/NormalPointer.h"
#include "remote/RemoteConnection.h"
#include "remote/frmPipeChatDialog.h"
#include "remote/frmPipeUsersDialog.h"
#include "remote/frmRDNetLatency.h"
#include "remote/frmRDTimedMessage.h"

namespace fenrik {

namespace {

/// In front of the others, with the keyboard.
void Present(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

RemoteWindowSet::RemoteWindowSet(const Services& services, QWidget& window) : mServices(services), mWindow(window) {}

RemoteWindowSet::~RemoteWindowSet() = default;

// --- The toolbar ---------------------------------------------------------------------------------------------------

void RemoteWindowSet::OpenUsers()
{
    EnsureUsersWindow();
    Present(*mUsers);
}

void RemoteWindowSet::OpenChat()
{
    mConnection->Session().EnsureChat(*this);
    Present(*mChat);
}

void RemoteWindowSet::OpenLatency()
{
    if (!mLatency || !mLatency->isVisible()) {
        DropLatencyWindow();
        mLatency = std::make_unique<frmRDNetLatency>(*mConnection, mServices.clock, mServices.errors, &mWindow);
        mConnection->Followers().Add(*mLatency);
    }
    Present(*mLatency);
}

void RemoteWindowSet::DropLatencyWindow()
{
    if (mLatency)
        mConnection->Followers().Remove(*mLatency);
    mLatency.reset();
}

// --- RemoteChat ----------------------------------------------------------------------------------------------------

void RemoteWindowSet::Create()
{
    if (!mChat) {
        mChat = std::make_unique<frmPipeChatDialog>(*mConnection, mServices.clock, mServices.boxes, mServices.errors,
                                                    &mWindow);
        mConnection->Followers().Add(*mChat);
    }
    mChatExists = true;
    ClearHistory();
    SetClients({}, {});
    mChat->setState(mConnection->RemoteState());
}

void RemoteWindowSet::SetClients(const std::optional<CUser>& local, const std::optional<CUser>& remote)
{
    if (!mChatExists)
        return;
    mChat->SetLocalClient(local);
    mChat->SetRemoteClient(remote);
}

void RemoteWindowSet::ClearRemoteClient()
{
    if (mChatExists)
        mChat->SetRemoteClient({});
}

void RemoteWindowSet::ClearHistory()
{
    if (mChatExists)
        mChat->ClearHistory();
}

void RemoteWindowSet::SetVisible(bool visible)
{
    if (mChatExists)
        mChat->setVisible(visible);
}

void RemoteWindowSet::CloseWindow()
{
    SetVisible(false);
    mChatExists = false;
}

void RemoteWindowSet::SubmitChatMessage(const QString& message, const QString& userName)
{
    if (mChatExists)
        mChat->SubmitChatMessage(message, userName);
}

// --- RemoteWindows -------------------------------------------------------------------------------------------------

void RemoteWindowSet::EnsureUsersWindow()
{
    if (mUsers)
        return;
    mUsers = std::make_unique<frmPipeUsersDialog>(&mWindow);
    mConnection->Followers().Add(*mUsers);
}

void RemoteWindowSet::SetUserList(const UserList& users, int excludeClientID)
{
    if (mUsers)
        mUsers->SetUserList(users, excludeClientID);
}

RemoteWindows::Choice RemoteWindowSet::ChooseUser()
{
    EnsureUsersWindow();
    const NormalPointer pointer;
    mUsers->hide();
    mUsers->exec();
    return {mUsers->SelectedClientID(), mUsers->SelectedUserName()};
}

void RemoteWindowSet::HideUsersWindow()
{
    if (mUsers)
        mUsers->hide();
}

void RemoteWindowSet::replyReceived(const QString& text)
{
    // A window that the user has closed ends its test.
    if (mLatency && mLatency->isVisible())
        mLatency->replyReceived(text);
}

void RemoteWindowSet::HideLatencyWindow()
{
    if (mLatency)
        mLatency->hide();
}

void RemoteWindowSet::ShowTimedMessage(const QString& text, int milliseconds)
{
    const NormalPointer pointer;
    frmRDTimedMessage(&mWindow).doModalDialog(text, milliseconds);
}

}  // namespace fenrik
