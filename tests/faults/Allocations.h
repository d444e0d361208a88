// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

/**
 * While it lives, one allocation of the calling thread fails, wherever it comes from: `number`
 * counts from 1. Under a sanitizer, which has an allocator of its own, only `operator new` does.
 * Not nested.
 */
class CAllocationFault
{
public:
    explicit CAllocationFault(std::uint64_t number);
    ~CAllocationFault();
    CAllocationFault(const CAllocationFault&) = delete;
    CAllocationFault& operator=(const CAllocationFault&) = delete;
    /** Whether it came to the failing one. */
    bool HasStruck() const;
    /** Allocations up to the failing one. */
    std::uint64_t GetLeft() const;
};

/** Runs `act` with the failing allocation; false where that came out of it as std::bad_alloc.
    `struck` tells whether it came to the failing one. */
bool KW_TryWithoutMemory(const std::function<void()>& act, std::uint64_t number, bool& struck);

/** Allocations of the calling thread while `act` runs. */
std::uint64_t KW_CountAllocations(const std::function<void()>& act);
