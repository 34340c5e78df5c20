#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

namespace fenrik {

class ErrorReporter;
class MiscFace;

/// What the monitor needs from the window.
class CollisionHost {
public:
    virtual ~CollisionHost() = default;

    /// True while `UIState` holds the ready bit.
    [[nodiscard]] virtual bool UIReady() const = 0;

    /// 8 busy, 4 ready.
    virtual void SetUIState(int state) = 0;

    virtual void setTxtMsg(const QString& text) = 0;

    /// Number of the mounted node, 0 = none.
    [[nodiscard]] virtual int MountedNodeNumber() const = 0;

    /// Presses or releases the toolbar's button "Collision"; does not call back.
    virtual void setCollisionPressed(bool pressed) = 0;
};

/// Asks the mounted node once a second how many collisions it has counted, while it is on. Off at start.
class CollisionMonitor : public QObject {
    Q_OBJECT

public:
    /// All outlive it. The timer "TPollCollision" is a child.
    CollisionMonitor(CollisionHost& host, MiscFace& panel, ErrorReporter& errors, QObject* parent = nullptr);

    /// Turns the monitor on, with a first question at once, or off. Throws what the question throws.
    void SetCollisionMonitor(bool on);

    /// The connection ends: no more questions, and nothing else changes.
    void Stop() { mPoll.stop(); }

    [[nodiscard]] bool On() const { return mPoll.isActive(); }

private:
    void Poll();
    [[nodiscard]] QString Text(bool on) const;

    CollisionHost& mHost;
    MiscFace& mPanel;
    ErrorReporter& mErrors;
    QTimer mPoll;  // TPollCollision
};

}  // namespace fenrik
