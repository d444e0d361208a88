// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

/**
 * Runs `act`, of whose allocations one fails, wherever it comes from: `number` counts from 1. False
 * where that came out of it as std::bad_alloc. `struck` tells whether it came to the failing one.
 * Only the calling thread's count; under a sanitizer, which has an allocator of its own, only
 * `operator new`. Not nested, and nothing else is thrown.
 */
bool KW_TryWithoutMemory(const std::function<void()>& act, std::uint64_t number, bool& struck);

/** Allocations of the calling thread while `act` runs. */
std::uint64_t KW_CountAllocations(const std::function<void()>& act);
