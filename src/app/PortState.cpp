#include "app/PortState.h"

#include "link/CMsgHandler.h"
#include "platform/SerialControl.h"

namespace fenrik {

PortState::PortState(const SerialControl& port, const CMsgHandler& handler, const RemoteProgress& remote)
    : mPort(port), mHandler(handler), mRemote(remote)
{
}

bool PortState::Remote(int state) const
{
    return mHandler.TargetPort() == Transport::kRemote && mRemote.RemoteState() >= state;
}

bool PortState::Reached(int remoteState) const
{
    switch (mHandler.TargetPort()) {
    case Transport::kTransceiver:
    case Transport::kModem:
        return mPort.PortOpen();
    case Transport::kRemote:
        return Remote(remoteState);
    default:
        return false;
    }
}

}  // namespace fenrik
