// SPDX-License-Identifier: MIT
#include "DbStepping.h"

#include "KWMath.h"
#include "MatConstants.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <type_traits>

namespace NStepping
{
namespace
{
template <typename T>
T FromReal(double value, bool& overflow)
{
    // 2^63 and 2^64 are doubles, their predecessors are not: compare with "not below".
    const double top = std::ldexp(1.0, std::numeric_limits<T>::digits);
    const double bottom = std::is_signed_v<T> ? -top : 0.0;
    if (!(value < top))
    {
        overflow = true;
        return std::numeric_limits<T>::max();
    }
    if (value < bottom)
    {
        overflow = true;
        return std::numeric_limits<T>::lowest();
    }
    return static_cast<T>(value);
}

template <>
double FromReal<double>(double value, bool& overflow)
{
    overflow = !std::isfinite(value);
    constexpr double kEnd = std::numeric_limits<double>::max();
    return value > kEnd ? kEnd : value < -kEnd ? -kEnd : value;
}

/** The double nearest to digits × 10^exponent, as its text reads: a product with a power of ten,
    itself rounded, would lie beside it. Infinite beyond the largest, zero below the smallest. */
double FromDecimal(INT64 digits, int exponent)
{
    constexpr int kExactPowers = 22;
    constexpr INT64 kExactDigits = INT64{1} << 53;
    if (std::abs(exponent) <= kExactPowers && std::abs(digits) <= kExactDigits)
    {
        // Both are exact doubles: the one rounding gives the nearest.
        const double power = KWMath::Pow10(std::abs(exponent));
        const auto whole = static_cast<double>(digits);
        return exponent < 0 ? whole / power : whole * power;
    }
    constexpr int kMostDigits = 20;
    char text[kMostDigits + 16];
    char* const mark = std::to_chars(text, text + kMostDigits, digits).ptr;
    *mark = 'e';
    const auto written = std::to_chars(mark + 1, text + sizeof(text), exponent);
    double value = exponent < 0 ? 0.0 : digits < 0 ? -HUGE_VAL : HUGE_VAL;
    std::from_chars(text, written.ptr, value);
    return value;
}

struct t_Decimal
{
    INT64 digits;
    int exponent;
};

/** A step as a model or a rule means it: 2e-9, also where a division left the double beside it.
    Nothing for a step that is no short decimal number, such as a third. */
std::optional<t_Decimal> ToShortDecimal(double step)
{
    constexpr int kFraction = 11;
    char text[32];
    const auto written =
        std::to_chars(text, text + sizeof(text), step, std::chars_format::scientific, kFraction);
    char* const mark = std::find(text, written.ptr, 'e');
    std::copy(text + 2, mark, text + 1); // "1.25e-09" without its point
    t_Decimal decimal{};
    std::from_chars(text, mark - 1, decimal.digits);
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, written.ptr, decimal.exponent);
    decimal.exponent -= kFraction;
    for (; decimal.digits != 0 && decimal.digits % 10 == 0; decimal.digits /= 10)
    {
        ++decimal.exponent;
    }
    const bool isStep =
        CMatConstants::AreEqual(FromDecimal(decimal.digits, decimal.exponent), step);
    return isStep ? std::optional(decimal) : std::nullopt;
}

double Multiple(INT64 count, double step)
{
    const auto decimal = ToShortDecimal(step);
    INT64 digits = 0;
    const bool isDecimal = decimal && !__builtin_mul_overflow(count, decimal->digits, &digits);
    return isDecimal ? FromDecimal(digits, decimal->exponent) : static_cast<double>(count) * step;
}

double LinearReal(double value, double step, INT32 steps)
{
    constexpr double kTooFine = 0x1p51;
    const double count = std::floor(value / step + steps + 0.5);
    return std::fabs(count) < kTooFine ? Multiple(static_cast<INT64>(count), step)
                                       : value + step * steps;
}

/** Steps from `value` to the multiple nearest to it, the upper one of two: −1, 0 or 1 after its
    remainder is gone. */
template <typename T>
int ToNearestMultiple(T rest, T step)
{
    if (rest > T{})
    {
        return rest >= step - rest ? 1 : 0;
    }
    return rest < T{} && rest < -(step + rest) ? -1 : 0;
}

double LadderUp(t_Ladder ladder, double value)
{
    const int exponent = KWMath::DecimalExponent(value);
    for (const INT64 rung : ladder)
    {
        const double next = FromDecimal(rung, exponent);
        if (CMatConstants::IsGreater(next, value))
        {
            return next;
        }
    }
    // What is equal to the next decade without reaching it counts as that decade.
    return FromDecimal(20, exponent);
}

double LadderDown(t_Ladder ladder, double value)
{
    const int exponent = KWMath::DecimalExponent(value);
    for (auto rung = ladder.rbegin(); rung != ladder.rend(); ++rung)
    {
        const double next = FromDecimal(*rung, exponent);
        if (CMatConstants::IsLess(next, value))
        {
            return next;
        }
    }
    return FromDecimal(5, exponent - 1);
}
} // namespace

