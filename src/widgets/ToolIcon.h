#pragma once

#include <QIcon>
#include <QString>

namespace fenrik {

/// The picture :/icons/<name>.png for a button or a menu. It is read when it is first painted, and faded where it is
/// disabled: what a style makes of it suits light windows only.
[[nodiscard]] QIcon ToolIcon(const QString& name);

}  // namespace fenrik
