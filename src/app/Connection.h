#pragma once

#include <QString>

namespace fenrik {

class CSystem;
class PortState;
class Transceiver;
struct Services;

/// What the connection's life asks of the window.
class ConnectionHost {
public:
    virtual ~ConnectionHost() = default;
    virtual void SetUIState(int state) = 0;
    virtual void setDisplayState(int state) = 0;
    virtual void SetTrafficTimers(bool receive, bool sendSync) = 0;  ///< TMsg and TSendSync
    virtual void ReadPanels() = 0;
    virtual void ResetPanels() = 0;
    virtual void DetectNodes() = 0;
    virtual bool UnmountNode(int node) = 0;
    virtual void SetToolbarEnabled(bool enabled) = 0;
    virtual void ShowMessage(const QString& text) = 0;
    virtual void ModemConnect() = 0;     ///< dials; tells its own failures
    virtual void DisconnectModem() = 0;  ///< hangs up
    virtual void RDconnect() = 0;        ///< through the relay; tells its own failures
    virtual void RDdisconnect() = 0;     ///< does no harm without a connection
};

/// Connecting and disconnecting over the chosen method, and what follows a change of the connection.
class Connection {
public:
    Connection(const Services& services, const PortState& ports, CSystem& system, Transceiver& transceiver,
               ConnectionHost& host);

    /// The toolbar's "Connect" and "Disconnect". Errors of the port are told in boxes; others are thrown.
    void Connect();
    void Disconnect();

    void CommonPreConnect();
    void CommonPreDisconnect();
    void CommonPostDisconnect();

    /// Brings the timers of the traffic in line with the port.
    void RefreshTrafficTimers();

    /// Brings timers, buttons and panels in line with the port. `detect`: look for nodes too, if the option is on.
    void RefreshConnection(bool readPanels, bool detect);

    /// The port's device has gone away.
    void PortWasLost(const QString& reason);

    /// The modem at the other end is gone, and the port was closed for it.
    void CarrierWasLost();

    /// The connection method of the settings, 1 to 3, by which Connect goes; anything else there counts as 1.
    [[nodiscard]] int ConnectionType() const;

private:
    /// The method of the present connection; without one that of the settings.
    [[nodiscard]] int MethodInUse() const;
    void ConnectByTransceiver();
    void LoadSystemIfNone();
    void ForgetNetwork();

    const Services& mServices;
    const PortState& mPorts;
    CSystem& mSystem;
    Transceiver& mTransceiver;
    ConnectionHost& mHost;
};

}  // namespace fenrik
