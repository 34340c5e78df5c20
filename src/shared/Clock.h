#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

namespace fenrik {

/// A point of local time as a number, so that a message can keep it without any text: milliseconds of the wall
/// clock since 1970-01-01 00:00 local time. Cheap to copy and compare.
struct Moment {
    std::int64_t milliseconds = 0;

    static constexpr std::int64_t kPerDay = 24LL * 60 * 60 * 1000;

    /// Seconds since midnight, with the fraction.
    [[nodiscard]] double Timer() const { return double(milliseconds % kPerDay) / 1000.0; }

    [[nodiscard]] QDateTime DateTime() const;

    /// "h:nn:ss" and hundredths: "9:05:07.25".
    [[nodiscard]] QString TimeStamp() const;

    /// "yyyy-mm-dd".
    [[nodiscard]] QString DateStamp() const;

    [[nodiscard]] Moment Plus(double seconds) const { return {milliseconds + std::int64_t(seconds * 1000.0)}; }

    friend bool operator==(Moment, Moment) = default;
    friend auto operator<=>(Moment, Moment) = default;
};

/// Date and time for everything that stamps or waits. Tests use one that they set by hand.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Moment Now() const = 0;

    /// Seconds since midnight. Two readings on both sides of midnight differ by almost a day, and waits that
    /// compare readings rely on that.
    [[nodiscard]] double Timer() const { return Now().Timer(); }
};

/// The machine's clock in its time zone.
class SystemClock : public Clock {
public:
    [[nodiscard]] Moment Now() const override;

private:
    // The zone's offset changes at a quarter of an hour at the earliest, and asking for it costs more than the
    // rest of a frame's reception.
    mutable std::int64_t mOffset = 0;
    mutable std::int64_t mOffsetUntil = 0;
};

}  // namespace fenrik
