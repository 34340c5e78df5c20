#include "simulator/PortLink.h"

#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

namespace fenrik {

namespace {

// A link to a real device was made by the user and is not ours to replace.
bool LeftOver(const fs::path& link)
{
    const auto target = fs::read_symlink(link);
    return !fs::exists(link) || target.string().starts_with("/dev/pts/");
}

fs::path ConfigurationHome()
{
    if (const char* home = std::getenv("XDG_CONFIG_HOME"); home && *home)
        return home;
    if (const char* home = std::getenv("HOME"); home && *home)
        return fs::path(home) / ".config";
    throw std::runtime_error("neither XDG_CONFIG_HOME nor HOME is set");
}

}  // namespace

PortLink::PortLink(fs::path link, const std::string& device) : mLink(std::move(link)), mDevice(device)
{
    if (mLink.has_parent_path())
        fs::create_directories(mLink.parent_path());
    const auto status = fs::symlink_status(mLink);
    if (fs::exists(status)) {
        if (!fs::is_symlink(status) || !LeftOver(mLink))
            throw std::runtime_error(mLink.string() + " is there already and is not the simulator's");
        fs::remove(mLink);
    }
    fs::create_symlink(mDevice, mLink);
}

PortLink::~PortLink()
{
    // Another simulator may have taken the link over meanwhile.
    std::error_code ignored;
    if (fs::read_symlink(mLink, ignored) == mDevice)
        fs::remove(mLink, ignored);
}

fs::path PortLink::ForPort(int number)
{
    return ConfigurationHome() / "fenrik-diagnostics" / "ports" / ("com" + std::to_string(number));
}

}  // namespace fenrik
