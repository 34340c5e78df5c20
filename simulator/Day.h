#pragma once

#include <span>
#include <string_view>

namespace fenrik {

/// One thing that happens in the driver's day.
struct DayStep {
    enum class Kind { Command, Fault, Restart };

    double seconds;         ///< since the day began
    std::string_view name;  ///< the command's
    bool on;
    Kind kind = Kind::Command;
    int node = 0;    ///< of a fault or a restart
    int output = 0;  ///< of a fault
};

/// The day, in order of time. It begins again after kDaySeconds.
[[nodiscard]] std::span<const DayStep> Day();

inline constexpr double kDaySeconds = 120.0;

}  // namespace fenrik
