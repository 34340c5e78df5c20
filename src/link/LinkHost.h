#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

struct CMessage;

/// What the link engine needs from whoever owns the connection and the screen. Called on the user-interface thread,
/// also inside waits.
class LinkHost {
public:
    virtual ~LinkHost() = default;

    /// True while something may be sent over the present transport.
    [[nodiscard]] virtual bool PortOpenForTx() const = 0;

    /// True from the opening of the port for dialling until the modem was hung up.
    [[nodiscard]] virtual bool ModemActive() const = 0;

    /// Shows a message that was sent with its echo on, or a reply to one. May change `message.Command`.
    virtual void DisplayMessage(CMessage& message) = 0;

    /// Sends one frame of the relay's pipe protocol.
    virtual void sendFrame(int type, const QByteArray& payload) = 0;

    /// Hangs the modem up after its carrier was lost.
    virtual void CloseModemLink() = 0;

    /// Show the two collision counters and the collision mark. Noise calls them for each 16 bytes.
    virtual void ShowPC(int count) = 0;
    virtual void ShowBC(int count) = 0;
    virtual void ShowCollisionMark(bool active, const char* kind) = 0;

    /// A message has joined the queue of received messages, or the carrier was lost: there is something to pump.
    virtual void TrafficWaiting() = 0;
};

}  // namespace fenrik
