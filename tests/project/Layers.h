#pragma once

#include "project/ProjectFiles.h"

namespace fenrik {

/// The includes of `file` that point the wrong way, as "path:line includes header"; none for files outside src/
/// and simulator/.
[[nodiscard]] QStringList WrongIncludes(const ProjectFile& file);

}  // namespace fenrik
