#include "platform/LargeMemory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <new>

namespace fenrik {

void* LargeMemory::Allocate(std::size_t bytes)
{
    const std::size_t whole = (bytes + kLargePage - 1) / kLargePage * kLargePage;
    void* const memory = std::aligned_alloc(kLargePage, whole);
    if (!memory)
        throw std::bad_alloc();
    ::madvise(memory, whole, MADV_HUGEPAGE);  // without large pages it is slower, and that is all
    return memory;
}

void LargeMemory::operator()(void* memory) const
{
    std::free(memory);
}

}  // namespace fenrik
