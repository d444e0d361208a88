// SPDX-License-Identifier: MIT
#pragma once

#include "KWNodeTypes.h"

#include <array>
#include <span>

/**
 * The arithmetic of stepping, apart from any property. Each function gives the value `steps` steps
 * away and sets `overflow` when that is beyond what T can hold (the result is then T's end).
 */
namespace NStepping
{
/**
 * The multiple of `step` (> 0) that is nearest to value + steps × step, the upper one of two: from
 * wherever the value stands, the first step leads onto the grid, the others stay there.
 * A real step of up to twelve decimal digits counts as that decimal number, and its multiples are
 * the doubles nearest to the decimal multiples: three steps of 0.1 are 0.3. Where doubles are
 * coarser than the grid, the value is moved as it is.
 */
template <typename T>
T Linear(T value, T step, INT32 steps, bool& overflow);

/** value × factor^steps, for negative numbers ÷, so that steps up always lead up. Integers are
    rounded half away from zero and moved by at least 1; a real zero stays. */
template <typename T>
T Factor(T value, double factor, INT32 steps, bool& overflow);

/** Rungs of a ladder in every decade, from 1 to 10; 2 comes first and 5 last between them. */
using t_Ladder = std::span<const INT64>;
inline constexpr std::array<INT64, 4> kLadder125{1, 2, 5, 10};
inline constexpr std::array<INT64, 5> kLadder1245{1, 2, 4, 5, 10};

/** The ladder of a step mode; empty for one without. */
constexpr t_Ladder LadderOf(E_STEPMODES mode)
{
    return mode == eSTEPMODE_LADDER125    ? t_Ladder(kLadder125)
           : mode == eSTEPMODE_LADDER1245 ? t_Ladder(kLadder1245)
                                          : t_Ladder();
}

/** The next rungs above or below: …, 1, 2, 5, 10, 20, … Those of whole numbers begin at 1: down
    from there is an overflow, up from zero and below it leads there. Real numbers from zero down
    have no next value, so the value stays. */
template <typename T>
T Ladder(t_Ladder ladder, T value, INT32 steps, bool& overflow);

/** The rung of the 1-2-5 ladder at or below a positive value; one beside it by rounding counts as
    it. Any other value is given back. */
double FloorToLadder125(double value);

/** The decimal number of up to twelve digits that a value is but for rounding; else the value. */
double ToDecimal(double value);
} // namespace NStepping
