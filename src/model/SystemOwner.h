#pragma once

#include <QString>

namespace fenrik {

/// The two toolbars that hold a button for each node.
enum class NodeBar {
    Nodebar,       ///< nodes 1 to 16
    Nodebar17_32,  ///< nodes 17 to 32
};

/// Where the button of a node is found: its toolbar and its key there, "Node" and the number.
struct NodeButton {
    NodeBar bar;
    int number;  ///< 1 to 32

    [[nodiscard]] QString Key() const { return QStringLiteral("Node%1").arg(number); }
};

/// What a system needs from the window that shows it. Called on the user-interface thread from inside the system's
/// own operations, so the system may be read, and is asked to change, again during a call.
class SystemOwner {
public:
    virtual ~SystemOwner() = default;

    virtual void SetNodeButtonPressed(const NodeButton& button, bool pressed) = 0;
    virtual void SetNodeButtonEnabled(const NodeButton& button, bool enabled) = 0;

    /// `iconKey` is a CNode::NodeBarIconName.
    virtual void SetNodeButtonIcon(const NodeButton& button, const QString& iconKey) = 0;

    /// The number of nodes has changed: gives all buttons their pictures and states anew.
    virtual void RefreshUINodeBarNodes() = 0;

    /// The system's name has changed.
    virtual void AdjustFormCaption() = 0;

    /// The system was saved under `name`: the caption and the status line say so.
    virtual void SystemSaved(const QString& name) = 0;

    virtual void HandleSelectedNodeChange() = 0;
    virtual void HandleMountedNodeChange() = 0;
};

}  // namespace fenrik
