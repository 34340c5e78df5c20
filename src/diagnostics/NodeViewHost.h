#pragma once

namespace fenrik {

class CNode;

/// What the views that ask a node need from the window around them. VerifyNode waits, and events run meanwhile: the
/// mount can have ended, and another view can be open, when it returns.
class NodeViewHost {
public:
    virtual ~NodeViewHost() = default;

    /// The open view, one of the kView numbers.
    [[nodiscard]] virtual int DisplayState() const = 0;

    /// 8 busy, 4 ready.
    virtual void SetUIState(int state) = 0;

    /// Makes sure that the node's type is known, with `force` from what the node says now. True if it is known then.
    virtual bool VerifyNode(CNode* node, bool force) = 0;

    static constexpr int kViewStates = 1;
    static constexpr int kViewFlashInfo = 3;

    static constexpr int kReady = 4;
    static constexpr int kBusy = 8;
};

}  // namespace fenrik
