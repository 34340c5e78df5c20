#include "AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

// The replaced operator has nothing else to count in.
std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

std::size_t fenrik::Allocations()
{
    return allocations;
}
