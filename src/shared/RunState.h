#pragma once

#include <QString>

namespace fenrik {

/// What the whole program knows about this run and does not remember. Owned by MMain.
struct RunState {
    int USBTransceiverPort = 0;           ///< COM number of the USB transceiver found at start, 0 = none
    bool USBTransceiverSelected = false;  ///< the port in use is that transceiver, which needs no test
    bool LegacyProtocol = false;          ///< the older network's window runs; the setting is the next start's
    bool ModemActive = false;             ///< from opening the modem's port for dialling until it was hung up
    QString DiagLogPath;                  ///< folder of the message logs
};

}  // namespace fenrik
