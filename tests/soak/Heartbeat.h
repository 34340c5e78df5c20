#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <string>

namespace fenrik {

/// Beats every 10 ms while events are delivered, and so tells for how long they were not.
class Heartbeat {
public:
    Heartbeat();

    /// What the tool is made to do from now on.
    void Say(const std::string& doing) { mDoing = doing; }
    [[nodiscard]] const std::string& Doing() const { return mDoing; }

    /// Does what the test itself needs time for, which does not count.
    void Without(const std::function<void()>& work);

    /// The longest time without a beat beyond the 10 ms, and what was being done. Time in which the process waited for
    /// a processor that others had does not count.
    [[nodiscard]] double LongestGapMs() const { return mLongestMs; }
    [[nodiscard]] const std::string& LongestWhile() const { return mLongestWhile; }

private:
    void Beat();

    QTimer mTimer;
    QElapsedTimer mSince;
    double mWaitedMs = 0;  // for a processor, until the last beat
    double mLongestMs = 0;
    std::string mDoing;
    std::string mLongestWhile;
};

}  // namespace fenrik
