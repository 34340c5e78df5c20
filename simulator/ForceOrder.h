#pragma once

#include "link/Frame.h"

#include <optional>
#include <string>

namespace fenrik {

struct NodeSetup;

/// A frame that tells a node to hold an output at a level, whatever its relationship says, or to let go of it:
///
///   nodes       command  data                                              state         extended
///   types 0, 9  985      node | tens of percents << 4 | channel << 8       1 holds       half a percent more
///   newer       987      node | output << 4 | percents << 9                1 holds       half a percent more
///   early       985      output | tens of percents << 4 | output << 8 |    -             -
///                        0x4000; 0 tens let go
///
/// Channels 1 to 4 are outputs 1, 2, 15 and 16. A node has four bits, so 0 is node 16. The early form names no node:
/// the mounted one is meant. Output 32 of the newer form overflows into the percents, which then are odd; its five
/// bits are 0.
struct ForceOrder {
    enum class Form { Channel, Newer, Early };

    Form form;
    int node;                   ///< 1 to 16; 0: the mounted one
    int output;                 ///< from 1
    std::optional<int> halves;  ///< of a percent, 0 to 200; nothing: released

    /// What `frame` orders, or nothing if it is no such frame or names no output.
    [[nodiscard]] static std::optional<ForceOrder> Read(const Frame& frame);

    /// The form that a node obeys.
    [[nodiscard]] static Form FormOf(const NodeSetup& setup);

    /// "forced to 50%", "forced to 12.5%", "released".
    [[nodiscard]] std::string Words() const;
};

}  // namespace fenrik
