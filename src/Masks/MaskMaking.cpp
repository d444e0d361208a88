// SPDX-License-Identifier: MIT
#include "Masks/MaskedTrace.h"

#include <array>
#include <cmath>
#include <limits>

namespace NMasks
{
namespace
{
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kFarthest = eKW_MASK_FARTHEST;
constexpr INT32 kColumnCount = 500;  ///< across the screen
constexpr double kColumnsOfOne = 50; ///< division

using t_Columns = std::array<KW_MinMax, kColumnCount>;

double EdgeOf(INT32 column)
{
    return column / kColumnsOfOne;
}

void Widen(KW_MinMax& column, const KW_MinMax& by)
{
    column.minimum = std::min(column.minimum, by.minimum);
    column.maximum = std::max(column.maximum, by.maximum);
}

/** Columns of the screen with what the trace has in them: minimum above maximum where that is
    nothing. A point at an edge is in both columns. */
class CShown
{
public:
    explicit CShown(const CMaskedTrace& trace) : m_trace(trace)
    {
        m_columns.fill({kInfinite, -kInfinite});
    }

    const t_Columns& Find()
    {
        const CGeometry& geometry = m_trace.Geometry();
        for (INT32 i = 0; i < kColumnCount; ++i)
        {
            const UINT32 begin = std::max(geometry.FirstAt(EdgeOf(i)), m_trace.First());
            const UINT32 end = geometry.FirstBehind(EdgeOf(i + 1));
            if (begin < end)
            {
                const KW_MinMax levels = m_trace.LevelsOf(begin, end);
                Widen(m_columns[static_cast<std::size_t>(i)], levels); // NaN changes nothing
            }
            AddEdge(i, begin);
        }
        AddEdge(kColumnCount, std::max(geometry.FirstAt(EdgeOf(kColumnCount)), m_trace.First()));
        return m_columns;
    }

private:
    /** The trace between two points goes through both columns at an edge. */
    void AddEdge(INT32 edge, UINT32 point)
    {
        if (point <= m_trace.First() || point >= m_trace.Geometry().Count())
        {
            return;
        }
        const double left = m_trace.Geometry().X(point - 1);
        const double right = m_trace.Geometry().X(point);
        const KW_MinMax from = m_trace.LevelsOf(point - 1, point);
        const KW_MinMax to = m_trace.LevelsOf(point, point + 1);
        const double part = right > left ? (EdgeOf(edge) - left) / (right - left) : 0.0;
        const KW_MinMax levels{from.minimum + (to.minimum - from.minimum) * part,
                               from.maximum + (to.maximum - from.maximum) * part};
        for (const INT32 column : {edge - 1, edge})
        {
            if (column >= 0 && column < kColumnCount)
            {
                Widen(m_columns[static_cast<std::size_t>(column)], levels);
            }
        }
    }

    const CMaskedTrace& m_trace;
    t_Columns m_columns;
};

/** The columns with all that is in those up to `width` columns away. */
t_Columns Widened(const t_Columns& columns, INT32 width)
{
    t_Columns widened;
    for (INT32 i = 0; i < kColumnCount; ++i)
    {
        KW_MinMax& column = widened[static_cast<std::size_t>(i)];
        column = {kInfinite, -kInfinite};
        const INT32 last = std::min(i + width, kColumnCount - 1);
        for (INT32 j = std::max(i - width, 0); j <= last; ++j)
        {
            Widen(column, columns[static_cast<std::size_t>(j)]);
        }
    }
    return widened;
}

/** The middle one of three points at one level says nothing. */
void Append(KW_MaskLine& line, const KW_MaskPoint& point)
{
    const std::size_t count = line.size();
    const bool isFlat = count >= 2 && !line[count - 2].isEnd && !line[count - 1].isEnd &&
                        line[count - 2].y == point.y && line[count - 1].y == point.y;
    if (isFlat)
    {
        line.pop_back();
    }
    line.push_back(point);
}

/** A line through the edges of the columns that is not within any of them.
    @param levelOf level of a column; infinite for none
    @param farther the level that leaves more room */
template <class TLevelOf, class TFarther>
KW_MaskLine LineAround(const t_Columns& columns, TLevelOf levelOf, TFarther farther)
{
    KW_MaskLine line;
    for (INT32 edge = 0; edge <= kColumnCount; ++edge)
    {
        const auto level = [&](INT32 column)
        {
            const bool isIn = column >= 0 && column < kColumnCount;
            return isIn ? levelOf(columns[static_cast<std::size_t>(column)]) : kInfinite;
        };
        const double before = level(edge - 1);
        const double behind = level(edge);
        const bool isBefore = std::abs(before) <= kFarthest;
        const bool isBehind = std::abs(behind) <= kFarthest;
        if (isBefore || isBehind)
        {
            const double most = isBefore && isBehind ? farther(before, behind)
                                                     : (isBefore ? before : behind);
            Append(line, {EdgeOf(edge), most, !isBehind && edge < kColumnCount});
        }
    }
    if (!line.empty())
    {
        line.back().isEnd = false; // nothing follows
    }
    return line;
}
} // namespace
} // namespace NMasks

KW_ACCEPTANCE KW_MakeMask(const CKWRecord& record, UINT32 trace, const KW_MaskFrame& frame,
                          double widthX, double widthY, KW_Mask& mask)
{
    using namespace NMasks;
    if (const KW_ACCEPTANCE code = CheckTrace(record, trace, frame); !KW_IsAccepted(code))
    {
        return code;
    }
    const bool isWidth = widthX >= 0 && widthX <= kFarthest && widthY >= 0 && widthY <= kFarthest;
    if (!isWidth)
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    const CMaskedTrace masked(record, trace, frame);
    const double columns = std::min<double>(std::ceil(widthX * kColumnsOfOne), kColumnCount);
    const t_Columns wide = Widened(CShown(masked).Find(), KWMath::ToInteger<INT32>(columns));
    KW_Mask made;
    made.frame = frame;
    made.upper = LineAround(
        wide, [widthY](const KW_MinMax& column) { return column.maximum + widthY; },
        [](double a, double b) { return std::max(a, b); });
    made.lower = LineAround(
        wide, [widthY](const KW_MinMax& column) { return column.minimum - widthY; },
        [](double a, double b) { return std::min(a, b); });
    if (made.IsEmpty())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    mask = std::move(made);
    return eKW_ACC_OK;
}
