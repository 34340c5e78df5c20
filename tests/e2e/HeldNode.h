#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace fenrik {

class CNode;

/// A node's values by field, in the words in which the simulator describes it: "output 5 name".
using NodeFields = QMap<QString, QString>;

/// What the tool holds of a node. Fields that no description has are left out.
[[nodiscard]] NodeFields HeldNode(const CNode& node);

/// The simulator's own description of a node of that scenario; `more` are further options of the simulator.
[[nodiscard]] NodeFields DescribedNode(const QString& scenario, int number, const QStringList& more = {});

/// Number of the scenario's first node of that type and road, up to `last`; fails the test if there is none.
[[nodiscard]] int DescribedNodeOf(const QString& scenario, int last, const char* type, const char* road);

/// Fails the test if the tool holds something else of the node than was described.
void ExpectAsDescribed(const CNode& node, const NodeFields& described);

}  // namespace fenrik
