#include "app/DiagOptions.h"

#include "app/DiagHub.h"
#include "app/ProgramHost.h"
#include "app/frmDiag.h"
#include "app/messages/MessageListModel.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"

#include <algorithm>

namespace fenrik {

DiagOptions::DiagOptions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program)
    : mServices(services), mHub(hub), mWindow(window), mProgram(program), mDialogs(services, *this)
{
}

void DiagOptions::OpenNetworkOptions(QWidget* parent)
{
    mDialogs.OpenNetworkOptions(parent);
    if (mServices.pump.Stopped())
        return;  // the window was closed meanwhile
    mHub.setConnectionType(mHub.Link().ConnectionType());
    mHub.Link().RefreshTrafficTimers();
}

void DiagOptions::OpenToolOptions()
{
    const bool wasCompact = mServices.settings.CompactList;
    mDialogs.OpenToolOptions(&mWindow, mHub.System().Database());
    if (mServices.pump.Stopped())
        return;
    // Only now, as the box may have been tried out: keyed and keyless lines must not mix, so the list loses its lines.
    if (mServices.settings.CompactList != wasCompact)
        mWindow.Messages().SetCompactList(mServices.settings.CompactList);
}

void DiagOptions::OpenAbout()
{
    mDialogs.OpenAbout(&mWindow);
}

void DiagOptions::WriteSettings()
{
    mProgram.WriteSettings();
}

void DiagOptions::ApplyNodesInSystem()
{
    CSystem& system = mHub.System();
    // A mounted node can't be dropped: ending the mount takes traffic.
    const int count = std::max(mServices.settings.NodesInSystem, system.MountedNodeNumber());
    if (system.Defined() || count == system.NodesInSystem())
        return;
    if (system.SelectedNodeNumber() > count)
        system.DeselectNode();
    system.setNodesInSystem(std::int16_t(count));
    mHub.ShowNodeBars();
}

void DiagOptions::ShowHexData()
{
    mWindow.Messages().SetHexData(mServices.settings.HexData);
}

void DiagOptions::ShowCategories()
{
    mProgram.PopulatecboCategoryList();
}

}  // namespace fenrik
