#pragma once

#include "simulator/NodeConfig.h"

#include <filesystem>
#include <string>
#include <vector>

namespace fenrik {

/// Writes the memory of each node that holds its whole configuration there to "<system>_Node <n>.bin" in `folder`,
/// which is made if it is missing, and gives the files. Throws std::system_error if one can't be written.
std::vector<std::filesystem::path> WriteImages(const std::vector<NodeConfig>& nodes, const std::string& system,
                                               const std::filesystem::path& folder);

}  // namespace fenrik
