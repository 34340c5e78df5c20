#pragma once

namespace fenrik {

class ErrorReporter;
class EventPump;
class Monitor98;
class SerialControl;

/// Wakes the transceiver of the older network: the byte 158 out, 138 back, three times at most. The rest of the
/// traffic is only listened to, so a transceiver that does not answer is no error.
class Transceiver98 {
public:
    /// All outlive it.
    Transceiver98(SerialControl& port, EventPump& pump, Monitor98& monitor, ErrorReporter& errors)
        : mPort(port), mPump(pump), mMonitor(monitor), mErrors(errors)
    {
    }

    /// On the open port; takes up to 2.1 seconds.
    void SetTRMode();

    /// The port's OnComm event. What comes before the answer is dropped.
    void ProcessPortEvent();

private:
    void TakeAcknowledge();

    SerialControl& mPort;
    EventPump& mPump;
    Monitor98& mMonitor;
    ErrorReporter& mErrors;
    bool mWaiting = false;  // for the acknowledge
};

}  // namespace fenrik
