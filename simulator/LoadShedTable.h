#pragma once

namespace fenrik {

/// The voltage at which an output of shed level `level` (1 to 8) goes off, in tenths of a volt; 0 for level 0.
[[nodiscard]] constexpr int ShedTenths(int level)
{
    constexpr int kFirst = 125;
    constexpr int kStep = 4;
    return level < 1 || level > 8 ? 0 : kFirst - kStep * (level - 1);
}

}  // namespace fenrik
