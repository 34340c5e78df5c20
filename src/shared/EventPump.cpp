#include "shared/EventPump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <cmath>

namespace fenrik {

namespace {

/// Counts the waits that run, also when one is left by an exception.
class DepthGuard {
public:
    explicit DepthGuard(int& depth) : mDepth(depth) { ++mDepth; }
    ~DepthGuard() { --mDepth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& mDepth;
};

}  // namespace

bool EventPump::WaitFor(const Condition& done, double seconds)
{
    const double start = mClock.Timer();
    return Run(done, [this, start, seconds] { return seconds - std::abs(mClock.Timer() - start); });
}

bool EventPump::WaitUntil(const Condition& done, Moment deadline)
{
    return Run(done, [this, deadline] { return double(deadline.milliseconds - mClock.Now().milliseconds) / 1000.0; });
}

void EventPump::Wait(int seconds)
{
    WaitFor([] { return false; }, seconds);
}

void EventPump::Block(int milliseconds)
{
    if (!mStopped)
        Sleep(milliseconds);
}

void EventPump::Sleep(int milliseconds)
{
    QThread::msleep(std::uint32_t(milliseconds));
}

void EventPump::Stop()
{
    mStopped = true;
    Wake();
}

bool EventPump::Run(const Condition& done, const std::function<double()>& remaining)
{
    const DepthGuard guard(mDepth);
    for (;;) {
        if (done())
            return true;
        const double left = remaining();
        if (mStopped || left < 0)
            return false;
        Pump(left);
    }
}

void QtEventPump::Pump(double seconds)
{
    if (seconds <= 0) {
        QCoreApplication::processEvents();
        return;
    }
    // The timer's only purpose is to end the sleep; whatever else happens first ends it as well.
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.start(int(std::ceil(seconds * 1000.0)) + 1);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtEventPump::Wake()
{
    if (auto* dispatcher = QAbstractEventDispatcher::instance())
        dispatcher->wakeUp();
}

}  // namespace fenrik
