// SPDX-License-Identifier: MIT
#include "Masks/MaskTest.h"

#include "Masks/MaskWalk.h"
#include "Masks/MaskedTrace.h"

#include <cmath>

namespace NMasks
{
namespace
{
/** Where a stretch is parted that can not be judged as a whole: blocks of the pyramid stay whole.
 */
UINT32 MiddleOf(UINT32 begin, UINT32 end)
{
    constexpr UINT32 kBlock = 64;
    const UINT32 middle = begin + (end - begin) / 2;
    return end - begin < 4 * kBlock ? middle : middle / kBlock * kBlock;
}

/** A line within a stretch: its levels lie between those at both ends. */
class CLimit
{
public:
    CLimit(const CWalk& walk, double left, double right)
        : m_first(walk.At(left)), m_last(walk.At(right))
    {
    }
    double Lowest() const { return std::min(m_first, m_last); }
    double Highest() const { return std::max(m_first, m_last); }

private:
    const double m_first;
    const double m_last;
};

/** Which lines are crossed at all. */
class CVerdict
{
public:
    CVerdict(const CMaskedTrace& trace, const KW_Mask& mask)
        : m_trace(trace), m_upper(mask.upper, trace.Geometry(), kInfinite),
          m_lower(mask.lower, trace.Geometry(), -kInfinite)
    {
    }

    KW_ZEL_LIMIT Of(UINT32 first)
    {
        const UINT32 count = m_trace.Geometry().Count();
        while (first < count && !(m_isOver && m_isUnder))
        {
            m_upper.GoTo(first);
            m_lower.GoTo(first);
            const UINT32 end = std::min(m_upper.End(), m_lower.End());
            if (m_upper.IsLimited() || m_lower.IsLimited())
            {
                Test(first, end);
            }
            first = end;
        }
        const KW_ZEL_LIMIT under =
            m_isOver ? eKW_ZEL_LIMIT_OVER_AND_UNDERFLOW : eKW_ZEL_LIMIT_UNDERFLOW;
        return m_isUnder ? under : (m_isOver ? eKW_ZEL_LIMIT_OVERFLOW : eKW_ZEL_LIMIT_INSIDE);
    }

private:
    /** A stretch within one part of each line. */
    void Test(UINT32 begin, UINT32 end)
    {
        const KW_MinMax levels = m_trace.LevelsOf(begin, end);
        const bool isNear = levels.maximum > m_upper.Lowest() || levels.minimum < m_lower.Highest();
        if (isNear) // no reason to calculate where most traces run
        {
            Compare(levels, begin, end);
        }
    }

    void Compare(const KW_MinMax& levels, UINT32 begin, UINT32 end)
    {
        const double left = m_trace.Geometry().X(begin);
        const double right = m_trace.Geometry().X(end - 1);
        const CLimit upper(m_upper, left, right);
        const CLimit lower(m_lower, left, right);
        m_isOver |= levels.maximum > upper.Highest();
        m_isUnder |= levels.minimum < lower.Lowest();
        const bool isOpen = (!m_isOver && levels.maximum > upper.Lowest()) ||
                            (!m_isUnder && levels.minimum < lower.Highest());
        if (isOpen) // of more than one point: one is decided
        {
            const UINT32 middle = MiddleOf(begin, end);
            Test(begin, middle);
            Test(middle, end);
        }
    }

    const CMaskedTrace& m_trace;
    CWalk m_upper;
    CWalk m_lower;
    bool m_isOver = false;
    bool m_isUnder = false;
};

/** The places where one line is crossed. */
class CSearch
{
public:
    CSearch(const CMaskedTrace& trace, std::span<KW_MaskViolation> violations)
        : m_trace(trace), m_violations(violations)
    {
    }

