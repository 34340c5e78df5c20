#include "app/Connection.h"

#include "app/PortState.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "app/ViewSwitch.h"
#include "link/CMsgHandler.h"
#include "link/PortErrors.h"
#include "link/Transceiver.h"
#include "logging/MsgLogging.h"
#include "model/CSystem.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"
#include "widgets/WaitCursor.h"

namespace fenrik {

namespace {

enum Method { kTransceiver = 1, kModem = 2, kRelay = 3 };

}  // namespace

Connection::Connection(const Services& services, const PortState& ports, CSystem& system, Transceiver& transceiver,
                       ConnectionHost& host)
    : mServices(services), mPorts(ports), mSystem(system), mTransceiver(transceiver), mHost(host)
{
}

int Connection::ConnectionType() const
{
    const int type = mServices.settings.ConnectionType;
    return type >= kTransceiver && type <= kRelay ? type : kTransceiver;
}

void Connection::Connect()
{
    CommonPreConnect();
    switch (ConnectionType()) {
    case kTransceiver:
        ConnectByTransceiver();
        break;
    case kModem:
        mHost.ModemConnect();
        break;
    default:
        mHost.RDconnect();
        break;
    }
}

void Connection::ConnectByTransceiver()
{
    const WaitCursor hourglass;
    for (bool again = true; again;) {
        again = false;
        try {
            mTransceiver.ConnectTransceiver();
        } catch (const Error& error) {
            again = AskAfterPortError(mServices.boxes, mServices.settings.CommPort, error);
        }
    }
}

void Connection::LoadSystemIfNone()
{
    if (mServices.settings.SystemName.isEmpty() || mServices.settings.SystemPath.isEmpty())
        mSystem.LoadSystem(mServices.settings.SystemName, mServices.settings.SystemPath, false);
}

void Connection::CommonPreConnect()
{
    if (mServices.settings.LoggingOn) {
        mServices.log.BeginConnection();
        mServices.log.TellOnce(mServices.errors, "frmDiag.CommonPreConnect",
                               [this] { mServices.log.CreateLogHeader00(QStringLiteral("Connected - ")); });
    }
    Guarded(mServices.errors, "frmDiag.CommonPreConnect", [this] {
        LoadSystemIfNone();
        // The nodes of a saved system count as active as long as there is no network to say better.
        for (int number = mSystem.NodesInSystem(); number >= 1; --number)
            mSystem.DeActivateNode(number);
        mHost.SetToolbarEnabled(false);
        mHost.ResetPanels();
        mHost.setDisplayState(ViewSwitch::kAnalog);
    });
}

void Connection::RefreshTrafficTimers()
{
    mHost.SetTrafficTimers(mPorts.PortOpenForRx(), mPorts.PortOpenForTx() && mServices.settings.SendSync);
}

void Connection::RefreshConnection(bool readPanels, bool detect)
{
    RefreshTrafficTimers();
    mHost.SetUIState(mPorts.PortOpen() ? UiState::kConnected : UiState::kDisconnected);
    if (readPanels && mPorts.PortOpenForRx())
        mHost.ReadPanels();
    if (!detect || !mPorts.PortOpenForTx() || !mServices.settings.AutoDetect)
        return;
    mHost.DetectNodes();
    if (mSystem.ActiveNodeCount() == 0 && mPorts.PortOpenForTx() && !mServices.pump.Stopped())
        mServices.boxes.MsgBox(QStringLiteral("A transceiver was detected, but no network traffic was heard.\n"
                                              "Please check all connections to the transceiver and the network, and\n"
                                              "make sure power has been recycled since the last download."),
                               QMessageBox::Information);
}

int Connection::MethodInUse() const
{
    // Another one may have been chosen for the next time.
    return mPorts.PortOpen() ? int(mServices.handler.TargetPort()) : ConnectionType();
}

void Connection::Disconnect()
{
    const int method = MethodInUse();
    CommonPreDisconnect();
    switch (method) {
    case kTransceiver:
        if (mServices.port.PortOpen())
            mServices.port.setPortOpen(false);
        break;
    case kModem:
        mHost.DisconnectModem();
        break;
    default:
        mHost.RDdisconnect();
        break;
    }
    CommonPostDisconnect();
}

void Connection::CommonPreDisconnect()
{
    Guarded(mServices.errors, "frmDiag.CommonPreDisconnect", [this] {
        if (mSystem.MountedNodeNumber() != 0)
            mHost.UnmountNode(mSystem.MountedNodeNumber());
        // The relay's routine still needs to know that it is the transport; it clears it itself.
        if (MethodInUse() != kRelay)
            mServices.handler.setTargetPort(Transport::kNone);
    });
}

void Connection::CommonPostDisconnect()
{
    Guarded(mServices.errors, "frmDiag.CommonPostDisconnect", [this] {
        mHost.setDisplayState(ViewSwitch::kAnalog);
        RefreshConnection(true, true);
        mHost.ShowMessage(QString());
    });
}

void Connection::ForgetNetwork()
{
    // A node can't be unmounted over a line that is gone; only the record of it is dropped.
    mSystem.UnmountNode();
    mServices.handler.setTargetPort(Transport::kNone);
    mHost.setDisplayState(ViewSwitch::kAnalog);
    RefreshConnection(false, false);
}

void Connection::PortWasLost(const QString& reason)
{
    ForgetNetwork();
    mHost.ShowMessage(QStringLiteral("Comm Port %1 has gone away: %2").arg(mServices.port.CommPort()).arg(reason));
}

void Connection::CarrierWasLost()
{
    ForgetNetwork();
    mHost.ShowMessage(QString());
    mServices.boxes.MsgBox(QStringLiteral("Carrier lost, disconnected"), QMessageBox::Warning, QMessageBox::Ok,
                           QStringLiteral("Disconnected"));
}

}  // namespace fenrik
