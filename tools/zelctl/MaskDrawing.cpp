// SPDX-License-Identifier: MIT
#include "MaskDrawing.h"

#include "WaveDrawing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double kWidth = 10.0; ///< of the screen, in divisions
constexpr double kEdge = 4.0;   ///< its upper one
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/** A line at both ends of each column, and at its points in it. */
std::vector<t_Extent> ExtentsOf(const KW_Mask& mask, bool isUpper, int columns)
{
    const auto levelAt = [&mask, isUpper](double x)
    {
        const KW_MinMax limits = KW_GetMaskLimits(mask, x);
        const double level = isUpper ? limits.maximum : limits.minimum;
        return std::isfinite(level) ? level : kNone;
    };
    const KW_MaskLine& line = isUpper ? mask.upper : mask.lower;
    std::vector<t_Extent> extents;
    for (int i = 0; i < columns; ++i)
    {
        const double left = kWidth * i / columns;
        const double right = kWidth * (i + 1) / columns;
        t_Extent extent{std::fmin(levelAt(left), levelAt(right)),
                        std::fmax(levelAt(left), levelAt(right))};
        auto point = std::lower_bound(line.begin(), line.end(), left,
                                      [](const KW_MaskPoint& a, double x) { return a.x < x; });
        for (; point != line.end() && point->x <= right; ++point)
        {
            extent = {std::fmin(extent.least, point->y), std::fmax(extent.most, point->y)};
        }
        extents.push_back(extent);
    }
    return extents;
}
} // namespace

t_Diagram DrawMask(const KW_Mask& mask)
{
    double edge = kEdge;
    for (const KW_MaskLine* const line : {&mask.upper, &mask.lower})
    {
        for (const KW_MaskPoint& point : *line)
        {
            edge = std::max(edge, std::abs(point.y));
        }
    }
    t_Diagram diagram{{},
                      {QStringLiteral("divisions"), 0.0, kWidth, 1.0},
                      {QStringLiteral("divisions"), -edge, edge, GetGridStep(2 * edge, 8)}};
    for (const bool isUpper : {true, false})
    {
        diagram.curves.emplace_back([mask, isUpper](int columns)
                                    { return ExtentsOf(mask, isUpper, columns); });
    }
    return diagram;
}

KW_MaskFrame FrameAround(const CKWRecord& record, UINT32 trace)
{
    constexpr double kHeight = 6.0;
    const KW_TraceInfo info = record.GetTrace(trace);
    const t_WaveView view = GetWholeView(record, {trace});
    const KW_MinMax range = GetWaveFigures(record, trace).range;
    const double height = range.maximum - range.minimum;
    KW_MaskFrame frame;
    frame.unit = info.unit;
    frame.left = view.from;
    frame.timeScale = (view.to - view.from) / kWidth;
    frame.middle = std::isnan(height) ? 0.0 : (range.maximum + range.minimum) / 2.0;
    frame.levelScale = height > 0 ? height / kHeight : 1.0;
    return frame;
}
