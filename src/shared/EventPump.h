#pragma once

#include "shared/Clock.h"

#include <functional>

namespace fenrik {

/// The one way to wait. A wait delivers port, socket, timer and user events until its condition holds or its time
/// has passed, and sleeps while there are none. Waits nest: a handler that runs inside a wait may wait itself.
///
/// After Stop every wait, running or new, ends at once; so a closing window gets its waiters out of the way.
/// A waiter that returns checks anew whether its port or window is still there.
class EventPump {
public:
    explicit EventPump(const Clock& clock) : mClock(clock) {}
    virtual ~EventPump() = default;

    using Condition = std::function<bool()>;

    /// Until `done` or until the clock's Timer differs from its value at the start by more than `seconds`. The
    /// difference of two timer readings jumps at midnight, so a wait that spans midnight ends there.
    /// True if `done` holds at the end.
    bool WaitFor(const Condition& done, double seconds);

    /// Until `done` or until the clock is past `deadline`, a date that midnight does not disturb.
    bool WaitUntil(const Condition& done, Moment deadline);

    /// Whole seconds, for a pause that waits for nothing in particular.
    void Wait(int seconds);

    /// Delivers what is waiting now and returns.
    void Once() { Pump(0.0); }

    /// Stops the whole program for that time: nothing is delivered and nothing painted. Not at all after Stop.
    void Block(int milliseconds);

    void Stop();
    [[nodiscard]] bool Stopped() const { return mStopped; }

    /// True while any wait runs.
    [[nodiscard]] bool Waiting() const { return mDepth > 0; }

protected:
    /// Delivers events; with none there, sleeps until one comes, until `seconds` have passed or until Wake.
    virtual void Pump(double seconds) = 0;
    virtual void Wake() {}
    virtual void Sleep(int milliseconds);

private:
    bool Run(const Condition& done, const std::function<double()>& remaining);

    const Clock& mClock;
    bool mStopped = false;
    int mDepth = 0;
};

/// The pump over Qt's event loop.
class QtEventPump : public EventPump {
public:
    using EventPump::EventPump;

protected:
    void Pump(double seconds) override;
    void Wake() override;
};

}  // namespace fenrik
