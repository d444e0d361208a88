// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <cmath>
#include <limits>
#include <type_traits>

/** Numeric rules that several calculations share. Stateless, callable from any thread; nothing
    allocates, throws or reports. */
namespace KWMath
{
/** The nearest whole number, halves away from zero; infinities and NaN are answered unchanged. */
inline double Round(double value) noexcept
{
    return std::round(value);
}

/** `value` moved into [lower, upper]. The lower limit is compared first, so it wins when the limits
    are crossed; NaN is answered unchanged. */
template <typename T>
constexpr T Bound(T lower, T value, T upper) noexcept
{
    return value < lower ? lower : (value > upper ? upper : value);
}

/**
 * `value` truncated toward zero. Where T can not hold the result it is T's nearest limit, and 0 for
 * NaN: a plain cast is undefined there and differs between processors.
 */
template <typename T>
constexpr T ToInteger(double value) noexcept
{
    static_assert(std::is_integral_v<T> && sizeof(T) <= 8);
    // Both powers of two, hence exact as doubles, which the largest 64-bit integers are not.
    constexpr T kHalfWay = std::numeric_limits<T>::max() / 2 + 1;
    constexpr double kBeyond = 2.0 * static_cast<double>(kHalfWay);
    constexpr double kLowest = static_cast<double>(std::numeric_limits<T>::min());
    if (value >= kBeyond)
        return std::numeric_limits<T>::max();
    if (value <= kLowest)
        return std::numeric_limits<T>::min();
    return value == value ? static_cast<T>(value) : T{0};
}

/** 10^exponent, correctly rounded for exponents from −22 to 22. */
double Pow10(int exponent) noexcept;

/** The double nearest to the product of two numbers that stand for short decimals (1e-7, 0.02): the
    product of the doubles may lie beside it, 5e-7 × 10 just below 5e-6. Where there are more than
    22 decimals, or more digits than a double holds, it is the plain product. */
double DecimalProduct(double a, double b) noexcept;

/** The double nearest to the sum of two such numbers, so that 5e-7 and −4e-7 are 1e-7. Where they
   have more digits together than a double holds, it is the plain sum. */
double DecimalSum(double a, double b) noexcept;

/** The e with 10^e ≤ |value| < 10^(e + 1), also one representable double below a power of ten,
    where the rounded logarithm is one too high. 0 for 0, infinities and NaN. */
int DecimalExponent(double value) noexcept;

/** A positive value rounded down to a whole multiple of 10^exponent (3.7e6 at exponent 6 is 3e6).
    NaN, infinities and what can not be computed without them are answered unchanged. */
double FloorToDecimalExponent(double value, int exponent) noexcept;

/** Where `value` lies on a linear axis: 0.0 at `start`, 1.0 at `stop`, beyond them outside [0, 1].
    0.0 for an axis without extent. */
double LinearPosition(double value, double start, double stop) noexcept;

/** The value at a position of a linear axis; exactly `start` at 0.0 and `stop` at 1.0. */
double LinearValue(double position, double start, double stop) noexcept;

/** Where `value` lies on a logarithmic axis, as for the linear one. Value, start and stop must be
    positive; 0.0 for an axis without extent, NaN where a logarithm does not exist. */
double LogarithmicPosition(double value, double start, double stop) noexcept;

/** The value at a position of a logarithmic axis from `start` to `stop`, both positive; exactly
    `start` at 0.0 and `stop` at 1.0. */
double LogarithmicValue(double position, double start, double stop) noexcept;
} // namespace KWMath

/** Marks a function whose result for a zero divisor is the IEEE one, infinite or NaN, by contract;
    builds that check for divisions by zero leave it out. */
#define KW_IEEE_DIVISION __attribute__((no_sanitize("float-divide-by-zero")))
