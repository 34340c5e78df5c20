#include "platform/LargeMemory.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace fenrik {
namespace {

using testing::HasSubstr;

/// The system's flags of the mapping that an address is in.
std::string FlagsOf(const void* memory)
{
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    std::ifstream maps("/proc/self/smaps");
    bool inside = false;
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t first = 0;
        std::uintptr_t end = 0;
        char hyphen = 0;
        std::istringstream range(line);
        if (range >> std::hex >> first >> hyphen >> end && hyphen == '-')
            inside = address >= first && address < end;
        else if (inside && line.starts_with("VmFlags:"))
            return line;
    }
    return {};
}

TEST(LargeMemoryTest, EveryElementKeepsItsValue)
{
    constexpr std::size_t kCount = 3 * kLargePage / sizeof(std::uint32_t);
    const LargeArray<std::uint32_t> array = MakeLargeArray<std::uint32_t>(kCount);
    for (std::size_t i = 0; i < kCount; ++i)
        array[i] = std::uint32_t(i * 7);
    for (std::size_t i = 0; i < kCount; ++i)
        ASSERT_EQ(array[i], std::uint32_t(i * 7));
}

TEST(LargeMemoryTest, StandsInPagesThatTheSystemMayMakeLarge)
{
    if (!std::filesystem::exists("/sys/kernel/mm/transparent_hugepage"))
        GTEST_SKIP() << "this system has no large pages";
    const LargeArray<char> array = MakeLargeArray<char>(kLargePage);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.get()) % kLargePage, 0u);
    EXPECT_THAT(FlagsOf(array.get()), HasSubstr(" hg"));
}

}  // namespace
}  // namespace fenrik
