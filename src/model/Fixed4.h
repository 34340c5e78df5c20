#pragma once

#include <compare>
#include <cstdint>

namespace fenrik {

/// A number with exactly four decimals: volts and seconds as the nodes' configuration holds them.
class Fixed4 {
public:
    static constexpr std::int64_t kOne = 10000;

    constexpr Fixed4() = default;

    [[nodiscard]] static constexpr Fixed4 Whole(std::int64_t value) { return Fixed4(value * kOne); }
    [[nodiscard]] static constexpr Fixed4 FromTenThousandths(std::int64_t value) { return Fixed4(value); }

    /// `value` / `divisor` to four decimals, a tie going to the even last digit. `divisor` is above 0.
    [[nodiscard]] static constexpr Fixed4 Quotient(std::int64_t value, std::int64_t divisor)
    {
        return Fixed4(RoundedQuotient(value * kOne, divisor));
    }

    /// `value` / `divisor` as a whole number, a tie going to the even one. `divisor` is above 0.
    [[nodiscard]] static constexpr std::int64_t RoundedQuotient(std::int64_t value, std::int64_t divisor)
    {
        std::int64_t quotient = value / divisor;
        std::int64_t rest = value % divisor;
        if (rest < 0) {
            rest += divisor;
            --quotient;
        }
        const bool up = rest > divisor - rest || (rest == divisor - rest && quotient % 2 != 0);
        return up ? quotient + 1 : quotient;
    }

    [[nodiscard]] constexpr std::int64_t TenThousandths() const { return mTenThousandths; }
    [[nodiscard]] constexpr double ToDouble() const { return double(mTenThousandths) / double(kOne); }

    friend constexpr bool operator==(Fixed4, Fixed4) = default;
    friend constexpr auto operator<=>(Fixed4, Fixed4) = default;

private:
    explicit constexpr Fixed4(std::int64_t tenThousandths) : mTenThousandths(tenThousandths) {}

    std::int64_t mTenThousandths = 0;
};

}  // namespace fenrik
