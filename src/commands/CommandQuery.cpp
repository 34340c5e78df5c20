#include "commands/CommandQuery.h"

#include "link/CMsgHandler.h"
#include "model/CSystem.h"

namespace fenrik {

namespace {

enum Number { kPing = 901, kPingReply = 902, kAcknowledge = 903, kMount = 905, kItemState = 920, kValue = 950 };
constexpr int kThePingedNode = 12345;
constexpr int kPingTries = 2;
constexpr int kTries = 3;

}  // namespace

CommandQuery::CommandQuery(CMsgHandler& handler, CSystem& system, CommandQueryHost& host)
    : mHandler(handler), mSystem(system), mHost(host)
{
}

void CommandQuery::Run(int node, int number, const QString& name)
{
    mHost.AddStep(QStringLiteral("Begin Processing..."));
    RunSteps(node, number, name);
    mHost.AddStep(QStringLiteral("End Processing..."));
}

void CommandQuery::RunSteps(int node, int number, const QString& name)
{
    mHost.AddStep(QStringLiteral("Checking Communications Port."));
    if (!mHost.PortOpenForTx()) {
        mHost.AddLine(QStringLiteral("ERROR: Communications Port not open for Transmit."));
        return;
    }
    const int earlier = mSystem.MountedNodeNumber();
    if (!MakeReady(node, earlier))
        return;
    AskForState(node, number, name);
    if (earlier == node)
        return;
    (void)Release(node);
    if (earlier != 0)
        (void)Mount(earlier);
}

bool CommandQuery::MakeReady(int node, int earlier)
{
    mHost.AddStep(QStringLiteral("Checking for previously mounted node."));
    if (earlier == node) {
        mHost.AddStep(QStringLiteral("Node %1 already mounted.").arg(node));
        return true;
    }
    if (earlier != 0)
        mHost.AddStep(QStringLiteral("Node %1 mounted.").arg(earlier));
    if (!Ping(node) || (earlier != 0 && !Release(earlier)))
        return false;
    if (Mount(node))
        return true;
    mHost.AddLine(QStringLiteral("ERROR: Unable to mount Node %1").arg(node));
    return false;
}

bool CommandQuery::Ping(int node)
{
    mHost.AddStep(QStringLiteral("Checking network for Node %1.").arg(node));
    const auto reply = Ask(kPing, false, node, kPingReply, kPingTries);
    if (!reply || (reply->data != node && reply->data != kThePingedNode)) {
        mHost.AddLine(QStringLiteral("ERROR: Node %1 did not respond to ping.").arg(node));
        return false;
    }
    mHost.AddStep(QStringLiteral("Node %1 replied to ping.").arg(node));
    return true;
}

bool CommandQuery::Release(int node)
{
    mHost.AddStep(QStringLiteral("Attempting to Unmount Node %1.").arg(node));
    if (!Ask(kMount, false, node, kAcknowledge, kTries)) {
        mHost.AddLine(QStringLiteral("ERROR: Unable to release mount on Node %1").arg(node));
        return false;
    }
    mSystem.UnmountNode();
    mHost.AddStep(QStringLiteral("Node %1 Unmounted.").arg(node));
    return true;
}

bool CommandQuery::Mount(int node)
{
    mHost.AddStep(QStringLiteral("Attempting to Mount Node %1.").arg(node));
    if (!Ask(kMount, true, node, kAcknowledge, kTries))
        return false;
    mSystem.setMountedNodeNumber(std::int16_t(node));
    mHost.AddStep(QStringLiteral("Node %1 Mounted ").arg(node));
    return true;
}

void CommandQuery::AskForState(int node, int number, const QString& name)
{
    mHost.AddStep(QStringLiteral("Requesting Command State Information from Node %1.").arg(node));
    const auto reply = Ask(kItemState, true, number, kValue, kTries);
    if (!reply) {
        mHost.AddLine(QStringLiteral("ERROR: No response from Node %1.").arg(node));
        mHost.ShowResult(QStringLiteral("UNKNOWN"));
    } else if (reply->data > 1) {
        mHost.AddLine(QStringLiteral("---->Node %1 responded with invalid state (%2).").arg(node).arg(reply->data));
        mHost.ShowResult(QStringLiteral("UNKNOWN"));
    } else {
        const QString state = reply->data == 1 ? QStringLiteral("ON") : QStringLiteral("OFF");
        // In one go: a name may hold what looks like a place for the next text.
        mHost.AddLine(QStringLiteral("---->Node %1 believes %2 is %3.").arg(QString::number(node), name, state));
        mHost.ShowResult(state);
    }
}

std::optional<CMessage> CommandQuery::Ask(int command, bool state, int data, int reply, int tries)
{
    CMessage message;
    message.Command = command;
    message.State = state ? 1 : 0;
    message.data = data;
    return mHandler.SendMessageGetReply(message, reply, tries, true, true);
}

}  // namespace fenrik
