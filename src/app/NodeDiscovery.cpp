#include "app/NodeDiscovery.h"

#include "app/PortState.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "link/CMsgHandler.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "widgets/WaitCursor.h"

namespace fenrik {

namespace {

enum Number { kPing = 901, kPingReply = 902, kAcknowledge = 903, kMount = 905, kNodeType = 979 };
constexpr int kThePingedNode = 12345;

/// Busy for as long as the object lives, if the window was ready when it was made.
class BusyWindow {
public:
    explicit BusyWindow(DiscoveryHost& host) : mHost(host), mWasReady(host.IsReady())
    {
        if (mWasReady)
            mHost.SetUIState(UiState::kBusy);
    }
    ~BusyWindow()
    {
        if (mWasReady)
            mHost.SetUIState(UiState::kReady);
    }
    BusyWindow(const BusyWindow&) = delete;
    BusyWindow& operator=(const BusyWindow&) = delete;

private:
    DiscoveryHost& mHost;
    bool mWasReady;
};

struct TypeAnswer {
    int data;
    int typeID;
};

// Older nodes answer the type query with the number of the command that they were made for.
constexpr TypeAnswer kOddAnswers[] = {{976, 0}, {978, 1}, {974, 2}, {975, 3}, {977, 4}, {980, 5}};

int TypeOf(int data)
{
    if ((data >= 0 && data <= 12) || data == 15 || data == 16)
        return data;
    for (const TypeAnswer& answer : kOddAnswers) {
        if (answer.data == data)
            return answer.typeID;
    }
    return CNode::kUnknownType;
}

struct OlderQuestion {
    int command;
    int reply;
    int typeID;
};

constexpr OlderQuestion kOlderQuestions[] = {{977, 976, 0}, {979, 978, 1}};

CMessage MountMessage(int node, bool mount)
{
    CMessage message;
    message.Command = kMount;
    message.State = mount ? 1 : 0;
    message.data = node;
    return message;
}

}  // namespace

NodeDiscovery::NodeDiscovery(const Services& services, const PortState& ports, CSystem& system, DiscoveryHost& host)
    : mServices(services), mPorts(ports), mSystem(system), mHost(host)
{
}

void NodeDiscovery::DetectNodes()
{
    if (!mPorts.PortOpenForTx() || mDetecting)
        return;
    const WaitCursor hourglass;
    mDetecting = true;
    mCancelRequested = false;
    mHost.SetUIState(UiState::kBusy);
    mHost.ShowMessage(QStringLiteral("Detecting Active Nodes . . ."));
    const int earlier = mSystem.SelectedNodeNumber();
    for (int number = mSystem.NodesInSystem(); number >= 1; --number)
        mSystem.DeActivateNode(number);

    const int firstFound = PingAll();

    mDetecting = false;
    if (mServices.pump.Stopped())
        return;  // the window is closing
    if (mPorts.PortOpenForTx()) {
        mHost.ShowMessage(mSystem.ActiveNodeCount() == 0 ? QStringLiteral("Nodes Not Detected")
                                                         : QStringLiteral("Nodes Detected"));
        mHost.RefreshNodeActions();
        SelectAfterDetection(earlier, firstFound);
    }
    mHost.SetUIState(UiState::kReady);
}

void NodeDiscovery::RequestCancel()
{
    mCancelRequested = true;
    if (mDetecting)
        mServices.handler.AbandonReply();
}

int NodeDiscovery::PingAll()
{
    int firstFound = 0;
    for (int number = 1; number <= mSystem.NodesInSystem(); ++number) {
        CMessage ping;
        ping.Command = kPing;
        ping.data = number;
        ping.ReplyCommand = kPingReply;
        ping.EchoSend = true;
        ping.EchoReply = true;
        mServices.handler.SendMessage(ping);
        mServices.pump.Once();
        if (mCancelRequested || !mPorts.PortOpenForTx() || mServices.pump.Stopped())
            break;
        const auto reply = mServices.handler.GetMessageReply();
        if (mCancelRequested || mServices.pump.Stopped())
            break;
        if (!reply)
            continue;
        const int answered = HandlePingResponse(number, reply->data);
        if (firstFound == 0)
            firstFound = answered;
    }
    return firstFound;
}

void NodeDiscovery::SelectAfterDetection(int earlier, int firstFound)
{
    if (earlier >= 1 && earlier <= mSystem.NodesInSystem() && mSystem.Nodes().Find(earlier)->Active())
        mHost.ClickNode(earlier);
    else if (firstFound > 0)
        mHost.ClickNode(firstFound);
}

int NodeDiscovery::HandlePingResponse(int pingNode, int data)
{
    int number = 0;
    if (data >= 1 && data <= mSystem.NodesInSystem())
        number = data;
    else if (data == kThePingedNode)
        number = pingNode;

    if (number > 0)
        mSystem.ActivateNode(number);
    else if (pingNode > 0)
        mHost.ShowMessage(QStringLiteral("Invalid reply from Node %1 Ping. ").arg(pingNode));
    return number;
}

bool NodeDiscovery::MountNode(int node)
{
    if (!mPorts.PortOpenForTx())
        return false;
    bool mounted = false;
    Guarded(mServices.errors, "frmmain:MountNode", [this, node, &mounted] {
        const WaitCursor hourglass;
        const BusyWindow busy(mHost);
        if (mSystem.MountedNodeNumber() == node) {
            mounted = true;
            return;
        }
        if (mSystem.MountedNodeNumber() != 0)
            UnmountNode(mSystem.MountedNodeNumber());
        else
            FreeDoubtfulNode(node);
        mounted = mSystem.MountedNodeNumber() == 0 && AskForMount(node);
        if (mounted)
            return;
        mLastNode = node;
        // A port that has gone away meanwhile has told its own reason.
        if (mPorts.PortOpenForTx())
            mHost.ShowMessage(QStringLiteral("Unable to mount Node %1").arg(node));
    });
    return mounted;
}

void NodeDiscovery::FreeDoubtfulNode(int node)
{
    if (mLastNode == 0 || mLastNode == node)
        return;
    // Its acknowledge may have been lost on the way, and two mounted nodes would answer each query twice.
    CMessage free = MountMessage(mLastNode, false);
    free.EchoSend = true;
    mServices.handler.SendMessage(free);
}

bool NodeDiscovery::AskForMount(int node)
{
    CMessage mount = MountMessage(node, true);
    const auto reply = mServices.handler.SendMessageGetReply(mount, kAcknowledge, 3, true, true);
    if (!reply || reply->State != 1 || (reply->data != node && reply->data != 0))
        return false;
    mSystem.MountNode(std::uint8_t(node));
    const CNode* mounted = mSystem.Nodes().Find(node);
    mHost.ShowMessage(QStringLiteral("Node %1 Mounted %2").arg(node).arg(mounted ? mounted->Name() : QString()));
    return true;
}

bool NodeDiscovery::UnmountNode(int node)
{
    if (!mPorts.PortOpenForTx()) {
        mSystem.UnmountNode();
        mHost.ResetStates();
        return false;
    }
    bool unmounted = false;
    Guarded(mServices.errors, "frmmain:UnMountNode", [this, node, &unmounted] {
        const WaitCursor hourglass;
        const BusyWindow busy(mHost);
        CMessage unmount = MountMessage(node, false);
        unmounted = mServices.handler.SendMessageGetReply(unmount, kAcknowledge, 3, true, true).has_value();
        if (unmounted) {
            mSystem.UnmountNode();
            mHost.ShowMessage(QStringLiteral("Node %1 Unmounted").arg(node));
        } else if (mPorts.PortOpenForTx()) {
            mHost.ShowMessage(QStringLiteral("Unable to release mount on Node %1").arg(node));
        }
        if (node == mLastNode)
            mLastNode = 0;
        mHost.ResetStates();
    });
    return unmounted;
}

bool NodeDiscovery::PingNode(int node)
{
    const WaitCursor hourglass;
    CMessage ping;
    ping.Command = kPing;
    ping.data = node;
    const auto reply = mServices.handler.SendMessageGetReply(ping, kPingReply, 2, true, true);
    if (reply)
        HandlePingResponse(node, reply->data);
    return reply.has_value();
}

std::optional<CMessage> NodeDiscovery::Ask(int command, int node, int replyCommand)
{
    CMessage question;
    question.Command = command;
    question.data = node;
    return mServices.handler.SendMessageGetReply(question, replyCommand, 3, false, false);
}

bool NodeDiscovery::VerifyNode(CNode* node, bool force)
{
    if (!node)
        return false;
    // Without a network nobody can say better than a saved system what the node is.
    if (mPorts.PortOpenForTx() && (!node->Verified() || force)) {
        node->setTypeID(std::int16_t(LearnType(*node).value_or(CNode::kUnknownType)));
        node->setVerified(true);
    }
    return node->typeID() != CNode::kUnknownType;
}

std::optional<int> NodeDiscovery::LearnType(CNode& node)
{
    if (const auto reply = Ask(kNodeType, node.number(), kNodeType))
        return TypeOf(reply->data);
    if (mSystem.MountedNodeNumber() != node.number()) {
        if (const auto type = LearnTypeMounted(node))
            return type;
    }
    for (const OlderQuestion& question : kOlderQuestions) {
        if (Ask(question.command, node.number(), question.reply))
            return question.typeID;
    }
    return std::nullopt;
}

std::optional<int> NodeDiscovery::LearnTypeMounted(CNode& node)
{
    const int earlier = mSystem.MountedNodeNumber();
    MountNode(node.number());
    const auto reply = Ask(kNodeType, node.number(), kNodeType);
    if (earlier != 0)
        MountNode(earlier);
    else if (mSystem.MountedNodeNumber() != 0)
        UnmountNode(node.number());
    return reply ? std::optional(TypeOf(reply->data)) : std::nullopt;
}

}  // namespace fenrik
