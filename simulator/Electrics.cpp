#include "simulator/Electrics.h"

#include <cmath>

namespace fenrik {

namespace {

constexpr double kSettleSeconds = 0.4;
constexpr double kMarginVolts = 0.4;
constexpr double kShedBelow[] = {11.8, 11.2, 10.4};  // levels 1, 2, 3

}  // namespace

void Electrics::Advance(double seconds)
{
    mVolts += (Target() - mVolts) * (1.0 - std::exp(-seconds / kSettleSeconds));
    while (mShedLevel < kMaxShedLevel && mVolts < kShedBelow[mShedLevel])
        ++mShedLevel;
    while (mShedLevel > 0 && mVolts > kShedBelow[mShedLevel - 1] + kMarginVolts)
        --mShedLevel;
}

double Electrics::Target() const
{
    if (mForced)
        return *mForced;
    if (mCranking)
        return kCrankingVolts;
    return mRunning ? kChargingVolts : kRestVolts;
}

}  // namespace fenrik
