#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

class EventPump;
class SerialControl;
struct RunState;

/// A dial-up modem on a serial port, by AT commands, and the module at the vehicle's end of the call.
///
///   to the modem                        its answer, each in a line
///   AT, ATI3, ATDT<digits>, ATZ + CR    OK; a text; CONNECT, NO CARRIER, BUSY, NO ANSWER, NO DIALTONE, ERROR
///   a second's silence, +++, another    back from the call to commands
///
///   to the module, no line end          its answer
///   \v                                  a line: its version
///   \p                                  the line ACK; from then on the network's bytes pass through, "\" doubled
///   \P                                  none; no bytes pass any more
///   \h                                  none; it hangs up
///
/// Waits pump events; the port can be closed, and the program told to end, inside each of them.
class MModem {
public:
    /// All references outlive the object. `run` keeps ModemActive.
    MModem(SerialControl& port, EventPump& pump, RunState& run);

    /// True if a modem answers on COM`port`; `text` is then what it says of itself, and the port is closed. Otherwise
    /// `text` tells why not, and the port may be open: the caller closes it. A port that is open is closed first.
    [[nodiscard]] bool DetectModem(int port, QString& text);

    /// Sends `command` once and gives the first line that is not its echo. Empty lines don't count, but each costs one
    /// of three tries of `timeoutMs`. Throws Error kPortNotOpen.
    QString SendCommandGetReply(const QByteArray& command, int timeoutMs);

    /// One line without its end, as far as it came in that time. At most kLongestLine characters of it are kept.
    [[nodiscard]] QString ReadModemLine(int timeoutMs);

    /// Has a modem that dials or is on line hang up, and clears ModemActive. Takes two seconds; nothing happens while
    /// the port is closed. One that was interrupted has to be done again.
    void HangUpModem();

    /// Ends a pass-through link: has the module and the modem hang up, two seconds in all, and closes the port.
    /// Nothing happens while it runs already, and while the port is closed.
    void CloseModemLink();
    [[nodiscard]] bool ClosingModemLink() const { return mClosing; }

    /// Waits that many seconds, less after Interrupt or without a port.
    void Delay(int seconds);

    /// Opens COM`port` at `baud`. Throws the Errors of SerialControl::setPortOpen.
    void Open(int port, int baud);
    void Close();

    /// Sends bytes. Throws Error kPortNotOpen.
    void Write(const QByteArray& bytes);

    /// Drops what has arrived and what still comes until the modem has fallen silent, at most for 1.5 s.
    void DropInput();

    /// From now on every wait ends at once, until Resume.
    void Interrupt() { mInterrupted = true; }
    void Resume() { mInterrupted = false; }

    static constexpr int kLongestLine = 65536;

private:
    [[nodiscard]] bool AsksWell(QString& text);
    [[nodiscard]] bool WaitIsOver() const;
    [[nodiscard]] bool TakeLine(QByteArray& line);
    void WriteIfOpen(const QByteArray& bytes);
    bool EscapeToCommands();

    SerialControl& mPort;
    EventPump& mPump;
    RunState& mRun;
    bool mInterrupted = false;
    bool mClosing = false;
};

}  // namespace fenrik
