// SPDX-License-Identifier: MIT
#include "Streams/Columns.h"

#include "Streams/Curve.h"
#include "Streams/Pyramid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NStreams
{
namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/** Physical values; a negative scale turns them round. A copy, which no column can change. */
struct t_Scaling
{
    explicit t_Scaling(const KW_TraceInfo& info) : scale(info.scale), offset(info.offset) {}

    KW_MinMax operator()(double low, double high) const
    {
        const double a = low * scale + offset;
        const double b = high * scale + offset;
        return scale < 0 ? KW_MinMax{b, a} : KW_MinMax{a, b};
    }

    double scale;
    double offset;
};

/** Each column with the points that lie in it, the one at or before its left edge and the one at
    or before its right edge among them, unless that is the end of the picture. */
template <class TPoints, class TColumn, class TEmpty, class TFound>
void FindPoints(const t_Picture& picture, std::span<TColumn> columns, TEmpty empty, TFound found)
{
    using t_Entry = typename TPoints::t_Entry;
    const CStretch<TPoints> stretch(picture.trace);
    const double end = std::min<double>(std::ceil(picture.first + picture.count), picture.shown);
    const auto all = static_cast<double>(columns.size());
    double number = 0.0;
    double left = picture.first;
    for (std::size_t i = 0; i < columns.size(); ++i)
    {
        number += 1.0;
        const double right = picture.EdgeOf(number, all);
        columns[i] = empty;
        const double begin = std::max(left, 0.0);
        if (right >= 0 && begin < end)
        {
            t_Entry low;
            t_Entry high;
            stretch.Find(static_cast<UINT32>(begin), static_cast<UINT32>(std::min(right + 1, end)),
                         low, high);
            columns[i] = found(low, high);
        }
        left = right;
    }
}

/** Entries as CStretch finds them. */
template <class TPoints, class TEntry>
KW_MinMax ValuesOf(const t_Scaling& scaled, TEntry low, TEntry high)
{
    return TPoints::IsValid(low, high) ? scaled(TPoints::LowValue(low), high)
                                       : KW_MinMax{kNaN, kNaN};
}

template <class TPoints>
void FindValues(const t_Picture& picture, std::span<KW_MinMax> columns)
{
    FindPoints<TPoints>(picture, columns, KW_MinMax{kNaN, kNaN},
                        [scaled = t_Scaling(picture.trace.info)](auto low, auto high)
                        { return ValuesOf<TPoints>(scaled, low, high); });
}

template <class TPoints>
KW_MinMax FindStretch(const t_Trace& trace, UINT32 first, UINT32 end)
{
    typename TPoints::t_Entry low;
    typename TPoints::t_Entry high;
    CStretch<TPoints>(trace).Find(first, end, low, high);
    return ValuesOf<TPoints>(t_Scaling(trace.info), low, high);
}

/** Writes the lowest value of the curve in each column to the minimum, the highest to the maximum,
    or only one of both. */
void FollowCurve(const t_Picture& picture, CCurve curve, std::span<KW_MinMax> columns, bool isLow,
                 bool isHigh)
{
    const double last = picture.shown - 1.0;
    const auto all = static_cast<double>(columns.size());
    double number = 0.0;
    double left = picture.first;
    double known = kNaN; // position of `value`
    double value = kNaN;
    for (std::size_t i = 0; i < columns.size(); ++i)
    {
        number += 1.0;
        const double right = picture.EdgeOf(number, all);
        double low = kNaN;
        double high = kNaN;
        const auto see = [&](double position)
        {
            value = position == known ? value : curve.At(position);
            known = position;
            low = std::fmin(low, value);
            high = std::fmax(high, value);
        };
        if (right >= 0 && left <= last)
        {
            const double begin = std::max(left, 0.0);
            const double end = std::min(right, last);
            see(begin);
            for (double point = static_cast<UINT32>(begin) + 1.0; point < end; point += 1.0)
            {
                see(point);
            }
            see(end);
        }
        columns[i].minimum = isLow ? low : columns[i].minimum;
        columns[i].maximum = isHigh ? high : columns[i].maximum;
        left = right;
    }
}

void FindCurve(const t_Picture& picture, std::span<KW_MinMax> columns, bool isSinc)
{
    const t_Scaling scaled(picture.trace.info);
    const bool isPair = picture.trace.format == eKW_SAMPLES_MINMAX;
    FollowCurve(picture, CCurve(picture.trace, picture.shown, isSinc, false), columns, true,
                !isPair);
    if (isPair)
    {
        FollowCurve(picture, CCurve(picture.trace, picture.shown, isSinc, true), columns, false,
                    true);
    }
    for (KW_MinMax& column : columns)
    {
        column = scaled(column.minimum, column.maximum);
    }
}
} // namespace

KW_MinMax FindExtremes(const t_Trace& trace, UINT32 first, UINT32 end)
{
    switch (trace.format)
    {
    case eKW_SAMPLES_FLOAT:
        return FindStretch<t_FloatPoints>(trace, first, end);
    case eKW_SAMPLES_MINMAX:
        return FindStretch<t_PairPoints>(trace, first, end);
    default:
        return FindStretch<t_Int16Points>(trace, first, end);
    }
}

void FindColumns(const t_Picture& picture, std::span<KW_MinMax> columns,
                 KW_ZEL_INTERPOLATION_MODE interpolation)
{
    if (picture.shown == 0)
    {
        std::fill(columns.begin(), columns.end(), KW_MinMax{kNaN, kNaN});
    }
    else if (interpolation != eKW_ZEL_INTERPOLATION_MODE_SAMPLE_HOLD &&
             picture.count < static_cast<double>(columns.size()))
    {
        FindCurve(picture, columns, interpolation == eKW_ZEL_INTERPOLATION_MODE_SINX);
    }
    else if (picture.trace.format == eKW_SAMPLES_FLOAT)
    {
        FindValues<t_FloatPoints>(picture, columns);
    }
    else if (picture.trace.format == eKW_SAMPLES_MINMAX)
    {
        FindValues<t_PairPoints>(picture, columns);
    }
    else
    {
        FindValues<t_Int16Points>(picture, columns);
    }
}

void FindLines(const t_Picture& picture, std::span<KW_LineStates> columns)
{
    constexpr KW_LineStates kNone{t_LinePoints::kNoLow, t_LinePoints::kNoHigh};
    FindPoints<t_LinePoints>(picture, columns, kNone,
                             [](UINT8 low, UINT8 high) {
                                 return KW_LineStates{low, high};
                             });
}
} // namespace NStreams
