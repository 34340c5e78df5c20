#pragma once

namespace fenrik {

/// What the windows of the operator commands ask of the main window. Called on the user-interface thread.
class CommandsHost {
public:
    virtual ~CommandsHost() = default;

    /// True while something may be sent. May change inside any wait.
    [[nodiscard]] virtual bool PortOpenForTx() const = 0;

    /// Mount and unmount a node, waiting for its acknowledge and telling the user how it went. True for success; what
    /// is mounted afterwards stands in CSystem.
    virtual bool MountNode(int node) = 0;
    virtual bool UnmountNode(int node) = 0;
};

}  // namespace fenrik
