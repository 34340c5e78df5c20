#pragma once

#include <QString>

namespace fenrik {

/// The names that a system can be saved under.
namespace SystemName {

/// What ends the name of a saved system's file.
inline constexpr const char* kExtension = ".dav";

/// True if a new system in `folder` (no separator at its end) can bear the name. It can't if it has a separator, is
/// the text that stands for no system, or is a database of the program's own; if its file could not lie in a folder
/// that is shared with Windows, which is how systems get from one technician to another; or if the file can't be made,
/// which is tried.
[[nodiscard]] bool IsUsable(const QString& name, const QString& folder);

}  // namespace SystemName

}  // namespace fenrik
