#pragma once

#include <QMap>
#include <QString>

namespace fenrik {

class CNode;

/// What the tool holds of a node, in the words in which the simulator describes it: "output 5 name" and its value.
/// Fields that no description has are left out.
[[nodiscard]] QMap<QString, QString> HeldNode(const CNode& node);

}  // namespace fenrik
