#pragma once

#include <QIcon>

namespace fenrik {

/// The picture of a node's button for an icon key of the system: "Node5", "Node5M" for the mounted node, "Blank".
/// Painted at the size and resolution asked for, in the palette's colours.
[[nodiscard]] QIcon NodeIcon(const QString& iconKey);

}  // namespace fenrik
