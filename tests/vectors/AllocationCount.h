// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/** Calls of operator new that this thread has made so far. */
std::uint64_t AllocationCount() noexcept;
