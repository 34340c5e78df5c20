#include "app/UiState.h"

#include "app/Composer.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "app/PortState.h"
#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "widgets/StatusLine.h"

#include <QAction>
#include <QMenu>

namespace fenrik {

namespace {

struct ButtonState {
    const char* key;
    bool whenConnected;
    bool whenDisconnected;
};

// Buttons of connected and disconnected. Those that depend on more stand in the refresh routines.
constexpr ButtonState kButtons[] = {
    {"Log", false, true},     {"Port", false, true},       {"System", false, true}, {"ConnectUsing", false, true},
    {"Connect", false, true}, {"Disconnect", true, false}, {"Analog", true, false}, {"Save", true, false},
};

constexpr const char* kOffWhenDisconnected[] = {"States",           "FlashInfo", "Collision", "OutputDiagnostics",
                                                "InputDiagnostics", "RDChat",    "RDPing"};

}  // namespace

UiState::UiState(const UiParts& parts, const PortState& ports, const CMsgHandler& handler, const CSystem& system,
                 UiStateHost& host)
    : mParts(parts), mPorts(ports), mHandler(handler), mSystem(system), mHost(host)
{
}

void UiState::SetUIState(int state)
{
    switch (state) {
    case kConnected:
        ShowConnected();
        break;
    case kDisconnected:
        ShowDisconnected();
        break;
    case kReady:
        mState |= kReady;
        EnableInput(true);
        break;
    case kBusy:
        mState &= ~kReady;
        EnableInput(false);
        break;
    default:
        break;
    }
}

void UiState::ShowConnected()
{
    if (mHandler.TargetPort() == Transport::kNone) {
        mParts.status.setMsg(QStringLiteral("Cannot connect - no valid port has been chosen"));
        return;
    }
    mState |= kConnected;
    for (const ButtonState& button : kButtons)
        mParts.toolbar.SetEnabled(QLatin1String(button.key), button.whenConnected);
    mParts.toolbar.SetEnabled(QStringLiteral("RDChat"), mPorts.RemoteConnected());
    mParts.toolbar.SetEnabled(QStringLiteral("RDPing"), mPorts.RemoteConnected());
    RefreshAll();
    mHost.ShowSync(false);
    mParts.status.setStatus(mPorts.RemotePiped() ? QStringLiteral("Piped") : QStringLiteral("Connected"));
}

void UiState::ShowDisconnected()
{
    mState &= ~kConnected;
    for (const ButtonState& button : kButtons)
        mParts.toolbar.SetEnabled(QLatin1String(button.key), button.whenDisconnected);
    for (const char* key : kOffWhenDisconnected)
        mParts.toolbar.SetEnabled(QLatin1String(key), false);
    RefreshAll();
    mParts.status.setStatus(QStringLiteral("Disconnected"));
}

void UiState::RefreshForPort()
{
    mParts.composer.SetSendEnabled(mPorts.PortOpenForTx());
    RefreshUIMenuActions();
    RefreshUINodeBarActions();
    RefreshUIToolBarActions();
}

void UiState::RefreshAll()
{
    RefreshForPort();
    mHost.RefreshCurrentFrame(false);
}

void UiState::EnableInput(bool enabled)
{
    mParts.composer.setEnabled(enabled);
    mParts.nodeBars.SetEnabled(enabled);
    mParts.toolbar.setEnabled(enabled);
    for (const QPointer<QWidget>& widget : mBusyWidgets) {
        if (widget)
            widget->setEnabled(enabled);
    }
}

void UiState::RefreshUINodeBarActions()
{
    const bool mounted = mSystem.MountedNodeNumber() != 0;
    const bool selected = mSystem.SelectedNodeNumber() != 0;
    const bool canSend = mPorts.PortOpenForTx();
    QAction* mount = mParts.nodeBars.ActionButton(QStringLiteral("Mount"));
    QAction* unmount = mParts.nodeBars.ActionButton(QStringLiteral("Unmount"));
    mount->setVisible(!mounted);
    unmount->setVisible(mounted);
    mount->setEnabled(canSend && selected && !mounted);
    unmount->setEnabled(canSend && mounted);
    mParts.nodeBars.ActionButton(QStringLiteral("Ping"))->setEnabled(canSend && selected);
}

void UiState::RefreshUIToolBarActions()
{
    const bool canSend = mPorts.PortOpenForTx();
    const bool mounted = mSystem.MountedNodeNumber() != 0;
    mParts.toolbar.SetEnabled(QStringLiteral("DetectNodes"), canSend && !mounted);
    for (const char* key : {"States", "FlashInfo", "Collision"})
        mParts.toolbar.SetEnabled(QLatin1String(key), canSend && mounted);
    mParts.toolbar.SetEnabled(QStringLiteral("Refresh"), canSend && mSystem.SelectedNodeNumber() != 0);
    // What is known of a saved system can be looked at without the network. On it, a mount opens these views, too.
    const bool known = mSystem.Defined() && mSystem.SelectedNode();
    for (const char* key : {"OutputDiagnostics", "InputDiagnostics"}) {
        if (known || !Connected())
            mParts.toolbar.SetEnabled(QLatin1String(key), known);
    }
}

void UiState::RefreshUIMenuActions()
{
    const bool canSend = mPorts.PortOpenForTx();
    mParts.menus.Menu(QStringLiteral("mnuConnectMethod"))->setEnabled(!Connected());
    mParts.menus.Entry(QStringLiteral("mnuCommandQuery"))->setEnabled(canSend);
    mParts.menus.Entry(QStringLiteral("mnuAssignEatonE33"))->setEnabled(canSend);
}

}  // namespace fenrik
