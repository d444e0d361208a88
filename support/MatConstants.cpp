// SPDX-License-Identifier: MIT
#include "MatConstants.h"

#include <cmath>

namespace
{
constexpr double kNoFractionFrom = 4503599627370496.0; // 2^52

// Dividing by the whole number 1 / resolution rounds once, where multiplying by a decimal
// resolution rounds a product of something that is already rounded.
double NearestMultiple(double value, double resolution) noexcept
{
    const double perUnit = std::round(1.0 / resolution);
    if (std::isfinite(perUnit) && CMatConstants::AreEqual(perUnit * resolution, 1.0))
        return std::round(value * perUnit) / perUnit;
    return std::round(value / resolution) * resolution;
}
} // namespace

double CMatConstants::AdjustToResolution(double value, double resolution) noexcept
{
    if (!(resolution > 0.0) || !IsFinite(resolution) || !IsFinite(value))
        return value;
    if (Magnitude(value / resolution) >= kNoFractionFrom)
        return value;
    const double adjusted = NearestMultiple(value, resolution) + 0.0;
    return IsFinite(adjusted) ? adjusted : value;
}
