// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/**
 * The arithmetic of stepping, apart from any property. Each function gives the value `steps` steps
 * away and sets `overflow` when that is beyond what T can hold (the result is then T's end).
 */
namespace NStepping
{
template <typename T>
T Linear(T value, T step, INT32 steps, bool& overflow);

/** value × factor^steps, for negative numbers ÷, so that steps up always lead up. Integers are
    rounded half away from zero and moved by at least 1; a real zero stays. */
template <typename T>
T Factor(T value, double factor, INT32 steps, bool& overflow);

/** The next values …, 1, 2, 5, 10, 20, … above or below; zero and negative numbers have none, so
    the value stays. */
template <typename T>
T Ladder125(T value, INT32 steps, bool& overflow);
} // namespace NStepping
