#pragma once

#include "FakeClock.h"
#include "shared/EventPump.h"

#include <deque>
#include <functional>

namespace fenrik {

/// A pump that plays a script: each turn runs the next step, if it is due. With no step left, or none due yet, the
/// clock jumps to the next step or to the end of the wait, so that a time-out of 15 seconds costs no time.
class ScriptedPump : public EventPump {
public:
    explicit ScriptedPump(FakeClock& clock) : EventPump(clock), mClock(clock) {}

    /// `step` happens once the clock has moved `seconds` on from the step before (or from now, for the first).
    void After(double seconds, std::function<void()> step) { mSteps.push_back({seconds, std::move(step)}); }

    [[nodiscard]] bool ScriptDone() const { return mSteps.empty(); }
    [[nodiscard]] int Turns() const { return mTurns; }

protected:
    void Pump(double seconds) override
    {
        ++mTurns;
        if (mSteps.empty() || mSteps.front().first > seconds) {
            if (!mSteps.empty())
                mSteps.front().first -= seconds;
            // A wait lasts until its time has passed, not until it has come.
            mClock.Advance(seconds + 0.001);
            return;
        }
        auto [delay, step] = std::move(mSteps.front());
        mSteps.pop_front();
        mClock.Advance(delay);
        step();
    }

    void Sleep(int milliseconds) override { mClock.Advance(milliseconds / 1000.0); }

private:
    FakeClock& mClock;
    std::deque<std::pair<double, std::function<void()>>> mSteps;
    int mTurns = 0;
};

}  // namespace fenrik
