// SPDX-License-Identifier: MIT
#pragma once

#include "Masks/MaskGeometry.h"

namespace NMasks
{
/** Level between two points of a line, and at the first one. */
double LevelAt(const KW_MaskPoint& from, const KW_MaskPoint& to, double x);

/** Goes along a line from left to right, by the points of a trace. */
class CWalk
{
public:
    /** @param none level that stands for no limit: +∞ of upper lines, −∞ of lower ones */
    CWalk(const KW_MaskLine& line, const CGeometry& geometry, double none);

    /** Where the part ends that the walk is in: the next point of the trace is in another one. */
    UINT32 End() const { return m_end; }
    /** Goes on to the part of this point; not back. */
    void GoTo(UINT32 point);
    /** Level in this part. */
    double At(double x) const { return m_to == nullptr ? m_level : LevelAt(m_to[-1], *m_to, x); }
    /** The level in all of this part is not below the first, nor above the second one. */
    ///@{
    double Lowest() const { return m_to == nullptr ? m_level : std::min(m_to[-1].y, m_to->y); }
    double Highest() const { return m_to == nullptr ? m_level : std::max(m_to[-1].y, m_to->y); }
    ///@}
    bool IsLimited() const { return m_to != nullptr || m_level != m_none; }

private:
    void Next();
    /** The part behind the points before `m_next`. */
    void Leave();
    void Hold(double level, UINT32 end);
    UINT32 BeginOfNext() const;

    const KW_MaskLine& m_line;
    const CGeometry& m_geometry;
    const double m_none;
    std::size_t m_next = 0;             ///< point of the line
    bool m_isAtPoint = false;           ///< in the part that is the place of the one before
    double m_level = 0.0;               ///< of a part without slope
    UINT32 m_end = 0;                   ///< point of the trace
    const KW_MaskPoint* m_to = nullptr; ///< right end of a part with slope
};
} // namespace NMasks
