#pragma once

#include <chrono>

namespace fenrik {

/// Where every part of the simulator has its time from: seconds since the simulator began, never going back.
class TimeSource {
public:
    virtual ~TimeSource() = default;
    [[nodiscard]] virtual double Seconds() const = 0;
};

/// The machine's steady clock, from 0 at construction.
class SteadyTime final : public TimeSource {
public:
    [[nodiscard]] double Seconds() const override
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - mStart).count();
    }

private:
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

}  // namespace fenrik
