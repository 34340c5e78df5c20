#pragma once

#include "commands/CommandsHost.h"

#include <QWidget>

namespace fenrik {

class CSystem;
class NodeDiscovery;
class PortState;
class UiState;
struct CMessage;
struct Services;

/// Opens the windows of the operator commands and is what they ask of the main window. The main window is busy while
/// one of them is open.
class OperatorCommands : private CommandsHost {
public:
    /// All references outlive the object; `window` is what the windows lie over.
    OperatorCommands(const Services& services, const PortState& ports, CSystem& system, NodeDiscovery& discovery,
                     UiState& ui, QWidget& window);

    /// Opens "Special Commands" on a message. Returns when it is closed.
    void OpenSpecialCommand(const CMessage& message);

    /// The same, ready to assign the address of an Eaton E33 switch.
    void AssignEatonE33();

    /// Opens "Command Query". Returns when it is closed and what it asked has come to its end.
    void OpenCommandQuery();

private:
    [[nodiscard]] bool PortOpenForTx() const override;
    bool MountNode(int node) override;
    bool UnmountNode(int node) override;

    const Services& mServices;
    const PortState& mPorts;
    CSystem& mSystem;
    NodeDiscovery& mDiscovery;
    UiState& mUi;
    QWidget& mWindow;
};

}  // namespace fenrik
