// SPDX-License-Identifier: MIT
#include "DbStepping.h"

#include "KWMath.h"
#include "MatConstants.h"

#include <array>
#include <cmath>
#include <limits>
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

constexpr std::array<double, 4> kLadder{1.0, 2.0, 5.0, 10.0};

double LadderUp(double value)
{
    const double decade = KWMath::Pow10(KWMath::DecimalExponent(value));
    for (const double step : kLadder)
    {
        if (CMatConstants::IsGreater(step * decade, value))
        {
            return step * decade;
        }
    }
    // What is equal to the next decade without reaching it counts as that decade.
    return 20.0 * decade;
}

double LadderDown(double value)
{
    const double decade = KWMath::Pow10(KWMath::DecimalExponent(value));
    for (auto step = kLadder.rbegin(); step != kLadder.rend(); ++step)
    {
        if (CMatConstants::IsLess(*step * decade, value))
        {
            return *step * decade;
        }
    }
    return 0.5 * decade;
}
} // namespace

template <typename T>
T Linear(T value, T step, INT32 steps, bool& overflow)
{
    if constexpr (std::is_same_v<T, double>)
    {
        return FromReal<double>(value + step * steps, overflow);
    }
    else
    {
        const bool up = steps > 0;
        const UINT64 count =
            up ? static_cast<UINT64>(steps) : UINT64{0} - static_cast<INT64>(steps);
        UINT64 distance = 0;
        T result{};
        overflow = __builtin_mul_overflow(count, static_cast<UINT64>(step), &distance) ||
                   (up ? __builtin_add_overflow(value, distance, &result)
                       : __builtin_sub_overflow(value, distance, &result));
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
T Ladder125(T value, INT32 steps, bool& overflow)
{
    double moved = static_cast<double>(value);
    if (!(moved > 0.0))
    {
        return value;
    }
    for (INT32 i = 0; i != steps && moved > 0.0 && std::isfinite(moved); i += steps > 0 ? 1 : -1)
    {
        moved = steps > 0 ? LadderUp(moved) : LadderDown(moved);
    }
    const bool belowOne = !std::is_same_v<T, double> && moved < 1.0;
    return belowOne ? T{1} : FromReal<T>(moved, overflow);
}

#define KW_INSTANTIATE_STEPPING(T)                                                                 \
    template T Linear<T>(T, T, INT32, bool&);                                                      \
    template T Factor<T>(T, double, INT32, bool&);                                                 \
    template T Ladder125<T>(T, INT32, bool&);

KW_INSTANTIATE_STEPPING(INT16)
KW_INSTANTIATE_STEPPING(UINT16)
KW_INSTANTIATE_STEPPING(INT32)
KW_INSTANTIATE_STEPPING(UINT32)
KW_INSTANTIATE_STEPPING(INT64)
KW_INSTANTIATE_STEPPING(UINT64)
KW_INSTANTIATE_STEPPING(double)
} // namespace NStepping
