#pragma once

#include <filesystem>
#include <string>

namespace fenrik {

/// The symbolic link under which the tool finds the simulator's terminal. Removed with the object.
class PortLink {
public:
    /// Makes `link` point to `device`, with the folders above it. A link that is left over from an earlier run (its
    /// target is gone or is a terminal) is replaced; anything else is kept and reported as std::runtime_error.
    PortLink(std::filesystem::path link, const std::string& device);
    ~PortLink();
    PortLink(const PortLink&) = delete;
    PortLink& operator=(const PortLink&) = delete;

    /// Where the tool looks for COM`number`, in the user's configuration home.
    [[nodiscard]] static std::filesystem::path ForPort(int number);

private:
    std::filesystem::path mLink;
    std::string mDevice;
};

}  // namespace fenrik
