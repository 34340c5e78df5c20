#pragma once

#include "link/Frame.h"

namespace fenrik {

/// Frames that nodes send without being asked.

/// The master's beat, every 2.5 seconds.
[[nodiscard]] constexpr Frame SyncFrame()
{
    return {980, false, true, 1};
}

/// Node `node` sheds loads of `level`; 0 when everything is supplied again.
[[nodiscard]] constexpr Frame LoadShedFrame(int node, int level)
{
    return {981, true, false, std::uint16_t(node << 8 | (level & 0xFF))};
}

/// Output `output` of `node` has failed.
[[nodiscard]] constexpr Frame FaultFrame(int node, int output)
{
    return {983, true, false, std::uint16_t(node << 8 | (output & 0xFF))};
}

/// Node `node` has started.
[[nodiscard]] constexpr Frame AnnouncementFrame(int node)
{
    return {988, true, false, std::uint16_t(node)};
}

}  // namespace fenrik
