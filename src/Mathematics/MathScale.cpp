// SPDX-License-Identifier: MIT
#include "KWMath.h"
#include "Mathematics/Mathematics.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double kHalfScreen = 4.0; ///< divisions above and below the middle
constexpr double kMostPosition = 4.0;
constexpr double kPositions = 50.0; ///< of one division
constexpr int kDecades = 12;        ///< of scales, below and above 1

/** Where the curve would lie with a scale. */
double PositionFor(const KW_MinMax& range, double scale)
{
    const double middle = range.minimum / scale / 2.0 + range.maximum / scale / 2.0;
    const double position = KWMath::Round(-middle * kPositions) / kPositions;
    return KWMath::Bound(-kMostPosition, position, kMostPosition);
}

bool Fits(const KW_MinMax& range, const KW_MathScale& scale)
{
    return range.minimum / scale.scale + scale.position >= -kHalfScreen &&
           range.maximum / scale.scale + scale.position <= kHalfScreen;
}
} // namespace

bool KW_FindMathScale(const KW_MinMax& range, KW_MathScale& found)
{
    if (!std::isfinite(range.minimum) || !std::isfinite(range.maximum) ||
        range.minimum > range.maximum)
    {
        return false;
    }
    const bool isLine = range.minimum == range.maximum;
    const KW_MinMax shown{isLine ? std::min(range.minimum, 0.0) : range.minimum,
                          isLine ? std::max(range.maximum, 0.0) : range.maximum};
    found = {};
    if (shown.minimum == shown.maximum)
    {
        return true;
    }
    for (int decade = -kDecades; decade <= kDecades; ++decade)
    {
        for (const double step : {1.0, 2.0, 4.0, 5.0})
        {
            found.scale = KWMath::DecimalProduct(step, KWMath::Pow10(decade));
            found.position = PositionFor(shown, found.scale);
            if (Fits(shown, found) || decade == kDecades)
            {
                return true;
            }
        }
    }
    return true;
}
