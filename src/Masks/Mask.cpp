// SPDX-License-Identifier: MIT
#include "Masks/Mask.h"

#include "Masks/MaskWalk.h"
#include "Masks/MaskedTrace.h"

#include <cmath>

using namespace NMasks;

namespace
{
bool IsWithinBounds(const KW_MaskPoint& point)
{
    return std::abs(point.x) <= kFarthest && std::abs(point.y) <= kFarthest; // NaN is not
}

bool IsOrdered(const KW_MaskPoint& left, const KW_MaskPoint& right)
{
    return left.x <= right.x;
}

template <class TVisit>
void VisitPoints(KW_Mask& mask, TVisit visit)
{
    for (KW_MaskLine* const line : {&mask.upper, &mask.lower})
    {
        for (KW_MaskPoint& point : *line)
        {
            visit(point);
        }
    }
}

/** The level of a line at x; `none` where there is no limit. */
double LevelOf(const KW_MaskLine& line, double x, double none)
{
    const auto next = std::upper_bound(line.begin(), line.end(), x,
                                       [](double a, const KW_MaskPoint& b) { return a < b.x; });
    if (next == line.begin())
    {
        return none;
    }
    auto point = std::prev(next);
    if (point->x < x)
    {
        const bool isNone = point->isEnd || next == line.end();
        return isNone ? none : NMasks::LevelAt(*point, *next, x);
    }
    double level = point->y;
    while (point != line.begin() && (--point)->x == x)
    {
        level = none > 0 ? std::max(level, point->y) : std::min(level, point->y);
    }
    return level;
}
} // namespace

KW_ACCEPTANCE NMasks::CheckTrace(const CKWRecord& record, UINT32 trace, const KW_MaskFrame& frame)
{
    const KW_TraceInfo info = record.GetTrace(trace);
    if (info.count == 0)
    {
        return eKW_ACC_BAD_INDEX;
    }
    const bool isOtherUnit = frame.unit != eKW_UNIT_NOT_DEFINED && info.unit != frame.unit;
    if (!KW_IsCurve(info.format) || isOtherUnit)
    {
        return eKW_ACC_WRONG_KIND;
    }
    return KW_IsMaskFrame(frame) ? eKW_ACC_OK : eKW_ACC_NOT_A_NUMBER;
}

bool KW_IsMaskFrame(const KW_MaskFrame& frame)
{
    return std::isfinite(frame.left) && std::isfinite(frame.middle) && frame.timeScale > 0 &&
           frame.timeScale < kInfinite && frame.levelScale > 0 && frame.levelScale < kInfinite;
}

KW_ACCEPTANCE KW_CheckMaskLine(const KW_MaskLine& line)
{
    if (line.size() > eKW_MASK_POINTS)
    {
        return eKW_ACC_CONTAINER_FULL;
    }
    if (!std::all_of(line.begin(), line.end(), IsWithinBounds))
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    const auto wrong = std::adjacent_find(line.begin(), line.end(),
                                          [](const auto& left, const auto& right)
                                          { return !IsOrdered(left, right); });
    return wrong == line.end() ? eKW_ACC_OK : eKW_ACC_LIMITS_CROSSED;
}

KW_ACCEPTANCE KW_CheckMask(const KW_Mask& mask)
{
    if (!KW_IsMaskFrame(mask.frame))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    return std::max(KW_CheckMaskLine(mask.upper), KW_CheckMaskLine(mask.lower));
}

KW_ACCEPTANCE KW_PlaceMask(KW_Mask& mask, double positionY, double stretchY)
{
    if (!std::isfinite(positionY) || !std::isfinite(stretchY))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    double lowest = kInfinite;
    double highest = -kInfinite;
    VisitPoints(mask,
                [&lowest, &highest](const KW_MaskPoint& point)
                {
                    lowest = std::min(lowest, point.y);
                    highest = std::max(highest, point.y);
                });
    const double middle = (lowest + highest) / 2;
    VisitPoints(mask,
                [=](KW_MaskPoint& point)
                {
                    // Not stretched, a level stays the very same.
                    const double level =
                        stretchY == 1.0 ? point.y : middle + (point.y - middle) * stretchY;
                    point.y = KWMath::Bound(-kFarthest, level + positionY, kFarthest);
                });
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_MoveMaskToFrame(KW_Mask& mask, const KW_MaskFrame& frame)
{
    if (!KW_IsMaskFrame(frame))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    if (frame.unit != mask.frame.unit)
    {
        return eKW_ACC_WRONG_KIND;
    }
    KW_Mask moved = mask;
    const KW_MaskFrame& old = mask.frame;
    VisitPoints(moved,
                [&old, &frame](KW_MaskPoint& point)
                {
                    const double time = point.x * old.timeScale + old.left;
                    const double level = point.y * old.levelScale + old.middle;
                    point.x = (time - frame.left) / frame.timeScale;
                    point.y = (level - frame.middle) / frame.levelScale;
                });
    moved.frame = frame;
    const KW_ACCEPTANCE code = KW_CheckMask(moved);
    if (KW_IsAccepted(code))
    {
        mask = std::move(moved);
    }
    return code;
}

KW_ACCEPTANCE KW_InsertMaskPoint(KW_MaskLine& line, const KW_MaskPoint& point)
{
    if (line.size() >= eKW_MASK_POINTS)
    {
        return eKW_ACC_CONTAINER_FULL;
    }
    if (!IsWithinBounds(point))
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    line.insert(std::upper_bound(line.begin(), line.end(), point,
                                 [](const auto& a, const auto& b) { return a.x < b.x; }),
                point);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_MoveMaskPoint(KW_MaskLine& line, UINT32 index, const KW_MaskPoint& point)
{
    if (index >= line.size())
    {
        return eKW_ACC_BAD_INDEX;
    }
    if (!IsWithinBounds(point))
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    const bool isOrdered = (index == 0 || IsOrdered(line[index - 1], point)) &&
                           (index + 1 == line.size() || IsOrdered(point, line[index + 1]));
    if (!isOrdered)
    {
        return eKW_ACC_LIMITS_CROSSED;
    }
    line[index] = point;
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_RemoveMaskPoint(KW_MaskLine& line, UINT32 index)
{
    if (index >= line.size())
    {
        return eKW_ACC_BAD_INDEX;
    }
    line.erase(line.begin() + static_cast<std::ptrdiff_t>(index));
    return eKW_ACC_OK;
}

KW_MinMax KW_GetMaskLimits(const KW_Mask& mask, double x)
{
    return {LevelOf(mask.lower, x, -kInfinite), LevelOf(mask.upper, x, kInfinite)};
}
