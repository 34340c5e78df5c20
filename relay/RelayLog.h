#pragma once

#include "relay/RateBudget.h"

#include <ostream>
#include <string>
#include <string_view>

namespace fenrik {

/// What the relay did, a line of text for each event:
///
///     2026-03-01 14:05:54 user 7 "Ada [Diag Client]" at 192.168.0.5 logged on as "ada" with "OEMClient"
///
/// Clients cause most lines, so there is a limit: after a burst of kBurst lines, kLinesPerSecond; what was left out is
/// counted and told.
class RelayLog {
public:
    static constexpr double kBurst = 500;
    static constexpr double kLinesPerSecond = 20;

    enum class Stamp { None, Time };

    /// `out` outlives the log. Stamp::None where the reader of the lines stamps them itself.
    RelayLog(std::ostream& out, Stamp stamp) : mOut(&out), mStamp(stamp) {}

    /// `now` in seconds of any steady clock.
    void Line(double now, std::string_view text);

    /// A line that no client can cause: it is never left out.
    void Always(std::string_view text);

private:
    void TellLeftOut();

    std::ostream* mOut;
    Stamp mStamp;
    RateBudget mBudget{kLinesPerSecond, kBurst};
    unsigned long mLeftOut = 0;
};

}  // namespace fenrik
