// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Slots.h"

namespace NStreams
{
/** The curve between the points of a trace, from left to right. */
class CCurve
{
public:
    /** @param count points that are shown; > 0
        @param isSinc sin x / x instead of straight lines
        @param isHigh of pairs the maxima */
    CCurve(const t_Trace& trace, UINT32 count, bool isSinc, bool isHigh);

    /** Sample at a position, 0 to count − 1; NaN beside an invalid point. Positions that rise take
        each point from the trace once. */
    double At(double position);

private:
    static constexpr UINT32 kTaps = 16;
    static constexpr UINT32 kBefore = kTaps / 2 - 1; ///< points before the one at the left

    float Point(INT64 index) const;
    void MoveTo(UINT32 base);
    float Sinc(double fraction) const;

    const t_Trace& m_trace;
    const INT64 m_last;
    const bool m_isSinc;
    const bool m_isHigh;
    INT64 m_base = -2 * INT64{kTaps}; ///< of the point at the left
    alignas(16) float m_points[kTaps] = {};
};
} // namespace NStreams