template <typename T>
T Linear(T value, T step, INT32 steps, bool& overflow)
{
    if constexpr (std::is_same_v<T, double>)
    {
        return FromReal<double>(LinearReal(value, step, steps), overflow);
    }
    else
    {
        const T rest = static_cast<T>(value % step);
        const INT64 count = INT64{steps} + ToNearestMultiple(rest, step);
        const bool up = count > 0;
        const UINT64 magnitude =
            up ? static_cast<UINT64>(count) : UINT64{0} - static_cast<UINT64>(count);
        const T base = static_cast<T>(value - rest);
        UINT64 distance = 0;
        T result{};
        overflow = __builtin_mul_overflow(magnitude, static_cast<UINT64>(step), &distance) ||
                   (up ? __builtin_add_overflow(base, distance, &result)
                       : __builtin_sub_overflow(base, distance, &result));
        return !overflow ? result
                         : (up ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest());
    }
}

template <typename T>
T Factor(T value, double factor, INT32 steps, bool& overflow)
{
    // Up means towards zero for negative numbers; zero times an overflow is still zero.
    const double exponent = value < T{} ? -static_cast<double>(steps) : steps;
    const double moved =
        value == T{} ? 0.0 : static_cast<double>(value) * std::pow(factor, exponent);
    if constexpr (std::is_same_v<T, double>)
    {
        return FromReal<double>(moved, overflow);
    }
    else
    {
        const T rounded = FromReal<T>(std::round(moved), overflow);
        return rounded == value && steps != 0 ? Linear<T>(value, 1, steps > 0 ? 1 : -1, overflow)
                                              : rounded;
    }
}

template <typename T>
T Ladder(t_Ladder ladder, T value, INT32 steps, bool& overflow)
{
    constexpr bool isReal = std::is_same_v<T, double>;
    double moved = static_cast<double>(value);
    if (isReal && !(moved > 0.0))
    {
        return value;
    }
    INT32 done = 0;
    if (!isReal && moved < 1.0 && steps > 0)
    {
        moved = 1.0; // the first rung
        ++done;
    }
    for (; done != steps && moved > 0.0 && std::isfinite(moved); done += steps > 0 ? 1 : -1)
    {
        moved = steps > 0 ? LadderUp(ladder, moved) : LadderDown(ladder, moved);
    }
    if (!isReal && moved < 1.0)
    {
        overflow = steps < 0;
        return steps < 0 ? T{1} : value;
    }
    return FromReal<T>(moved, overflow);
}

double FloorToLadder125(double value)
{
    if (!(value > 0.0) || std::isinf(value))
    {
        return value;
    }
    const int exponent = KWMath::DecimalExponent(value);
    for (auto rung = kLadder125.rbegin(); rung != kLadder125.rend(); ++rung)
    {
        const double floor = FromDecimal(*rung, exponent);
        if (!CMatConstants::IsGreater(floor, value))
        {
            return floor;
        }
    }
    return value;
}

double ToDecimal(double value)
{
    const auto decimal = std::isnormal(value) ? ToShortDecimal(std::fabs(value)) : std::nullopt;
    return decimal ? std::copysign(FromDecimal(decimal->digits, decimal->exponent), value) : value;
}

#define KW_INSTANTIATE_STEPPING(T)                                                                 \
    template T Linear<T>(T, T, INT32, bool&);                                                      \
    template T Factor<T>(T, double, INT32, bool&);                                                 \
    template T Ladder<T>(t_Ladder, T, INT32, bool&);

KW_INSTANTIATE_STEPPING(INT16)
KW_INSTANTIATE_STEPPING(UINT16)
KW_INSTANTIATE_STEPPING(INT32)
KW_INSTANTIATE_STEPPING(UINT32)
KW_INSTANTIATE_STEPPING(INT64)
KW_INSTANTIATE_STEPPING(UINT64)
KW_INSTANTIATE_STEPPING(double)
} // namespace NStepping
