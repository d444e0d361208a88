// SPDX-License-Identifier: MIT
#include "Mathematics/Intervals.h"

#include <algorithm>
#include <cmath>

namespace NMathematics
{
namespace
{
/** Of an operation that has its extremes at the ends of both. */
t_Interval AtTheEnds(KW_ZEL_MATHEMATICS_TYPE type, t_Interval a, t_Interval b)
{
    const double ends[] = {Compute(type, a.low, b.low), Compute(type, a.low, b.high),
                           Compute(type, a.high, b.low), Compute(type, a.high, b.high)};
    t_Interval all{ends[0], ends[0]};
    for (const double end : ends)
    {
        all.low = std::isnan(end) ? end : std::min(all.low, end);
        all.high = std::isnan(end) ? end : std::max(all.high, end);
    }
    return all;
}

bool HasZero(t_Interval a)
{
    return a.low <= 0.0 && a.high >= 0.0;
}

/** Absolute values and squares fall towards zero, and rise beyond it. */
t_Interval FromZero(KW_ZEL_MATHEMATICS_TYPE type, t_Interval a)
{
    t_Interval all = AtTheEnds(type, a, a);
    all.low = HasZero(a) && !std::isnan(all.low) ? 0.0 : all.low;
    return all;
}
} // namespace

t_Interval ComputeInterval(KW_ZEL_MATHEMATICS_TYPE type, t_Interval a, t_Interval b)
{
    t_Interval all;
    switch (type)
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ABS:
    case eKW_ZEL_MATHEMATICS_TYPE_SQUARE:
        all = FromZero(type, a);
        break;
    case eKW_ZEL_MATHEMATICS_TYPE_DIVIDE:
        all = HasZero(b) ? t_Interval{} : AtTheEnds(type, a, b);
        break;
    case eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL:
        all = HasZero(a) ? t_Interval{} : AtTheEnds(type, a, a);
        break;
    default:
        all = AtTheEnds(type, a, HasTwoSources(type) ? b : a);
        break;
    }
    return std::isnan(all.low) || std::isnan(all.high) ? t_Interval{} : all;
}
} // namespace NMathematics
