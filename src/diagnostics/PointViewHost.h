#pragma once

#include <QString>

namespace fenrik {

class CNode;

/// What the input view needs from the window around it.
class InputViewHost {
public:
    virtual ~InputViewHost() = default;

    /// Makes sure that the node's type is known. Waits, and events run meanwhile: another node can be selected, and
    /// the view shown anew, when it returns.
    virtual void VerifyNode(CNode& node) = 0;
};

/// What the output view needs besides.
class OutputViewHost : public InputViewHost {
public:
    [[nodiscard]] virtual bool PortOpenForTx() const = 0;

    /// The last fault reported of an output, by the numbers of node and output; empty if there was none. It outlives
    /// the output's object, which a node loses when its type is read again.
    [[nodiscard]] virtual QString FaultText(int node, int output) const = 0;

    /// Puts `command` into the composer, ready to be sent with data 0 and no three-way flag, if the composer offers it.
    virtual void Compose(int command, bool on) = 0;
};

}  // namespace fenrik
