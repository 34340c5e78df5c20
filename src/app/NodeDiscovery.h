#pragma once

#include <QString>

#include <optional>

namespace fenrik {

class CNode;
class CSystem;
class PortState;
struct CMessage;
struct Services;

/// What finding and mounting nodes asks of the window.
class DiscoveryHost {
public:
    virtual ~DiscoveryHost() = default;
    virtual void SetUIState(int state) = 0;
    [[nodiscard]] virtual bool IsReady() const = 0;  ///< bit 4 of the UI state
    virtual void ShowMessage(const QString& text) = 0;
    virtual void RefreshNodeActions() = 0;  ///< of the node bars and of the toolbar
    virtual void ClickNode(int number) = 0;
    virtual void ResetStates() = 0;  ///< the states views ask the node anew
};

/// Finds out which nodes are alive, which types they are, and mounts one: only a mounted node answers queries and
/// takes forced outputs. What is learnt stands in CSystem.
///
///   command  state  data    reply
///   901             node    902, data = the node's number or 12345 for the number pinged
///   905      1      node    903, state 1, data = node or 0: mounted
///   905      0      node    903: unmounted
///   979             node    979, data = the node's type; older nodes answer 977 with 976 or 979 with 978
class NodeDiscovery {
public:
    NodeDiscovery(const Services& services, const PortState& ports, CSystem& system, DiscoveryHost& host);

    /// Pings every node of the system, once each.
    void DetectNodes();

    /// True while DetectNodes runs.
    [[nodiscard]] bool Detecting() const { return mDetecting; }

    /// Ends a running detection at once.
    void RequestCancel();

    /// Takes the `data` of a ping's reply. `pingNode`: the number pinged, 0 for a reply seen in the traffic.
    /// The number of the node that answered, 0 if none.
    int HandlePingResponse(int pingNode, int data);

    /// Mounts a node, after unmounting another one. True if it is mounted then.
    bool MountNode(int node);

    /// True if the node acknowledged.
    bool UnmountNode(int node);

    /// One ping of the node, with two tries. True if it was answered.
    bool PingNode(int node);

    /// Makes sure that the node's type is known, mounting it if need be. True if the type is known at the end.
    bool VerifyNode(CNode* node, bool force);

    /// The node whose mount failed last and that may have taken it all the same; 0 if none.
    [[nodiscard]] int lastnode() const { return mLastNode; }

private:
    int PingAll();
    void SelectAfterDetection(int earlier, int firstFound);
    void FreeDoubtfulNode(int node);
    bool AskForMount(int node);
    std::optional<CMessage> Ask(int command, int node, int replyCommand);
    std::optional<int> LearnType(CNode& node);
    std::optional<int> LearnTypeMounted(CNode& node);

    const Services& mServices;
    const PortState& mPorts;
    CSystem& mSystem;
    DiscoveryHost& mHost;
    bool mDetecting = false;
    bool mCancelRequested = false;
    int mLastNode = 0;
};

}  // namespace fenrik
