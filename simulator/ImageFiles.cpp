#include "simulator/ImageFiles.h"

#include "simulator/MemoryImage.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace fenrik {

std::vector<std::filesystem::path> WriteImages(const std::vector<NodeConfig>& nodes, const std::string& system,
                                               const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    std::vector<std::filesystem::path> written;
    for (const auto& node : nodes) {
        if (!MemoryImage::HoldsConfiguration(node.type))
            continue;
        const auto path = folder / (system + "_Node " + std::to_string(node.number) + ".bin");
        const MemoryImage image(node);
        std::ofstream file(path, std::ios::binary);
        std::ranges::copy(image.Bytes(), std::ostreambuf_iterator<char>(file));
        if (!file.flush())
            throw std::system_error(errno, std::generic_category(), path.string());
        written.push_back(path);
    }
    return written;
}

}  // namespace fenrik
