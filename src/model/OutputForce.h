#pragma once

#include "link/CMessage.h"

#include <cstdint>

namespace fenrik {

class COutput;

/// A level that an output is forced to: whole percents, and a half one on top.
struct ForceLevel {
    bool release = false;  ///< the output follows its relationship again
    int percent = 0;       ///< 0 to 100
    int half = 0;          ///< 1 for half a percent more; never at 100

    /// The nearest half percent; 100 for anything above; release for anything below 0. Throws Error 6 for what is
    /// no number.
    [[nodiscard]] static ForceLevel FromPercent(float value);
};

/// The three ways of telling a node to force an output:
///
///   nodes        command  data                                                  state  extended
///   types 0, 9   985      node | channel << 8 | percent * 1.6                   1      half
///     release             node | channel << 8                                   0      0
///   newer        987      node | channel << 4 | percent << 9                    1      half
///     release             node | channel << 4                                   0      0
///   older        985      output | percent / 10 << 4 | channel << 8 | 0x4000    0      0
///
/// Node and output have four bits; what doesn't fit is cut off or, in a channel, runs into its neighbour. The nodes'
/// software knows the frames as they are, so they go out as they are.
struct ForceTarget {
    enum class Way { Brontes, Newer, Older };

    Way way;
    int node;    ///< number on the network
    int output;  ///< from 1

    /// 0 for an output that can't be forced.
    [[nodiscard]] int Channel() const;

    /// The frame that forces or releases the output. It has a channel.
    [[nodiscard]] CMessage Message(const ForceLevel& level) const;

    /// What the node makes of `level`: the older nodes know tens of percents only, and their 0 is a release.
    [[nodiscard]] ForceLevel Understood(const ForceLevel& level) const;
};

/// Forces `output` on the wire and then in the model. Events run meanwhile; an output that is gone when they have run
/// is left alone. Throws Error.
void ForceOutput(COutput& output, float percent);

}  // namespace fenrik
