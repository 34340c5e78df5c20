#pragma once

#include "modem/MModem.h"
#include "modem/PhoneNumbers.h"
#include "modem/frmDialer.h"

#include <QString>

namespace fenrik {

class Transceiver;
class UiState;
class frmDiag;
struct Services;

/// What a modem connection asks of the main window.
class ModemLinkHost {
public:
    virtual ~ModemLinkHost() = default;
    virtual void RefreshConnection(bool readPanels, bool detect) = 0;
    virtual void RefreshTrafficTimers() = 0;    ///< by PortOpenForRx and PortOpenForTx
    virtual void SetPumping(bool pumping) = 0;  ///< TMsg alone
};

/// The modem connection in the main window: the dialler, and the ends of a call.
///
/// Whatever talks with the modem reads the port itself, so the window's handler is kept off its bytes meanwhile; that
/// is also why a "NO CARRIER" that a hang-up provokes is not taken for a lost carrier.
class ModemLink : private DialerHost {
public:
    /// All references outlive the object.
    ModemLink(const Services& services, Transceiver& transceiver, UiState& ui, frmDiag& window, ModemLinkHost& host);

    /// Dials, and connects to the network if a module passes it through then. Tells its own failures.
    void ModemConnect();

    /// Ends the call.
    void DisconnectModem();

    /// The carrier was lost: hangs up and closes the port. Nobody can start anything meanwhile.
    void CloseModemLink();

    /// The program ends: a modem that dials or is on line hangs up.
    void HangUpForGood();

private:
    class IgnoredEvents;

    void OpenNetworkOptions() override;
    [[nodiscard]] bool Dial();
    void TakeOver();

    const Services& mServices;
    Transceiver& mTransceiver;
    UiState& mUi;
    frmDiag& mWindow;
    ModemLinkHost& mHost;
    MModem mModem;
    PhoneNumbers mNumbers;
};

}  // namespace fenrik
