#pragma once

#include <cstdint>
#include <optional>
#include <set>

namespace fenrik {

/// What a node can be deaf to.
enum class NodeStep { Ping, Mount, Unmount, State, Special };

/// What a node does wrong when it is asked.
struct NodeFaults {
    std::optional<int> answersAs;     ///< number given in place of its own in replies to ping and mount
    std::optional<int> cutAfter;      ///< array replies end after so many data frames
    std::set<std::uint16_t> refused;  ///< codes of the query kinds that it refuses
    std::set<NodeStep> ignored;       ///< not answered and not obeyed
    std::optional<int> stateAs;       ///< told for the state of every item, in place of 0 or 1
    bool denies = false;              ///< declines to be mounted and to have switches assigned
    bool odd = false;                 ///< array replies of an even length come a byte short
};

}  // namespace fenrik
