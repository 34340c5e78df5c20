#include "app/DiagHub.h"

#include "app/DiagPanels.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "app/ProgramHost.h"
#include "app/frmDiag.h"
#include "app/messages/MessageListModel.h"
#include "diagnostics/States.h"
#include "link/CMsgHandler.h"
#include "model/CNode.h"
#include "model/SavePrompt.h"
#include "platform/Boxes.h"
#include "platform/ProgramFolder.h"
#include "platform/SerialControl.h"
#include "platform/VersionInfo.h"
#include "shared/CommandTable.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "widgets/MessageListView.h"
#include "widgets/StatusLine.h"

#include <QAction>

namespace fenrik {

namespace {

constexpr int kSendSyncMs = 2500;
constexpr int kSyncCommand = 980;

}  // namespace

DiagHub::DiagHub(const Services& services, frmDiag& window, ProgramHost& program)
    : QObject(&window), mServices(services), mWindow(window), mProgram(program),
      mPorts(services.port, services.handler, *this), mSystem(services.settings, services.folder.Path(), this),
      mViews(window.ViewPages(), window.Toolbar(), services.pump),
      mUi({window.Toolbar(), window.Nodes(), window.Menus(), window.CommandComposer(), window.Status()}, mPorts,
          services.handler, mSystem, *this),
      mTransceiver(services.port, services.handler, services.pump, services.boxes, services.version, services.settings,
                   services.run, *this),
      mDiscovery(services, mPorts, mSystem, *this), mNodes(mPorts, mSystem, mDiscovery, mViews, window),
      mRefresh(services, mSystem, mDiscovery, mUi, window.Status()),
      mCommands(services, mPorts, mSystem, mDiscovery, mUi, window),
      mConnection(services, mPorts, mSystem, mTransceiver, *this),
      mRemote(services, mPorts, mSystem, mDiscovery, mUi, window, *this),
      mModem(services, mTransceiver, mUi, window, *this), mDisplay(services, mSystem, window.Messages(), *this),
      mPump(services.handler, *this, this), mScripts(services, window.CommandComposer(), mUi, window.Status()),
      mOptions(services, *this, window, program)
{
    mSendSync.setObjectName(QStringLiteral("TSendSync"));
    mSendSync.setParent(this);
    mSendSync.setInterval(kSendSyncMs);
    connect(&mSendSync, &QTimer::timeout, this, &DiagHub::SendSync);
    connect(&services.port, &SerialControl::OnComm, this, [this] { mTransceiver.ProcessPortEvent(); });
    connect(&services.port, &SerialControl::PortLost, this,
            [this](const QString& reason) { mConnection.PortWasLost(reason); });
    mServices.handler.setHost(this);
}

DiagHub::~DiagHub()
{
    mServices.handler.setHost(nullptr);
}

void DiagHub::Load()
{
    if (mServices.port.PortOpen())
        mServices.port.setPortOpen(false);
    mConnection.RefreshConnection(false, false);
    mViews.setDisplayState(ViewSwitch::kAnalog);
    setConnectionType(mConnection.ConnectionType());
    mWindow.Panels().ClearPanel();
    DrawPanel();
    mUi.SetUIState(UiState::kReady);
}

// --- What toolbar and menus ask for --------------------------------------------------------------------------------

void DiagHub::setConnectionType(int type)
{
    mServices.settings.ConnectionType = type;
    mWindow.Toolbar().ShowConnectionMethod(type);
    mWindow.Menus().ShowConnectionMethod(type);
}

void DiagHub::DrawPanel()
{
    MiscFace& face = mWindow.Panels().Face();
    face.ShowSync(false);
    face.ShowCollisionMark(false, "");
    face.ShowPC(mServices.handler.PCCollisions());
    face.ShowBC(mServices.handler.BusCollisions());
    face.ShowNC(false);
    mWindow.Panels().ShowLoadShed();
}

void DiagHub::ToggleSendSync()
{
    mServices.settings.SendSync = !mServices.settings.SendSync;
    SetTrafficTimers(mPorts.PortOpenForRx(), mPorts.PortOpenForTx() && mServices.settings.SendSync);
}

void DiagHub::Clear()
{
    mWindow.Messages().Clear();
    mWindow.Panels().Clear();
    DrawPanel();
    ResetPanels();
    mWindow.Status().setMsg(QString());
}

void DiagHub::RequestCancel()
{
    mDiscovery.RequestCancel();
    mRefresh.RequestCancel();
    mScripts.RequestCancel();
}

void DiagHub::Compose(int command, bool on)
{
    if (!mWindow.CommandComposer().ShowCommand(command, on))
        ShowMessage(QStringLiteral("\"%1\" is in a category that is not listed.")
                        .arg(mServices.commands.FriendlyName(command)));
}

void DiagHub::PressCollision(bool pressed)
{
    mWindow.Toolbar().Press(QStringLiteral("Collision"), pressed);
}

void DiagHub::CommandSent()
{
    mWindow.Panels().StatesView().CommandSent();
}

void DiagHub::SelectLastLine()
{
    mWindow.MessageList().SelectLast();
}

bool DiagHub::SaveSystem(std::int32_t response)
{
    return mSystem.SaveSystem(response);
}

void DiagHub::ShowLoadedSystem()
{
    if (mPorts.PortOpenForTx()) {
        mDiscovery.DetectNodes();
    } else {
        for (int number = 1; mSystem.Defined() && number <= mSystem.NodesInSystem(); ++number)
            mSystem.ActivateNode(number);
        mNodes.SelectNode(1);
    }
    if (mServices.pump.Stopped())
        return;  // the window was closed meanwhile
    RefreshNodeActions();
    RefreshCurrentFrame(false);
}

bool DiagHub::PrepareToClose()
{
    if (const CNode* node = mSystem.MountedNode()) {
        const QString name = node->Name().isEmpty() ? node->key() : node->Name();
        mDiscovery.UnmountNode(node->number());
        if (mSystem.MountedNodeNumber() != 0 &&
            mServices.boxes.MsgBox(name + QStringLiteral(" should be un-mounted before exiting the program.\n"
                                                         "Exit the program anyway ?"),
                                   QMessageBox::Question, QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return false;
    }
    mPump.setEnabled(false);
    mSendSync.stop();
    mWindow.Panels().StopMonitor();
    RDdisconnect();
    mModem.HangUpForGood();
    if (mServices.port.PortOpen())
        mServices.port.setPortOpen(false);
    SaveSystem(SavePrompt::kAsk);
    return true;
}

// --- LinkHost ------------------------------------------------------------------------------------------------------

bool DiagHub::ModemActive() const
{
    return mServices.run.ModemActive;
}

void DiagHub::sendFrame(int type, const QByteArray& payload)
{
    mRemote.Connection().sendFrame(type, payload);
}

void DiagHub::ShowPC(int count)
{
    mWindow.Panels().Face().ShowPC(count);
}

void DiagHub::ShowBC(int count)
{
    mWindow.Panels().Face().ShowBC(count);
}

void DiagHub::ShowCollisionMark(bool active, const char* kind)
{
    mWindow.Panels().Face().ShowCollisionMark(active, kind);
}

// --- Hosts of transceiver, connection and discovery ----------------------------------------------------------------

void DiagHub::ShowStatus(const QString& text)
{
    mWindow.Status().setStatus(text);
}

void DiagHub::ShowMessage(const QString& text)
{
    mWindow.Status().setMsg(text);
}

void DiagHub::SetTrafficTimers(bool receive, bool sendSync)
{
    mPump.setEnabled(receive);
    if (!sendSync)
        mSendSync.stop();
    else if (!mSendSync.isActive())
        mSendSync.start();
    if (!receive) {
        mWindow.ShowMessageList(true);
        mWindow.Panels().StopMonitor();
    }
}

void DiagHub::ReadPanels()
{
    // The count belongs to a mounted node; asking when there is none would only cost silent tries.
    mWindow.Panels().Face().ShowNC(mSystem.MountedNodeNumber() != 0);
    mWindow.Panels().ResetLoadShed();
}

void DiagHub::ResetPanels()
{
    mWindow.Panels().ResetPanels();
}

void DiagHub::ResetStates()
{
    mWindow.Panels().StatesView().ResetStates();
}

void DiagHub::SetToolbarEnabled(bool enabled)
{
    mWindow.Toolbar().setEnabled(enabled);
}

void DiagHub::RefreshNodeActions()
{
    mUi.RefreshUINodeBarActions();
    mUi.RefreshUIToolBarActions();
}

// --- PumpHost ------------------------------------------------------------------------------------------------------

void DiagHub::ShowMessageList(bool visible)
{
    mWindow.ShowMessageList(visible);
}

bool DiagHub::TakenByStates(const CMessage& message)
{
    return mWindow.Panels().StatesView().TakeMessage(message);
}

void DiagHub::NodeAnnounced(int node)
{
    UpdateLoadShed(node * 256);
    if (mSystem.MountedNodeNumber() == node) {
        mSystem.UnmountNode();  // it has restarted and knows nothing of a mount any more
        LeaveDisabledView();
    }
    mSystem.ActivateNode(node);
    mUi.RefreshUINodeBarActions();
}

// --- LiveViews -----------------------------------------------------------------------------------------------------

void DiagHub::UpdateAnalog(int command)
{
    mWindow.Panels().UpdateAnalog(command);
}

void DiagHub::UpdateLoadShed(int data)
{
    mWindow.Panels().UpdateLoadShed(data);
}

void DiagHub::UpdateDiagnostics(const CMessage& message)
{
    mWindow.Panels().StatesView().UpdateDiagnostics(message);
}

void DiagHub::LightSync()
{
    mWindow.Panels().Face().LightSync();
}

void DiagHub::ShowSync(bool lit)
{
    mWindow.Panels().Face().ShowSync(lit);
}

void DiagHub::SendSync()
{
    CMessage sync;
    sync.Command = kSyncCommand;
    sync.State = 0;
    sync.extended = 1;
    sync.data = 1;
    LightSync();
    mServices.handler.SendMessage(sync);
}

// --- SystemOwner ---------------------------------------------------------------------------------------------------

void DiagHub::SetNodeButtonPressed(const NodeButton& button, bool pressed)
{
    mWindow.Nodes().NodeButton(button.number)->setChecked(pressed);
}

void DiagHub::SetNodeButtonEnabled(const NodeButton& button, bool enabled)
{
    mWindow.Nodes().NodeButton(button.number)->setEnabled(enabled);
}

void DiagHub::SetNodeButtonIcon(const NodeButton& button, const QString& iconKey)
{
    mWindow.Nodes().SetIcon(button.number, iconKey);
}

void DiagHub::RefreshUINodeBarNodes()
{
    mNodes.RefreshUINodeBarNodes();
    mWindow.Panels().ShowLoadShed();
}

void DiagHub::AdjustFormCaption()
{
    QString caption = VersionInfo::Title();
    if (mServices.version.IsBeta())
        caption += QStringLiteral(" (non-released)");
    else if (mServices.version.IsTest() || mServices.version.IsDebug())
        caption += QStringLiteral(" (test version)");
    const QString system = mSystem.Defined() ? mSystem.Name() : mServices.settings.SystemName;
    if (!system.isEmpty())
        caption += QStringLiteral(" - ") + system;
    caption += mRemote.Connection().Session().PipeCaption();
    mWindow.setWindowTitle(caption);
}

void DiagHub::SystemSaved(const QString& name)
{
    mWindow.setWindowTitle(VersionInfo::Title() + QLatin1String(" - ") + name);
    ShowMessage(QStringLiteral("System Saved as <%1.dav>").arg(name));
}

void DiagHub::HandleSelectedNodeChange()
{
    RefreshNodeActions();
    RefreshCurrentFrame(false);
}

void DiagHub::HandleMountedNodeChange()
{
    RefreshNodeActions();
    if (mSystem.MountedNodeNumber() != 0)
        return;
    ResetStates();
    mWindow.Panels().SetCollisionMonitor(false);
}

}  // namespace fenrik
