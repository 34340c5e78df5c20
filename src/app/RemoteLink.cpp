#include "app/RemoteLink.h"

#include "app/DiagPanels.h"
#include "app/MainToolbar.h"
#include "app/NodeDiscovery.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "app/frmDiag.h"
#include "model/CSystem.h"
#include "remote/RDMain.h"
#include "widgets/StatusLine.h"
#include "widgets/ToolIcon.h"

#include <QAction>

namespace fenrik {

RemoteLink::RemoteLink(const Services& services, const PortState& ports, CSystem& system, NodeDiscovery& discovery,
                       UiState& ui, frmDiag& window, RemoteLinkHost& host)
    : mServices(services), mPorts(ports), mSystem(system), mDiscovery(discovery), mUi(ui), mWindow(window), mHost(host),
      mConnection({services.handler, services.clock, services.pump, services.boxes, services.errors, *this, mWindows,
                   mWindows, *this}),
      mWindows(services, window)
{
    mWindows.Attach(mConnection);
}

RemoteLink::~RemoteLink() = default;

// --- RemoteStateView -----------------------------------------------------------------------------------------------

void RemoteLink::ShowStatus(const QString& text)
{
    mWindow.Status().setStatus(text);
}

void RemoteLink::ShowMessage(const QString& text)
{
    mWindow.Status().setMsg(text);
}

void RemoteLink::ShowChatButton(const char* image, bool chat, bool ping)
{
    mWindow.Toolbar().Button(QStringLiteral("RDChat"))->setIcon(ToolIcon(QLatin1String(image)));
    mWindow.Toolbar().SetEnabled(QStringLiteral("RDChat"), chat);
    mWindow.Toolbar().SetEnabled(QStringLiteral("RDPing"), ping);
}

void RemoteLink::ShowWaitCursor(bool wait)
{
    mHourglass.reset();
    if (wait)
        mHourglass.emplace();
}

void RemoteLink::RefreshActions()
{
    mUi.RefreshForPort();
}

// --- RemoteConnectionHost ------------------------------------------------------------------------------------------

std::optional<RemoteLogon> RemoteLink::CurrentProfile() const
{
    const CPipeProfile* profile = mServices.remote.CurrentProfile();
    if (!profile)
        return std::nullopt;
    return RemoteLogon{profile->UserName, profile->LogonID, profile->ServerName, profile->ServerPort};
}

void RemoteLink::OpenPortOptions()
{
    mWindow.Toolbar().Button(QStringLiteral("Port"))->trigger();
}

void RemoteLink::SetUIState(int state)
{
    mUi.SetUIState(state);
}

bool RemoteLink::NodeMounted() const
{
    return mSystem.MountedNodeNumber() != 0;
}

void RemoteLink::UnmountNode()
{
    mDiscovery.UnmountNode(mSystem.MountedNodeNumber());
}

void RemoteLink::ForgetMountedNode()
{
    // What the end of the mount brings with it is no news beside the end of the connection.
    const QString message = mWindow.Status().Msg();
    mSystem.UnmountNode();
    mHost.LeaveDisabledView();
    ShowMessage(message);
}

void RemoteLink::ResetPanels()
{
    mWindow.Panels().ResetPanels();
    mWindow.Panels().ResetLoadShed();
}

}  // namespace fenrik
