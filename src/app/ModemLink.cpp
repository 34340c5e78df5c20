#include "app/ModemLink.h"

#include "app/MainToolbar.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "app/frmDiag.h"
#include "link/CMsgHandler.h"
#include "link/Transceiver.h"
#include "platform/SerialControl.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "widgets/StatusLine.h"
#include "widgets/WaitCursor.h"

#include <QAction>

namespace fenrik {

/// Keeps the window's handler off the port for as long as the object lives.
class ModemLink::IgnoredEvents {
public:
    explicit IgnoredEvents(Transceiver& transceiver) : mTransceiver(transceiver), mBefore(transceiver.TRMode())
    {
        mTransceiver.setTRMode(Transceiver::Mode::Ignore);
    }
    ~IgnoredEvents() { mTransceiver.setTRMode(mBefore); }
    IgnoredEvents(const IgnoredEvents&) = delete;
    IgnoredEvents& operator=(const IgnoredEvents&) = delete;

private:
    Transceiver& mTransceiver;
    Transceiver::Mode mBefore;
};

ModemLink::ModemLink(const Services& services, Transceiver& transceiver, UiState& ui, frmDiag& window,
                     ModemLinkHost& host)
    : mServices(services), mTransceiver(transceiver), mUi(ui), mWindow(window), mHost(host),
      mModem(services.port, services.pump, services.run), mNumbers(services.windowStore)
{
}

void ModemLink::ModemConnect()
{
    if (mModem.ClosingModemLink())
        return;  // the call before this one is not over yet
    if (mServices.port.PortOpen())
        mServices.port.setPortOpen(false);
    const bool connected = Dial();
    if (mServices.pump.Stopped())
        return;  // the window was closed meanwhile
    if (connected)
        TakeOver();
    else
        mHost.RefreshConnection(false, false);
}

bool ModemLink::Dial()
{
    const IgnoredEvents dialling(mTransceiver);
    frmDialer dialer(DialerParts{mServices.settings, mServices.run, mServices.pump, mServices.boxes, mServices.errors,
                                 mNumbers, *this},
                     &mWindow);
    bool connected = false;
    dialer.ShowDialer(&mWindow, mServices.port, connected);
    return connected;
}

void ModemLink::TakeOver()
{
    mServices.handler.Reset(Transport::kModem);
    mHost.RefreshTrafficTimers();
    // What came behind the module's last word is the network's already, and has had its events.
    mServices.handler.ProcessCommEvent(SerialControl::kEvReceive);
    if (mServices.port.PortOpen())
        mHost.RefreshConnection(true, true);
}

void ModemLink::OpenNetworkOptions()
{
    mWindow.Toolbar().Button(QStringLiteral("Port"))->trigger();
}

void ModemLink::DisconnectModem()
{
    if (!mServices.port.PortOpen())
        return;
    const WaitCursor hourglass;
    const IgnoredEvents hangingUp(mTransceiver);
    mModem.CloseModemLink();
}

void ModemLink::CloseModemLink()
{
    const IgnoredEvents hangingUp(mTransceiver);
    // Nothing may be sent into the modem's guard time, and the user hears of the loss when the port is closed.
    mServices.handler.setTargetPort(Transport::kNone);
    mHost.SetPumping(false);
    const bool wasReady = mUi.Ready();
    mUi.SetUIState(UiState::kBusy);
    mModem.CloseModemLink();
    if (mServices.pump.Stopped())
        return;
    if (wasReady)
        mUi.SetUIState(UiState::kReady);
    mHost.SetPumping(true);
}

void ModemLink::HangUpForGood()
{
    const bool lineIsUp =
        mServices.handler.TargetPort() == Transport::kModem || mTransceiver.TRMode() == Transceiver::Mode::Ignore;
    if (!mServices.run.ModemActive || !mServices.port.PortOpen() || !lineIsUp)
        return;
    const IgnoredEvents hangingUp(mTransceiver);
    mServices.handler.setTargetPort(Transport::kNone);
    mWindow.Status().setStatus(QStringLiteral("Closing modem..."));
    mModem.HangUpModem();
}

}  // namespace fenrik
