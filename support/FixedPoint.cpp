// SPDX-License-Identifier: MIT
#include "FixedPoint.h"

#include "KWMath.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr UINT32 kWidest = 64;

double Scaled(double value, UINT32 fractionWidth, CFixedPoint::eROUNDING rounding) noexcept
{
    const double units = std::ldexp(value, static_cast<int>(fractionWidth));
    return rounding == CFixedPoint::eROUNDING::Nearest ? KWMath::Round(units) : std::trunc(units);
}

UINT64 LowBits(UINT32 width) noexcept
{
    return width < kWidest ? (UINT64{1} << width) - 1 : ~UINT64{0};
}

/** The low 64 bits of a whole number's two's complement. */
UINT64 Wrapped(double units) noexcept
{
    if (!std::isfinite(units))
        return 0;
    const UINT64 magnitude = KWMath::ToInteger<UINT64>(std::fmod(std::fabs(units), 0x1p64));
    return units < 0.0 ? 0 - magnitude : magnitude;
}

UINT64 Saturated(double units, UINT32 width, CFixedPoint::eSIGN sign) noexcept
{
    if (sign == CFixedPoint::eSIGN::Unsigned)
        return std::min(KWMath::ToInteger<UINT64>(units), LowBits(width));
    if (width == 0)
        return 0;
    const INT64 highest = static_cast<INT64>(LowBits(width - 1));
    const INT64 lowest = -highest - 1;
    return static_cast<UINT64>(KWMath::Bound(lowest, KWMath::ToInteger<INT64>(units), highest));
}
} // namespace

CFixedPoint::CFixedPoint(double value, UINT32 integerWidth, UINT32 fractionWidth, eSIGN sign,
                         eROUNDING rounding, eOVERFLOW overflow) noexcept
{
    const UINT32 fraction = std::min(fractionWidth, kWidest);
    const UINT32 width = fraction + std::min(integerWidth, kWidest - fraction);
    const double units = Scaled(value, fraction, rounding);
    const UINT64 word =
        overflow == eOVERFLOW::Wrap ? Wrapped(units) : Saturated(units, width, sign);
    m_word = word & LowBits(width);
}
