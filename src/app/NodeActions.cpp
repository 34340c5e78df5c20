#include "app/NodeActions.h"

#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "app/NodeDiscovery.h"
#include "app/PortState.h"
#include "app/ViewSwitch.h"
#include "app/frmDiag.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "widgets/MessageListView.h"

#include <QAction>

namespace fenrik {

NodeActions::NodeActions(const PortState& ports, CSystem& system, NodeDiscovery& discovery, ViewSwitch& views,
                         frmDiag& window)
    : mPorts(ports), mSystem(system), mDiscovery(discovery), mViews(views), mWindow(window)
{
}

void NodeActions::SelectNode(int number)
{
    mSystem.SelectNode(std::uint8_t(number));
    ShowType(number);
    // The toolkit flips the button on each click; pressed means selected and nothing else.
    if (QAction* button = mWindow.Nodes().NodeButton(number))
        button->setChecked(mSystem.SelectedNodeNumber() == number);
}

void NodeActions::ShowType(int number)
{
    const CNode* node = mSystem.Nodes().Find(number);
    QAction* button = mWindow.Nodes().NodeButton(number);
    if (node && button && node->typeID() != CNode::kUnknownType)
        button->setToolTip(node->key() + QLatin1Char('-') + node->TypeName());
}

void NodeActions::MountSelectedNode()
{
    if (!mPorts.PortOpenForTx()) {
        mWindow.setMsg(QStringLiteral("Could not mount node because access to port is denied."));
        return;
    }
    CNode* node = mSystem.SelectedNode();
    if (!node)
        return;
    mWindow.MessageList().SelectLast();
    mDiscovery.MountNode(node->number());
    if (node->typeID() == CNode::kUnknownType)
        mDiscovery.VerifyNode(node, false);
    ShowType(node->number());
    for (const char* key : {"OutputDiagnostics", "InputDiagnostics"})
        mWindow.Toolbar().SetEnabled(QLatin1String(key), true);
}

void NodeActions::UnmountMountedNode()
{
    if (mSystem.MountedNodeNumber() == 0)
        return;
    mWindow.MessageList().SelectLast();
    mDiscovery.UnmountNode(mSystem.MountedNodeNumber());
    LeaveDisabledView();
}

void NodeActions::PingSelectedNode()
{
    if (mSystem.SelectedNodeNumber() == 0)
        return;
    mWindow.MessageList().SelectLast();
    if (mDiscovery.PingNode(mSystem.SelectedNodeNumber()))
        mViews.RefreshCurrentFrame(false);
}

void NodeActions::LeaveDisabledView()
{
    const QString key = ViewSwitch::GetDisplayStateName(mViews.DisplayState());
    if (mSystem.MountedNodeNumber() == 0 && !mWindow.Toolbar().IsEnabled(key))
        mViews.setDisplayState(ViewSwitch::kAnalog);
}

void NodeActions::RefreshUINodeBarNodes()
{
    for (int number = 1; number <= NodeBars::kNodes; ++number) {
        const CNode* node = number <= mSystem.NodesInSystem() ? mSystem.Nodes().Find(number) : nullptr;
        QAction* button = mWindow.Nodes().NodeButton(number);
        mWindow.Nodes().SetIcon(number, node ? node->NodeBarIconName() : QStringLiteral("Blank"));
        button->setVisible(node != nullptr);
        button->setEnabled(node && node->Active());
        button->setToolTip(QStringLiteral("Node %1").arg(number));
        ShowType(number);
    }
    mWindow.Nodes().Second()->setVisible(mSystem.NodesInSystem() > NodeBars::kNodesOfFirstBar);
}

}  // namespace fenrik
