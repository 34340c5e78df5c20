#include "model/NodeVersions.h"

#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"

namespace fenrik {

namespace {

constexpr int kVersionRequest = 937;
constexpr int kVersionReply = 950;

QString ShortVersion(int data)
{
    return data >= 256 ? QStringLiteral("%1.%2").arg(data >> 8).arg(data & 0xFF) : QString::number(data);
}

}  // namespace

std::optional<CMessage> NodeVersions::Ask(int state, int extended, int data)
{
    if (!mSystem.MountedNode() || !mSystem.Link())
        return std::nullopt;
    CMessage message;
    message.Command = kVersionRequest;
    message.State = std::uint8_t(state);
    message.extended = std::uint8_t(extended);
    message.data = data;
    return mSystem.Link()->handler.SendMessageGetReply(message, kVersionReply);
}

void NodeVersions::ReadOperatingSoftware()
{
    const auto reply = Ask(0, 0, 0);
    // The mount may have ended during the wait.
    CNode* node = mSystem.MountedNode();
    if (!node)
        return;
    node->setOsMajVersion(reply ? std::uint8_t(reply->data >> 8) : std::uint8_t(0));
    node->setOsMinVersion(reply ? std::uint8_t(reply->data) : std::uint8_t(0));
}

QString NodeVersions::GetEmbeddedVersion(bool force)
{
    const CNode* node = mSystem.MountedNode();
    if (node && (force || (node->osMajVersion() == 0 && node->osMinVersion() == 0)))
        ReadOperatingSoftware();
    node = mSystem.MountedNode();
    if (!node || (node->osMajVersion() == 0 && node->osMinVersion() == 0))
        return QStringLiteral("??.??");
    return QStringLiteral("%1.%2").arg(node->osMajVersion()).arg(node->osMinVersion());
}

QString NodeVersions::GetPeriphICversion(int chip)
{
    const auto reply = Ask(1, 0, chip);
    return reply && reply->State == 1 ? ShortVersion(reply->data) : QStringLiteral("?");
}

QString NodeVersions::GetBetaVersion()
{
    const auto reply = Ask(0, 1, 0);
    return reply && reply->extended == 1 && reply->data != 0 ? ShortVersion(reply->data) : QString();
}

}  // namespace fenrik
