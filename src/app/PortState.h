#pragma once

#include "remote/RemoteHost.h"

namespace fenrik {

class CMsgHandler;
class SerialControl;

/// How far the remote connection has come.
class RemoteProgress {
public:
    virtual ~RemoteProgress() = default;
    [[nodiscard]] virtual int RemoteState() const = 0;  ///< one of RemoteStates
};

/// Whether the present transport is open at all, for listening, and for sending. A serial port is all three at once;
/// the relay grants them one after the other.
class PortState {
public:
    PortState(const SerialControl& port, const CMsgHandler& handler, const RemoteProgress& remote);

    [[nodiscard]] bool PortOpen() const { return Reached(RemoteStates::kConnected); }
    [[nodiscard]] bool PortOpenForRx() const { return Reached(RemoteStates::kWaiting); }
    [[nodiscard]] bool PortOpenForTx() const { return Reached(RemoteStates::kGranted); }

    /// Logged on to the relay, so that its windows make sense.
    [[nodiscard]] bool RemoteConnected() const { return Remote(RemoteStates::kConnected); }
    [[nodiscard]] bool RemotePiped() const { return Remote(RemoteStates::kWaiting); }

private:
    [[nodiscard]] bool Reached(int remoteState) const;
    [[nodiscard]] bool Remote(int state) const;

    const SerialControl& mPort;
    const CMsgHandler& mHandler;
    const RemoteProgress& mRemote;
};

}  // namespace fenrik
