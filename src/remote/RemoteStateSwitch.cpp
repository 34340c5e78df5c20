#include "remote/RemoteStateSwitch.h"

#include "remote/RemoteSession.h"
#include "remote/RemoteView.h"
#include "shared/ErrorReporter.h"

#include <iterator>

namespace fenrik {

namespace {

using namespace RemoteStates;

struct StateRow {
    const char* status;
    const char* message;  ///< "%1" is the name of the other end
    const char* chatImage;
};

/// By state, from 1.
constexpr StateRow kRows[] = {
    {"Disconnected", "Disconnected from Server", "RDChat"},
    {"Connected", "Connected to Server", "RDChat"},
    {"Logged On", "Authenticated by Server", "RDChat"},
    {"Piped", "Piped to %1", "RDChat"},
    {"Piped", "Piped to %1", "RDChatDenied"},
    {"Piped", "%1 has granted access to remote network", "RDChatGranted"},
};

const StateRow* RowOf(std::int32_t state)
{
    return state >= 1 && state <= std::int32_t(std::size(kRows)) ? &kRows[state - 1] : nullptr;
}

}  // namespace

RemoteStateSwitch::RemoteStateSwitch(RemoteSession& session, RemoteStateView& view, RemoteChat& chat,
                                     RemoteWindows& windows, ErrorReporter& errors)
    : mSession(session), mView(view), mChat(chat), mWindows(windows), mErrors(errors)
{
}

void RemoteStateSwitch::setState(std::int32_t state)
{
    Guarded(mErrors, "frmDiag.setState", [this, state] {
        const std::int32_t old = mSession.RemoteState;
        const bool changed = state != old;
        mSession.RemoteState = state;
        if (changed)
            ShowTexts(state);
        SetWindows(state, changed);
        ShowButtons(state);
        if (!changed)
            return;
        mView.RefreshActions();
        if (state >= kWaiting || old >= kWaiting) {
            mView.AdjustFormCaption();
            mView.RefreshTrafficTimers();
        }
    });
}

void RemoteStateSwitch::ShowTexts(std::int32_t state)
{
    const StateRow* row = RowOf(state);
    if (!row)
        return;
    mView.ShowStatus(QString::fromLatin1(row->status));
    mView.ShowMessage(QString::fromLatin1(row->message).replace(QStringLiteral("%1"), mSession.mPipedTo.UserName));
}

void RemoteStateSwitch::SetWindows(std::int32_t state, bool changed)
{
    switch (state) {
    case kDisconnected:
        mWindows.HideUsersWindow();
        mWindows.HideLatencyWindow();
        if (mChat.Exists())
            mChat.CloseWindow();
        break;
    case kWaiting:
    case kDenied:
        mSession.EnsureChat(mChat);
        if (changed)
            mChat.SetVisible(true);
        break;
    case kLoggedOn:
    case kGranted:
        if (mChat.Exists())
            mChat.SetVisible(false);
        break;
    default:
        break;
    }
}

void RemoteStateSwitch::ShowButtons(std::int32_t state)
{
    const StateRow* row = RowOf(state);
    mView.ShowChatButton(row ? row->chatImage : "RDChat", mSession.IsRemotePiped(), mSession.IsRemoteConnected());
}

}  // namespace fenrik
