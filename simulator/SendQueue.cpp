#include "simulator/SendQueue.h"

#include "simulator/TrafficLog.h"

#include <algorithm>

namespace fenrik {

void SendQueue::Push(double due, std::span<const std::uint8_t> bytes, const char* meaning)
{
    if (mRuns.size() >= kLimit)
        return mLog.Bytes("DROP", bytes, TrafficLog::Describe(bytes, meaning));
    const auto begun = mRuns.begin() + (mSent > 0 ? 1 : 0);
    const auto place =
        std::upper_bound(begun, mRuns.end(), due, [](double at, const Run& run) { return at < run.due; });
    mRuns.insert(place, Run{due, {bytes.begin(), bytes.end()}, meaning});
}

void SendQueue::Send(double now)
{
    mBlocked = false;
    if (!mLine.Heard())
        return Discard(now);
    while (!mRuns.empty() && FrontDue() <= now) {
        const auto& bytes = mRuns.front().bytes;
        const auto rest = std::span(bytes).subspan(mSent);
        const auto allowed = std::min(rest.size(), Allowance(now));
        const auto taken = mLine.Write(rest.first(allowed));
        mSent += taken;
        // Time that the line lay idle can't be made up for later.
        const double idle = std::max(mLineFree, mRuns.front().due);
        mLineFree = (taken < allowed ? std::max(now, idle) : idle) + double(taken) / kBytesPerSecond;
        if (mSent == bytes.size())
            Finish();
        mBlocked = taken < allowed;
        if (mBlocked)
            return;
    }
}

double SendQueue::FrontDue() const
{
    const double due = mRuns.front().due;
    return mPaced ? std::max(due, mLineFree) : due;
}

std::size_t SendQueue::Allowance(double now) const
{
    if (!mPaced)
        return std::numeric_limits<std::size_t>::max();
    return std::size_t((now - FrontDue()) * kBytesPerSecond) + 1;
}

double SendQueue::NextDue() const
{
    return mRuns.empty() || mBlocked ? kNever : FrontDue();
}

void SendQueue::Discard(double now)
{
    mSent = 0;
    while (!mRuns.empty() && mRuns.front().due <= now)
        mRuns.pop_front();
}

void SendQueue::Finish()
{
    const auto& run = mRuns.front();
    mLog.Bytes("TX", run.bytes, TrafficLog::Describe(run.bytes, run.meaning));
    mRuns.pop_front();
    mSent = 0;
}

}  // namespace fenrik
