#pragma once

#include "legacy/LegacyServices.h"
#include "legacy/Marks98.h"
#include "legacy/Monitor98.h"
#include "legacy/Protocol98.h"
#include "legacy/Traffic98.h"
#include "legacy/Transceiver98.h"
#include "logging/EventTrigger.h"

#include <QObject>

namespace fenrik {

/// What the connection's life asks of the window.
class ConnectionHost98 {
public:
    virtual ~ConnectionHost98() = default;
    virtual void ShowConnected(bool connected) = 0;  ///< the buttons
    virtual void ShowStatus(const QString& text) = 0;
    virtual void ShowMessage(const QString& text) = 0;
};

/// Connecting to the older network and disconnecting from it. Owns what listens meanwhile.
class Connection98 : public QObject, private EventTriggerHost {
    Q_OBJECT

public:
    /// `protocol` and `panels`, `list` and `host` outlive it, as does what `services` refers to.
    Connection98(const LegacyServices& services, Protocol98& protocol, MAF98& panels, MessageList98& list,
                 ConnectionHost98& host);

    /// The toolbar's "Connect". Why it can't be is told in boxes; other errors of the port are thrown.
    void Connect();

    /// The toolbar's "Disconnect".
    void Disconnect();

    [[nodiscard]] Monitor98& Monitor() { return mMonitor; }

private:
    // EventTriggerHost
    void AddInfoRow(const QString& text) override { mTraffic.Info(text); }
    void ShowDisconnected() override;
    void ClosePort() override;

    [[nodiscard]] bool FindDatabase();
    void BeginLog();
    void ResetPanels();
    [[nodiscard]] bool OpenPort();
    void PortWasLost(const QString& reason);

    const LegacyServices& mServices;
    Protocol98& mProtocol;
    MAF98& mPanels;
    ConnectionHost98& mHost;
    Marks98 mMarks;
    Traffic98 mTraffic;
    EventTrigger mTrigger;
    Monitor98 mMonitor;
    Transceiver98 mTransceiver;
};

}  // namespace fenrik
