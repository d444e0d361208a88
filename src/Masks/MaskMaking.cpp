// SPDX-License-Identifier: MIT
#include "Masks/MaskedTrace.h"

#include <array>
#include <cmath>

namespace NMasks
{
namespace
{
constexpr INT32 kColumnCount = 500;  ///< across the screen
constexpr double kColumnsOfOne = 50; ///< division

using t_Columns = std::array<KW_MinMax, kColumnCount>;
/** And as many on either side of the screen: what may move into it. */
using t_AllColumns = std::array<KW_MinMax, 3 * kColumnCount>;

double EdgeOf(INT32 column)
{
    return column / kColumnsOfOne;
}

void Widen(KW_MinMax& column, const KW_MinMax& by)
{
    column.minimum = std::min(column.minimum, by.minimum);
    column.maximum = std::max(column.maximum, by.maximum);
}

/** Columns with what the trace has in them: minimum above maximum where that is nothing. A point at
    an edge is in both columns. */
class CShown
{
public:
    explicit CShown(const CMaskedTrace& trace) : m_trace(trace)
    {
        m_columns.fill({kInfinite, -kInfinite});
    }

    /** @param width columns on either side of the screen that count, too */
    const t_AllColumns& Find(INT32 width)
    {
        const CGeometry& geometry = m_trace.Geometry();
        for (INT32 i = -width; i < kColumnCount + width; ++i)
        {
            const UINT32 begin = FirstAt(i);
            const UINT32 end = geometry.FirstBehind(EdgeOf(i + 1));
            if (begin < end)
            {
                Widen(At(i), m_trace.LevelsOf(begin, end)); // NaN changes nothing
            }
            AddEdge(i, begin);
        }
        AddEdge(kColumnCount + width, FirstAt(kColumnCount + width));
        return m_columns;
    }

private:
    UINT32 FirstAt(INT32 edge) const
    {
        return std::max(m_trace.Geometry().FirstAt(EdgeOf(edge)), m_trace.First());
    }

    KW_MinMax& At(INT32 column)
    {
        return m_columns[static_cast<std::size_t>(kColumnCount + column)];
    }

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
        for (INT32 column = std::max(edge - 1, -kColumnCount);
             column <= std::min(edge, 2 * kColumnCount - 1); ++column)
        {
            Widen(At(column), levels);
        }
    }

    const CMaskedTrace& m_trace;
    t_AllColumns m_columns;
};

/** The columns of the screen with all that is in those up to `width` columns away. */
t_Columns Widened(const t_AllColumns& columns, INT32 width)
{
    t_Columns widened;
    for (INT32 i = 0; i < kColumnCount; ++i)
    {
        KW_MinMax& column = widened[static_cast<std::size_t>(i)];
        column = {kInfinite, -kInfinite};
        for (INT32 j = i - width; j <= i + width; ++j)
        {
            Widen(column, columns[static_cast<std::size_t>(kColumnCount + j)]);
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
            const double most =
                isBefore && isBehind ? farther(before, behind) : (isBefore ? before : behind);
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
    const bool isWidth =
        widthX >= 0 && widthX <= kColumnCount / kColumnsOfOne && widthY >= 0 && widthY <= kFarthest;
    if (!isWidth)
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    const CMaskedTrace masked(record, trace, frame);
    const auto columns = KWMath::ToInteger<INT32>(std::ceil(widthX * kColumnsOfOne));
    const t_Columns wide = Widened(CShown(masked).Find(columns), columns);
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
