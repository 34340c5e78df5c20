#pragma once

namespace fenrik {

class CMsgHandler;
class SerialControl;

/// How far the remote connection has come, 1 to 6.
class RemoteProgress {
public:
    virtual ~RemoteProgress() = default;
    [[nodiscard]] virtual int RemoteState() const = 0;
};

/// Whether the present transport is open at all, for listening, and for sending. A serial port is all three at once;
/// the relay grants them one after the other.
class PortState {
public:
    PortState(const SerialControl& port, const CMsgHandler& handler, const RemoteProgress& remote);

    [[nodiscard]] bool PortOpen() const { return Reached(kConnected); }
    [[nodiscard]] bool PortOpenForRx() const { return Reached(kPiped); }
    [[nodiscard]] bool PortOpenForTx() const { return Reached(kGranted); }

    /// Logged on to the relay, so that its windows make sense.
    [[nodiscard]] bool RemoteConnected() const { return Remote(kConnected); }
    [[nodiscard]] bool RemotePiped() const { return Remote(kPiped); }

private:
    static constexpr int kConnected = 2;
    static constexpr int kPiped = 4;
    static constexpr int kGranted = 6;

    [[nodiscard]] bool Reached(int remoteState) const;
    [[nodiscard]] bool Remote(int state) const;

    const SerialControl& mPort;
    const CMsgHandler& mHandler;
    const RemoteProgress& mRemote;
};

}  // namespace fenrik
