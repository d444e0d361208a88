// SPDX-License-Identifier: MIT
#include "KWMath.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <iterator>

// The same results on every processor: doubles as IEEE 754 has them, rounded after each operation.
static_assert(std::numeric_limits<double>::is_iec559 && FLT_EVAL_METHOD == 0);

namespace
{
// 10^22 is the largest power of ten that a double holds exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactPowers = static_cast<int>(std::size(kPowersOfTen));
/** Whole numbers up to here are doubles. */
constexpr double kExactIntegers = 9007199254740992.0;

/** digits / 10^decimals, both exact. */
struct t_Decimal
{
    double digits;
    int decimals;
};

/** The decimal with the fewest digits that reads as `value`; the value itself, with more decimals
    than there are exact powers, when there is none. */
t_Decimal ShortestDecimal(double value)
{
    for (int decimals = 0; decimals < kExactPowers; ++decimals)
    {
        const double digits = std::round(value * kPowersOfTen[decimals]);
        // Both are exact, so that the quotient is the double that the decimal reads as.
        if (std::fabs(digits) < kExactIntegers && digits / kPowersOfTen[decimals] == value)
            return {digits, decimals};
    }
    return {value, kExactPowers};
}
} // namespace

double KWMath::Pow10(int exponent) noexcept
{
    if (exponent >= 0 && exponent < kExactPowers)
        return kPowersOfTen[exponent];
    if (exponent < 0 && exponent > -kExactPowers)
        return 1.0 / kPowersOfTen[-exponent];
    return std::pow(10.0, exponent);
}

double KWMath::DecimalProduct(double a, double b) noexcept
{
    const t_Decimal first = ShortestDecimal(a);
    const t_Decimal second = ShortestDecimal(b);
    const double digits = first.digits * second.digits;
    const int decimals = first.decimals + second.decimals;
    const bool isExact = decimals < kExactPowers && std::fabs(digits) < kExactIntegers;
    return isExact ? digits / kPowersOfTen[decimals] : a * b;
}

double KWMath::DecimalSum(double a, double b) noexcept
{
    const t_Decimal first = ShortestDecimal(a);
    const t_Decimal second = ShortestDecimal(b);
    const int decimals = std::max(first.decimals, second.decimals);
    if (decimals >= kExactPowers)
        return a + b;
    const double left = first.digits * kPowersOfTen[decimals - first.decimals];
    const double right = second.digits * kPowersOfTen[decimals - second.decimals];
    // Each below 2^52, so that both and their sum are exact.
    const bool isExact = std::max(std::fabs(left), std::fabs(right)) < kExactIntegers * 0.5;
    return isExact ? (left + right) / kPowersOfTen[decimals] : a + b;
}

int KWMath::DecimalExponent(double value) noexcept
{
    const double magnitude = std::fabs(value);
    if (!(magnitude > 0.0) || std::isinf(magnitude))
        return 0;
    const int exponent = static_cast<int>(std::floor(std::log10(magnitude)));
    if (Pow10(exponent) > magnitude)
        return exponent - 1;
    return Pow10(exponent + 1) <= magnitude ? exponent + 1 : exponent;
}

double KWMath::FloorToDecimalExponent(double value, int exponent) noexcept
{
    const double scale = Pow10(std::abs(exponent));
    const auto multiple = [=](double count)
    { return exponent < 0 ? count / scale : count * scale; };
    // The quotient is rounded: 0.0003 holds 0.0001 just less than three times. What counts is which
    // multiple, itself rounded, is not above the value.
    double count = std::floor(exponent < 0 ? value * scale : value / scale);
    if (multiple(count + 1.0) <= value)
        count += 1.0;
    else if (multiple(count) > value)
        count -= 1.0;
    const double result = multiple(count);
    return std::isfinite(result) ? result : value;
}

double KWMath::LinearPosition(double value, double start, double stop) noexcept
{
    return start == stop ? 0.0 : (value - start) / (stop - start);
}

double KWMath::LinearValue(double position, double start, double stop) noexcept
{
    return position == 1.0 ? stop : start + position * (stop - start);
}

double KWMath::LogarithmicPosition(double value, double start, double stop) noexcept
{
    return start == stop ? 0.0 : std::log10(value / start) / std::log10(stop / start);
}

double KWMath::LogarithmicValue(double position, double start, double stop) noexcept
{
    return position == 1.0 ? stop : start * std::pow(stop / start, position);
}
