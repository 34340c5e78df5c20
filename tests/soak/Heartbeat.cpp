#include "soak/Heartbeat.h"

#include <fstream>

namespace fenrik {

namespace {

constexpr int kBeatMs = 10;

/// How long this thread was ready to run and did not.
double WaitedMs()
{
    std::ifstream statistics("/proc/self/schedstat");
    double ran = 0;
    double waited = 0;
    statistics >> ran >> waited;
    return waited / 1e6;
}

}  // namespace

Heartbeat::Heartbeat()
{
    mTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] { Beat(); });
    mTimer.start(kBeatMs);
    mSince.start();
    mWaitedMs = WaitedMs();
}

void Heartbeat::Without(const std::function<void()>& work)
{
    Beat();
    work();
    mWaitedMs = WaitedMs();
    mSince.start();
}

void Heartbeat::Beat()
{
    const double waited = WaitedMs();
    const double gap = double(mSince.nsecsElapsed()) / 1e6 - kBeatMs - (waited - mWaitedMs);
    if (gap > mLongestMs) {
        mLongestMs = gap;
        mLongestWhile = mDoing;
    }
    mWaitedMs = waited;
    mSince.start();
}

}  // namespace fenrik
