#pragma once

namespace fenrik {

class CSystem;
class frmDiag;
class NodeDiscovery;
class PortState;
class ViewSwitch;

/// What a click on a button of the node bars does, and what the buttons of the nodes show.
class NodeActions {
public:
    /// All outlive the object.
    NodeActions(const PortState& ports, CSystem& system, NodeDiscovery& discovery, ViewSwitch& views, frmDiag& window);

    /// The button of node `number`.
    void SelectNode(int number);

    /// "Mount": the selected node, whose type is asked for if it is not known. Nothing without one.
    void MountSelectedNode();

    /// "Unmount": the mounted node. Nothing without one.
    void UnmountMountedNode();

    /// "Ping": the selected node. Nothing without one.
    void PingSelectedNode();

    /// A view that only a mounted node has gives way to the analog values when none is mounted any more.
    void LeaveDisabledView();

    /// Picture, tool tip and state of every node's button; the second bar is there if the system has a node for it.
    void RefreshUINodeBarNodes();

private:
    void ShowType(int number);

    const PortState& mPorts;
    CSystem& mSystem;
    NodeDiscovery& mDiscovery;
    ViewSwitch& mViews;
    frmDiag& mWindow;
};

}  // namespace fenrik
