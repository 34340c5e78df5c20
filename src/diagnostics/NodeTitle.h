#pragma once

#include "model/CNode.h"
#include "model/TrimBlanks.h"

#include <QString>

namespace fenrik {

/// "Wheelhouse (Brontes)": a node as the captions of the views call it. A node without a name goes by its number.
[[nodiscard]] inline QString NodeTitle(const CNode& node)
{
    const QString name = TrimBlanks(node.Name()).isEmpty() ? node.key() : node.Name();
    return QStringLiteral("%1 (%2)").arg(name, node.TypeName());
}

}  // namespace fenrik
