#pragma once

#include "pipe/PipeReader.h"
#include "relay/Exchange.h"

namespace fenrik {

/// The bytes of one client on their way into the exchange: whole frames, no faster than the client's share, and none
/// while answers wait that it doesn't read. What has to wait is held here, up to PipeReader::kCapacity bytes.
class FrameIntake {
public:
    explicit FrameIntake(const RelayLimits& limits)
        : mReader(limits.longestBody), mBudget(limits.framesPerSecond, kBurstSeconds * limits.framesPerSecond)
    {
    }

    [[nodiscard]] std::size_t Room() const { return mReader.Room(); }
    void Append(std::string_view bytes) { mReader.Append(bytes); }

    /// Has `exchange` handle what may be handled now.
    void Work(User& user, Exchange& exchange, double now);

    /// True if Work stopped before the end of what is held: it is to be called again.
    [[nodiscard]] bool Held() const { return mHeld; }

private:
    static constexpr double kBurstSeconds = 2;

    [[nodiscard]] bool MayGoOn(const User& user, double now) { return !user.line.Backlogged() && mBudget.Has(now); }

    PipeReader mReader;
    RateBudget mBudget;
    PipeFrame mFrame;  // kept for its memory
    bool mHeld = false;
};

}  // namespace fenrik
