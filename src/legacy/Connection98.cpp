#include "legacy/Connection98.h"

#include "legacy/MAF98.h"
#include "link/PortErrors.h"
#include "logging/MsgLogging.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/Settings.h"

#include <QScopeGuard>

namespace fenrik {

namespace {

/// The older network is only listened to: nothing waits for its bytes, and the log's times are not finer than this.
constexpr int kGatherMs = 10;

}  // namespace

Connection98::Connection98(const LegacyServices& services, Protocol98& protocol, MAF98& panels, MessageList98& list,
                           ConnectionHost98& host)
    : mServices(services), mProtocol(protocol), mPanels(panels), mHost(host), mMarks(panels),
      mTraffic(list, services.log, services.settings, services.clock, services.errors),
      mTrigger(services.settings, services.log, services.errors, *this),
      mMonitor(
          {services.port, protocol.Messages(), services.settings, panels, mMarks, mTraffic, mTrigger, services.errors}),
      mTransceiver(services.port, services.pump, mMonitor, services.errors)
{
    mMarks.setParent(this);
    connect(&services.port, &SerialControl::OnComm, this, [this] { mTransceiver.ProcessPortEvent(); });
    connect(&services.port, &SerialControl::PortLost, this, &Connection98::PortWasLost);
}

void Connection98::Connect()
{
    if (!FindDatabase() || !mProtocol.LoadMessageTable())
        return;
    BeginLog();
    mHost.ShowConnected(true);
    const auto unlessOpen = qScopeGuard([this] {
        if (!mServices.port.PortOpen())
            ShowDisconnected();
    });
    ResetPanels();
    if (!OpenPort())
        return;
    mHost.ShowStatus(QStringLiteral("Initializing Transceiver..."));
    mTransceiver.SetTRMode();
    mHost.ShowStatus(QStringLiteral("Connected"));
}

bool Connection98::FindDatabase()
{
    if (mProtocol.ConfirmDB())
        return true;
    if (!mProtocol.IsChosen())
        mServices.boxes.MsgBox(QStringLiteral("A system database has not been selected.\n"
                                              "Use the database icon to select a system database."),
                               QMessageBox::Information);
    else
        mServices.boxes.MsgBox(QStringLiteral("%1\nhas been moved or deleted. The Diagnostic tool cannot connect "
                                              "to the Fenrik system. Please select a new system Database.")
                                   .arg(mServices.settings.DatabaseName),
                               QMessageBox::Warning);
    return false;
}

void Connection98::BeginLog()
{
    if (!mServices.settings.LoggingOn)
        return;
    mServices.log.BeginConnection();
    mServices.log.TellOnce(mServices.errors, "frmmain98:Toolbar:ButtonClick",
                           [this] { mServices.log.CreateLogFile(QStringLiteral("Connected - ")); });
}

void Connection98::ResetPanels()
{
    mPanels.ClearAnalog();
    mPanels.ResetAnalogNames();
    mPanels.ClearMisc();
    mMarks.Reset();
    mMonitor.Start();
}

bool Connection98::OpenPort()
{
    SerialControl& port = mServices.port;
    for (bool again = true; again;) {
        try {
            port.setCommPort(mServices.settings.CommPort);
            port.setSettings(QStringLiteral("9600,n,8,1"));
            port.setInputLen(0);
            port.setGatherTime(kGatherMs);
            port.setPortOpen(true);
            return true;
        } catch (const Error& error) {
            again = AskAfterPortError(mServices.boxes, mServices.settings.CommPort, error);
        }
    }
    return false;
}

void Connection98::Disconnect()
{
    ShowDisconnected();
    ClosePort();
}

void Connection98::ShowDisconnected()
{
    mMonitor.Stop();
    mHost.ShowConnected(false);
    mHost.ShowStatus(QStringLiteral("Disconnected"));
}

void Connection98::ClosePort()
{
    if (mServices.port.PortOpen())
        mServices.port.setPortOpen(false);
}

void Connection98::PortWasLost(const QString& reason)
{
    ShowDisconnected();
    mHost.ShowMessage(QStringLiteral("Comm Port %1 has gone away: %2").arg(mServices.settings.CommPort).arg(reason));
}

}  // namespace fenrik
