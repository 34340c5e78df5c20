#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

namespace fenrik {

/// The size of the system's large pages, bytes. What LargeMemory is asked for should be a multiple.
constexpr std::size_t kLargePage = std::size_t(2) << 20;

struct LargeMemory {
    /// Memory without a value, in large pages where the system has them. A page that is never touched costs nothing.
    /// Throws std::bad_alloc.
    [[nodiscard]] static void* Allocate(std::size_t bytes);

    void operator()(void* memory) const;
};

/// Elements without a value, for tables of megabytes that are read here and there: with ordinary pages the processor
/// finds hardly any of their addresses in its buffer, and a walk through the page tables comes before each read.
template <class T>
using LargeArray = std::unique_ptr<T[], LargeMemory>;

template <class T>
[[nodiscard]] LargeArray<T> MakeLargeArray(std::size_t count)
{
    static_assert(std::is_trivially_default_constructible_v<T> && std::is_trivially_destructible_v<T>);
    return LargeArray<T>(static_cast<T*>(LargeMemory::Allocate(count * sizeof(T))));
}

}  // namespace fenrik
