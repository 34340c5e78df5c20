#pragma once

#include <array>
#include <cstdint>

namespace fenrik {

/// What is known of one node's load shed.
struct LoadShedEntry {
    std::int16_t level = 0;
    bool heard = false;  ///< the node has reported its level
};

/// By node; node 1 is the first.
using LoadShedTable = std::array<LoadShedEntry, 32>;

}  // namespace fenrik
