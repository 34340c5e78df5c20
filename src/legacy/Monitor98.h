#pragma once

#include "legacy/MessageTable98.h"
#include "legacy/TokenTracker.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace fenrik {

class ErrorReporter;
class EventTrigger;
class MAF98;
class Marks98;
class SerialControl;
class Traffic98;
struct Settings;

/// Which panel is on the wide face.
enum class Panel98 : std::int16_t { Analog = 0, SystemInformation = 3 };

/// Listens to the older network. Its traffic is a stream of single bytes at 9600 baud:
///
///   101 - 106              the token, which goes round the nodes; less 100 it is the node's number
///   0 - 100, 107 - 255     a message number, sent by the node that holds the token
///   the byte after the     its value, whatever it is, unless it is a token
///   number of an analog
///   message
///
/// There are no frames, no length and no checksum: a value that looks like a token is taken for one, and the next byte
/// that does not for the value.
class Monitor98 {
public:
    /// What it works with; all outlive it.
    struct Parts {
        SerialControl& port;
        const MessageTable98& messages;
        const Settings& settings;
        MAF98& panels;
        Marks98& marks;
        Traffic98& traffic;
        EventTrigger& trigger;
        ErrorReporter& errors;
    };

    explicit Monitor98(const Parts& parts) : mParts(parts) {}

    /// A connection begins, with nothing heard yet.
    void Start();

    /// It ends: what is still to be told of the bytes that were read is dropped.
    void Stop() { mListening = false; }

    [[nodiscard]] Panel98 Panel() const { return mPanel; }
    void setPanel(Panel98 panel) { mPanel = panel; }

    /// The port's event, one of SerialControl's codes; others do nothing.
    void ProcessCommEvent98(int event);

    /// Received bytes, in order. Allocates nothing for tokens and for messages that are ignored. Bytes that come while
    /// others are being told, inside the box of an error, are told after them.
    void ProcessCommData(const QByteArray& text);

    /// A byte that is no token, heard while `token` was the last one.
    void DisplayMessage98(int token, std::uint8_t message);

private:
    struct Pending {
        int node;
        std::uint8_t message;
    };

    void TakeBytes(const QByteArray& text);
    void TakeToken(std::uint8_t token);
    void TellMissed(std::uint8_t token, int expected);
    void TellCollision();
    int TakeValue(std::uint8_t value);
    int TakeMessage(int node, std::uint8_t message);

    const Parts mParts;
    TokenTracker mToken;
    std::optional<Pending> mPending;  // an analog message whose value is awaited
    Panel98 mPanel = Panel98::Analog;
    bool mListening = false;
    bool mBusy = false;   // bytes are being told
    QByteArray mWaiting;  // those that came meanwhile
};

}  // namespace fenrik
