#pragma once

#include <QString>

namespace fenrik {

/// What the About window tells of the two databases in the program's folder: a block for each one that can be read,
/// its lines a label, a tab and the value.
[[nodiscard]] QString DatabaseInformation(const QString& programFolder);

}  // namespace fenrik
