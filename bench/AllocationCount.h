#pragma once

#include <cstddef>

namespace fenrik {

/// How often this program has allocated memory by `new` so far. A program that links AllocationCount.cpp counts.
[[nodiscard]] std::size_t Allocations();

}  // namespace fenrik
