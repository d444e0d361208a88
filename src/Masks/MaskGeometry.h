// SPDX-License-Identifier: MIT
#pragma once

#include "KWMath.h"
#include "Masks/Mask.h"

#include <algorithm>

/** Where the points of a trace lie in a frame. Every step rounds, and none turns the order of two
    values round: what holds for the extremes of a stretch holds for each of its points. */
namespace NMasks
{
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
    /** Looks near where it should be by calculation; with intervals that vanish beside times, which
        no calculation finds, everywhere. */
    template <class TIsThere>
    UINT32 First(double x, TIsThere isThere) const
    {
        const double time = x * m_frame.timeScale + m_frame.left;
        const double index = (time - m_info.start) / m_info.interval;
        const UINT32 guess = std::min(KWMath::ToInteger<UINT32>(index), m_info.count);
        UINT32 begin = guess > 0 ? guess - 1 : 0;       // none before it is there
        UINT32 end = std::min(guess + 2, m_info.count); // is there, or the end
        begin = begin > 0 && isThere(X(begin - 1), x) ? 0 : begin;
        end = end < m_info.count && !isThere(X(end), x) ? m_info.count : end;
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
