#pragma once

#include "simulator/NodeConfig.h"
#include "simulator/SimNode.h"

#include <vector>

namespace fenrik {

/// The configurations of a vehicle's nodes, in the order of `setups`.
///
/// Commands of the bus are dealt out in turn over the nodes' inputs, and again over their outputs, so that any set of
/// nodes has something to do. What an input or output is like beyond that follows from its number through small tables.
[[nodiscard]] std::vector<NodeConfig> MakeConfigs(const std::vector<NodeSetup>& setups);

}  // namespace fenrik
