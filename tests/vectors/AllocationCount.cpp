// SPDX-License-Identifier: MIT
#include "AllocationCount.h"

#include <cstdlib>
#include <new>

namespace
{
thread_local std::uint64_t t_allocations = 0;
}

std::uint64_t AllocationCount() noexcept
{
    return t_allocations;
}

void* operator new(std::size_t size)
{
    ++t_allocations;
    if (void* const memory = std::malloc(size > 0 ? size : 1))
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
