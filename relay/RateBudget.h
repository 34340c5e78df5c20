#pragma once

#include <algorithm>

namespace fenrik {

/// A share of something that refills by the second. May be overdrawn by one spending, and is then empty until the debt
/// is paid off.
class RateBudget {
public:
    RateBudget(double perSecond, double most) : mPerSecond(perSecond), mMost(most), mLeft(most) {}

    [[nodiscard]] bool Has(double now)
    {
        if (mLast >= 0)
            mLeft = std::min(mMost, mLeft + (now - mLast) * mPerSecond);
        mLast = now;
        return mLeft > 0;
    }
    void Spend(double amount) { mLeft -= amount; }

private:
    double mPerSecond;
    double mMost;
    double mLeft;
    double mLast = -1;  // seconds; below 0: not looked at yet
};

}  // namespace fenrik
