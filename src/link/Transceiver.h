#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

class Boxes;
class CMsgHandler;
class ComPorts;
class EventPump;
class SerialControl;
class VersionInfo;
struct RunState;
struct Settings;

/// What the bring-up tells the window.
class TransceiverHost {
public:
    virtual ~TransceiverHost() = default;
    virtual void ShowStatus(const QString& text) = 0;   ///< txtStatus
    virtual void ShowMessage(const QString& text) = 0;  ///< txtMsg
    virtual void RefreshConnection(bool readPanels, bool detect) = 0;
};

/// Opens the transceiver's port, wakes the transceiver and tests it before any frame flows.
///
/// Control bytes, which are no frames: the program sends 158 (0x9E), the transceiver answers 138 (0x8A). One that is
/// in the link's mode already does not answer but passes the traffic on, so any byte heard counts as proof too.
class Transceiver {
public:
    /// Where the port's events go.
    enum class Mode : std::uint8_t {
        Normal = 0,       ///< to the link engine
        Acknowledge = 1,  ///< waiting for byte 138; others are dropped
        Listening = 2,    ///< waiting for any byte
        Ignore = 3,       ///< nowhere
    };

    /// All references outlive the object.
    Transceiver(SerialControl& port, CMsgHandler& handler, EventPump& pump, Boxes& boxes, const VersionInfo& version,
                const Settings& settings, const RunState& run, TransceiverHost& host);

    [[nodiscard]] Mode TRMode() const { return mMode; }
    void setTRMode(Mode mode) { mMode = mode; }

    /// The port's OnComm event.
    void ProcessPortEvent();

    /// Opens the port, brings the transceiver up, resets the link engine and refreshes the connection.
    /// Throws the Errors of SerialControl::setPortOpen.
    void ConnectTransceiver();

    /// Tests the transceiver on the open port: up to 1.4 s for its acknowledge, then 6 s for any traffic. True if it
    /// is ready.
    bool SetTRMode();

private:
    void TakeAcknowledge();
    void AskDeveloper();
    void AskTransceiver();
    [[nodiscard]] bool Woken() const { return mMode == Mode::Normal; }

    SerialControl& mPort;
    CMsgHandler& mHandler;
    EventPump& mPump;
    Boxes& mBoxes;
    const VersionInfo& mVersion;
    const Settings& mSettings;
    const RunState& mRun;
    TransceiverHost& mHost;
    Mode mMode = Mode::Normal;
};

/// At the program's start: a transceiver found on USB becomes the port and the connection method.
void SelectUSBTransceiver(const ComPorts& ports, Settings& settings, RunState& run);

}  // namespace fenrik
