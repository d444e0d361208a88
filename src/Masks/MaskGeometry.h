// SPDX-License-Identifier: MIT
#pragma once

#include "KWMath.h"
#include "Masks/Mask.h"

#include <algorithm>
#include <limits>

/** Where the points of a trace lie in a frame. Every step rounds, and none turns the order of two
    values round: what holds for the extremes of a stretch holds for each of its points. */
namespace NMasks
{
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kFarthest = eKW_MASK_FARTHEST;

class CGeometry
{
public:
    CGeometry(const KW_TraceInfo& info, const KW_MaskFrame& frame) : m_info(info), m_frame(frame) {}

    UINT32 Count() const { return m_info.count; }
    double X(UINT32 point) const
    {
        return ((m_info.start + point * m_info.interval) - m_frame.left) / m_frame.timeScale;
    }
    double Y(double level) const { return (level - m_frame.middle) / m_frame.levelScale; }

    /** The first point at x or to the right of it; the trace's count when there is none. */
    UINT32 FirstAt(double x) const
    {
        return First(x, [](double a, double b) { return a >= b; });
    }
    /** The first point to the right of x. */
    UINT32 FirstBehind(double x) const
    {
        return First(x, [](double a, double b) { return a > b; });
    }

private:
    /** Looks where it should be by calculation, then, as with intervals that vanish beside times,
        everywhere. */
    template <class TIsThere>
    UINT32 First(double x, TIsThere isThere) const
    {
        const double time = x * m_frame.timeScale + m_frame.left;
        const double index = (time - m_info.start) / m_info.interval;
        UINT32 begin = 0;
        UINT32 end = m_info.count;
        if (const auto guess = KWMath::ToInteger<UINT32>(index); guess < end)
        {
            const bool isBehind = !isThere(X(guess), x);
            const UINT32 next = isBehind ? guess + 1 : guess;
            const bool isNext = isBehind ? next == end || isThere(X(next), x)
                                         : next == 0 || !isThere(X(next - 1), x);
            if (isNext)
            {
                return next;
            }
            (isBehind ? begin : end) = next;
        }
        while (begin < end)
        {
            const UINT32 middle = begin + (end - begin) / 2;
            const bool isIn = isThere(X(middle), x);
            (isIn ? end : begin) = isIn ? middle : middle + 1;
        }
        return begin;
    }

    const KW_TraceInfo m_info;
    const KW_MaskFrame m_frame;
};
} // namespace NMasks
