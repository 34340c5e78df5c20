#pragma once

#include "shared/Clock.h"

namespace fenrik {

/// A clock that stands still until a test moves it. Starts on 2026-03-14 at 09:05:07.250.
class FakeClock : public Clock {
public:
    [[nodiscard]] Moment Now() const override { return mNow; }

    void Advance(double seconds) { mNow = mNow.Plus(seconds); }

    /// Same day, `seconds` after midnight.
    void SetTimer(double seconds)
    {
        mNow.milliseconds = mNow.milliseconds / Moment::kPerDay * Moment::kPerDay + std::int64_t(seconds * 1000.0);
    }

private:
    Moment mNow{20526LL * Moment::kPerDay + ((9 * 60 + 5) * 60 + 7) * 1000LL + 250};
};

}  // namespace fenrik
