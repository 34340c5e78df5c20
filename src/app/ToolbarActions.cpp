#include "app/ToolbarActions.h"

#include "app/DiagHub.h"
#include "app/DiagPanels.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "app/ProgramHost.h"
#include "app/frmDiag.h"
#include "logging/FrmMsgLogging.h"
#include "model/SavePrompt.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"

#include <QAction>
#include <QApplication>
#include <QHash>

namespace fenrik {

ToolbarActions::ToolbarActions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program)
    : mServices(services), mHub(hub), mWindow(window), mProgram(program), mSystem(services, hub, window, program)
{
    connect(&window.Toolbar(), &MainToolbar::Clicked, this, &ToolbarActions::Click);
    connect(&window.Nodes(), &NodeBars::NodeClicked, this, &ToolbarActions::ClickNode);
    connect(&window.Nodes(), &NodeBars::ActionClicked, this, &ToolbarActions::ClickNodeAction);
}

void ToolbarActions::Click(const QString& key)
{
    const BusyMeanwhile busy(mHub.State());  // menus are open to the user also inside an exchange
    Guarded(mServices.errors, "frmmain:Toolbar:ButtonClick", [this, &key] { Run(key); });
}

void ToolbarActions::Run(const QString& key)
{
    using Action = void (*)(ToolbarActions&);
    static const QHash<QString, Action> kActions{
        {QStringLiteral("Connect"), [](ToolbarActions& self) { self.mHub.Link().Connect(); }},
        {QStringLiteral("Disconnect"), [](ToolbarActions& self) { self.mHub.Link().Disconnect(); }},
        {QStringLiteral("System"), [](ToolbarActions& self) { self.mSystem.Choose(); }},
        {QStringLiteral("ConnectUsing"), [](ToolbarActions& self) { self.ConnectUsing(); }},
        {QStringLiteral("Clear"), [](ToolbarActions& self) { self.mHub.Clear(); }},
        {QStringLiteral("Save"), [](ToolbarActions& self) { (void)self.mHub.SaveSystem(SavePrompt::kYes); }},
        {QStringLiteral("DetectNodes"), [](ToolbarActions& self) { self.DetectNodes(); }},
        {QStringLiteral("Collision"), [](ToolbarActions& self) { self.SwitchCollisionMonitor(); }},
        {QStringLiteral("Refresh"), [](ToolbarActions& self) { self.Refresh(); }},
        {QStringLiteral("Log"), [](ToolbarActions& self) { self.ChooseLogOptions(); }},
        {QStringLiteral("RDUsers"), [](ToolbarActions& self) { self.mHub.RemoteWindows().OpenUsers(); }},
        {QStringLiteral("RDChat"), [](ToolbarActions& self) { self.mHub.RemoteWindows().OpenChat(); }},
        {QStringLiteral("RDPing"), [](ToolbarActions& self) { self.mHub.RemoteWindows().OpenLatency(); }},
        {QStringLiteral("DiagLog"), [](ToolbarActions& self) { self.mProgram.ExploreDiagPath(); }},
        {QStringLiteral("Port"), [](ToolbarActions& self) { self.ChooseNetworkOptions(); }},
        {QStringLiteral("Harnwick"), [](ToolbarActions& self) { self.mHub.Options().OpenToolOptions(); }},
        {QStringLiteral("About"), [](ToolbarActions& self) { self.mHub.Options().OpenAbout(); }},
    };
    if (const int view = ViewSwitch::StateOfName(key); view >= 0)
        mHub.Views().setDisplayState(view);
    else
        kActions.value(key)(*this);
}

void ToolbarActions::ChooseLogOptions()
{
    FrmMsgLogging(FrmMsgLogging::Network::Present, mServices.settings, mServices.store, mServices.errors, &mWindow)
        .exec();
}

void ToolbarActions::ChooseNetworkOptions()
{
    // The dialler presses this button too.
    QWidget* const above = QApplication::activeModalWidget();
    mHub.Options().OpenNetworkOptions(above ? above : &mWindow);
    if (!mHub.State().Connected())
        mHub.SetUIState(UiState::kDisconnected);
}

void ToolbarActions::ConnectUsing()
{
    mHub.setConnectionType(mWindow.Menus().NextConnectionMethod(mHub.Link().ConnectionType()));
}

void ToolbarActions::DetectNodes()
{
    if (mHub.System().MountedNodeNumber() == 0)
        mHub.Discovery().DetectNodes();
}

void ToolbarActions::SwitchCollisionMonitor()
{
    mWindow.Panels().SetCollisionMonitor(mWindow.Toolbar().Button(QStringLiteral("Collision"))->isChecked());
}

void ToolbarActions::Refresh()
{
    mHub.Refresh().RefreshCurrentNode(false);
    mHub.Views().RefreshCurrentFrame(true);
}

void ToolbarActions::ClickNode(int number)
{
    const BusyMeanwhile busy(mHub.State());
    const char* where =
        number <= NodeBars::kNodesOfFirstBar ? "frmmain:Nodebar:ButtonClick" : "frmmain:Nodebar17_32:ButtonClick";
    Guarded(mServices.errors, where, [this, number] { mHub.Nodes().SelectNode(number); });
}

void ToolbarActions::ClickNodeAction(const QString& key)
{
    const BusyMeanwhile busy(mHub.State());
    Guarded(mServices.errors, "frmmain:Nodebar:ButtonClick", [this, &key] {
        if (key == QLatin1String("Mount"))
            mHub.Nodes().MountSelectedNode();
        else if (key == QLatin1String("Unmount"))
            mHub.Nodes().UnmountMountedNode();
        else
            mHub.Nodes().PingSelectedNode();
    });
}

}  // namespace fenrik
