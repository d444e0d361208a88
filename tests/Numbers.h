// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <limits>

// The numbers at which formulas go wrong.

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/** The next double above a number. */
inline double Above(double value)
{
    return std::nextafter(value, kInf);
}

/** The next double below a number. */
inline double Below(double value)
{
    return std::nextafter(value, -kInf);
}
