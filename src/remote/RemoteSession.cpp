#include "remote/RemoteSession.h"

#include "link/CMsgHandler.h"
#include "remote/RemoteHost.h"
#include "remote/RemoteView.h"

namespace fenrik {

bool RemoteSession::Reached(std::int32_t state) const
{
    return mHandler.TargetPort() == Transport::kRemote && RemoteState >= state;
}

bool RemoteSession::IsRemoteConnected() const
{
    return Reached(RemoteStates::kConnected);
}

bool RemoteSession::IsRemotePiped() const
{
    return Reached(RemoteStates::kWaiting);
}

bool RemoteSession::IsRemoteGranted() const
{
    return Reached(RemoteStates::kGranted);
}

QString RemoteSession::PipeCaption() const
{
    if (!IsRemotePiped())
        return {};
    return mPipedTo.UserName.isEmpty() ? QStringLiteral(" [Piped]")
                                       : QStringLiteral(" [Piped to %1]").arg(mPipedTo.UserName);
}

void RemoteSession::SetChatClients(RemoteChat& chat) const
{
    const CUser* local = remoteUsers.Find(mClientID);
    chat.SetClients(local ? std::optional(*local) : std::nullopt,
                    mPipedTo.IsNobody() ? std::nullopt : std::optional(mPipedTo));
}

void RemoteSession::EnsureChat(RemoteChat& chat) const
{
    if (chat.Exists())
        return;
    chat.Create();
    SetChatClients(chat);
}

}  // namespace fenrik
