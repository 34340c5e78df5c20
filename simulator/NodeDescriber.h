#pragma once

#include "simulator/NodeConfig.h"

#include <optional>
#include <ostream>
#include <string_view>

namespace fenrik {

/// How a tool learns a node's configuration. Each road carries other fields, and some in another grain.
enum class Road { Query, Memory, Flash };

/// The road of that name ("query", "memory", "flash"), or nothing.
[[nodiscard]] std::optional<Road> FindRoad(std::string_view name);

/// The road that leads to the whole configuration of a node as it answers on the line; nothing if none does.
[[nodiscard]] std::optional<Road> UsualRoad(const NodeConfig& node);

/// True if the configuration can be had by `road`, from the line or from the node's image.
[[nodiscard]] bool HasRoad(const NodeConfig& node, Road road);

/// Describes what a tool holds after it has read the node by `road`, a line for each field:
///
///     node 3 road memory
///     node 3 name "Door left"
///     node 3 version os 2.4
///     node 3 input 1 command 1
///     node 3 output 5 name "Dome Lamps Front"
///
/// Texts stand in quotes, truth as true and false, relationships as pairs of hexadecimal digits. README.md tells which
/// fields each road carries.
void DescribeNode(const NodeConfig& node, Road road, std::ostream& out);

}  // namespace fenrik
