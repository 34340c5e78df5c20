#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace fenrik {

class CNode;

/// What the tool holds of a node, in the words in which the simulator describes it: "output 5 name" and its value.
/// Fields that no description has are left out.
[[nodiscard]] QMap<QString, QString> HeldNode(const CNode& node);

/// Field and value.
using DescribedFields = std::vector<std::pair<QString, QString>>;

/// The simulator's own description of a node of that scenario; `more` are further options of the simulator.
[[nodiscard]] DescribedFields DescribedNode(const QString& scenario, int number, const QStringList& more = {});

/// Fails the test if the tool holds something else of the node than was described.
void ExpectAsDescribed(const CNode& node, const DescribedFields& fields);

}  // namespace fenrik
