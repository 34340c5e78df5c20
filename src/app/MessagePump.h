#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace fenrik {

class CMsgHandler;
struct CMessage;

/// What the pump needs around it.
class PumpHost {
public:
    virtual ~PumpHost() = default;
    virtual void CarrierWasLost() = 0;
    /// The list shows (or hides itself while it would only flicker).
    virtual void ShowMessageList(bool visible) = 0;
    /// With a node mounted, the states views see each message first; true if one kept it for itself.
    virtual bool TakenByStates(const CMessage& message) = 0;
    virtual void NodeAnnounced(int node) = 0;
    virtual void DisplayMessage(CMessage& message) = 0;
};

/// `TMsg`: carries one received message to the screen for each tick, and there is a millisecond from one tick to the
/// next. With nothing to carry the timer sleeps; Wake starts it again, so a message waits for one tick at the most.
class MessagePump : public QObject {
    Q_OBJECT

public:
    MessagePump(CMsgHandler& handler, PumpHost& host, QObject* parent = nullptr);

    [[nodiscard]] bool Enabled() const { return mEnabled; }
    void setEnabled(bool enabled);
    void Wake();

    /// One tick.
    void Tick();

private:
    void Carry(CMessage& message);

    CMsgHandler& mHandler;
    PumpHost& mHost;
    QTimer mTimer;
    QElapsedTimer mSinceTick;
    bool mEnabled = false;
};

}  // namespace fenrik