    void Find(const KW_MaskLine& line, KW_ZEL_LIMIT limit)
    {
        m_current = {};
        m_isUpper = limit == eKW_ZEL_LIMIT_OVERFLOW;
        CWalk walk(line, m_trace.Geometry(), m_isUpper ? kInfinite : -kInfinite);
        const UINT32 count = m_trace.Geometry().Count();
        for (UINT32 first = m_trace.First(); first < count; first = walk.End())
        {
            walk.GoTo(first);
            Look(walk, first, walk.End());
        }
        End();
    }

    UINT32 Count() const { return m_count; }

private:
    void Look(const CWalk& walk, UINT32 begin, UINT32 end)
    {
        constexpr UINT32 kFew = 32;
        if (!walk.IsLimited() || Passes(walk, begin, end))
        {
            return End();
        }
        if (end - begin > kFew)
        {
            const UINT32 middle = MiddleOf(begin, end);
            Look(walk, begin, middle);
            return Look(walk, middle, end);
        }
        for (; begin < end; ++begin)
        {
            LookAt(walk, begin);
        }
    }

    bool Passes(const CWalk& walk, UINT32 begin, UINT32 end) const
    {
        const KW_MinMax levels = m_trace.LevelsOf(begin, end);
        const CLimit limit(walk, m_trace.Geometry().X(begin), m_trace.Geometry().X(end - 1));
        // Without a valid point both are NaN.
        return m_isUpper ? !(levels.maximum > limit.Lowest()) : !(levels.minimum < limit.Highest());
    }

    void LookAt(const CWalk& walk, UINT32 point)
    {
        const KW_MinMax levels = m_trace.LevelsOf(point, point + 1);
        const double limit = walk.At(m_trace.Geometry().X(point));
        const double excess = m_isUpper ? levels.maximum - limit : limit - levels.minimum;
        const bool isBeyond = m_isUpper ? levels.maximum > limit : levels.minimum < limit;
        if (!isBeyond)
        {
            return End();
        }
        if (m_current.line == eKW_ZEL_LIMIT_INSIDE)
        {
            m_current.line = m_isUpper ? eKW_ZEL_LIMIT_OVERFLOW : eKW_ZEL_LIMIT_UNDERFLOW;
            m_current.first = point;
        }
        m_current.last = point;
        if (excess > m_current.excess)
        {
            m_current.worst = point;
            m_current.excess = excess;
        }
    }

    void End()
    {
        if (m_current.line == eKW_ZEL_LIMIT_INSIDE)
        {
            return;
        }
        if (m_count < m_violations.size())
        {
            m_violations[m_count] = m_current;
        }
        ++m_count;
        m_current = {};
    }

    const CMaskedTrace& m_trace;
    const std::span<KW_MaskViolation> m_violations;
    bool m_isUpper = true;
    KW_MaskViolation m_current; ///< its line: inside when there is none
    UINT32 m_count = 0;
};
} // namespace
} // namespace NMasks

using namespace NMasks;

KW_ACCEPTANCE KW_TestMask(const CKWRecord& record, UINT32 trace, const KW_Mask& mask,
                          const KW_MaskFrame& frame, UINT32 first, KW_ZEL_LIMIT& line)
{
    const KW_ACCEPTANCE code = CheckTrace(record, trace, frame);
    if (KW_IsAccepted(code))
    {
        const CMaskedTrace masked(record, trace, frame);
        line = CVerdict(masked, mask).Of(std::max(first, masked.First()));
    }
    return code;
}

KW_ACCEPTANCE KW_FindMaskViolations(const CKWRecord& record, UINT32 trace, const KW_Mask& mask,
                                    const KW_MaskFrame& frame,
                                    std::span<KW_MaskViolation> violations, UINT32& count)
{
    const KW_ACCEPTANCE code = CheckTrace(record, trace, frame);
    if (KW_IsAccepted(code))
    {
        const CMaskedTrace masked(record, trace, frame);
        CSearch search(masked, violations);
        search.Find(mask.upper, eKW_ZEL_LIMIT_OVERFLOW);
        search.Find(mask.lower, eKW_ZEL_LIMIT_UNDERFLOW);
        count = search.Count();
    }
    return code;
}
