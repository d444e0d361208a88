// SPDX-License-Identifier: MIT
#include "faults/Allocations.h"

#include <cerrno>
#include <cstdlib>
#include <new>
#include <utility>

namespace
{
/** Allocations up to the failing one; 0 when none shall fail, or it has failed. */
thread_local std::uint64_t t_left = 0;

bool Fails()
{
    return t_left > 0 && --t_left == 0;
}
} // namespace

bool KW_TryWithoutMemory(const std::function<void()>& act, std::uint64_t number, bool& struck)
{
    t_left = number;
    bool passed = true;
    try
    {
        act();
    }
    catch (const std::bad_alloc&)
    {
        passed = false;
    }
    struck = std::exchange(t_left, 0) == 0;
    return passed;
}

std::uint64_t KW_CountAllocations(const std::function<void()>& act)
{
    constexpr std::uint64_t kNever = 1'000'000'000;
    t_left = kNever;
    act();
    return kNever - std::exchange(t_left, 0);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

void* operator new(std::size_t size)
{
    void* const memory = Fails() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

// A sanitizer's own does not come here, unlike the standard library's.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Fails() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

#else

// `operator new` of the standard library calls malloc, as Qt does.
#define KWI_INTERPOSED extern "C" __attribute__((visibility("default")))

extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);

namespace
{
void* NoMemory()
{
    errno = ENOMEM;
    return nullptr;
}
} // namespace

KWI_INTERPOSED void* malloc(std::size_t size) noexcept
{
    return Fails() ? NoMemory() : __libc_malloc(size);
}

KWI_INTERPOSED void* calloc(std::size_t count, std::size_t size) noexcept
{
    return Fails() ? NoMemory() : __libc_calloc(count, size);
}

KWI_INTERPOSED void* realloc(void* memory, std::size_t size) noexcept
{
    return Fails() ? NoMemory() : __libc_realloc(memory, size);
}

#endif
