// SPDX-License-Identifier: MIT
#include "Spectrum/SpectrumAxis.h"

#include "KWMath.h"
#include "Rules/NumberRules.h"
#include "Spectrum/SpectrumHardware.h"

#include <algorithm>
#include <cmath>

using NSpectrumHardware::kLogarithmicStartMinimum;
using NSpectrumHardware::kSmallestSpan;

namespace
{
constexpr double kDecade = 10.0;
/** From the center of a decade to its end. */
const double kHalfDecade = std::sqrt(kDecade);
constexpr double kAgreement = 1e-12;

bool Agree(double a, double b, double scale)
{
    return std::fabs(a - b) <= kAgreement * scale;
}

bool LiesWithin(const t_SpectrumAxis& min, const t_SpectrumAxis& axis, const t_SpectrumAxis& max)
{
    return min.start <= axis.start && axis.start <= max.start && min.stop <= axis.stop &&
           axis.stop <= max.stop && min.span <= axis.span && axis.span <= max.span &&
           min.center <= axis.center && axis.center <= max.center;
}
} // namespace

double CSpectrumAxis::LowestStart() const
{
    return IsLogarithmic() ? kLogarithmicStartMinimum : 0.0;
}

double CSpectrumAxis::NarrowestStop(double start) const
{
    return IsLogarithmic() ? start * kDecade : start + kSmallestSpan;
}

double CSpectrumAxis::WidestStart(double stop) const
{
    return IsLogarithmic() ? stop / kDecade : stop - kSmallestSpan;
}

double CSpectrumAxis::Middle(double start, double stop) const
{
    return IsLogarithmic() ? std::sqrt(start * stop) : (start + stop) / 2.0;
}

/** Ends that are far enough apart but for rounding. */
t_SpectrumAxis CSpectrumAxis::BetweenEnds(double start, double stop) const
{
    t_SpectrumAxis axis{start, stop, std::max(kSmallestSpan, stop - start), Middle(start, stop)};
    axis.center = KWMath::Bound(Minimum(axis).center, axis.center, Maximum(axis).center);
    return axis;
}

t_SpectrumAxis CSpectrumAxis::FromEnds(double start, double stop) const
{
    const double right = KWMath::Bound(NarrowestStop(LowestStart()), stop, m_highest);
    return BetweenEnds(KWMath::Bound(LowestStart(), start, WidestStart(right)), right);
}

t_SpectrumAxis CSpectrumAxis::WithStart(const t_SpectrumAxis& axis, double start) const
{
    return BetweenEnds(start, std::min(std::max(axis.stop, NarrowestStop(start)), m_highest));
}

t_SpectrumAxis CSpectrumAxis::WithStop(const t_SpectrumAxis& axis, double stop) const
{
    return BetweenEnds(std::max(std::min(axis.start, WidestStart(stop)), LowestStart()), stop);
}

double CSpectrumAxis::LargestSpan(double center) const
{
    if (!IsLogarithmic())
    {
        return 2.0 * std::min(center, m_highest - center);
    }
    const double f = std::min(center / kLogarithmicStartMinimum, m_highest / center);
    return center * f - center / f;
}

t_SpectrumAxis CSpectrumAxis::AboutCenter(double center, double span) const
{
    const double half = span / 2.0;
    // stop − start = span and start × stop = center² for the logarithmic axis.
    const double stop =
        IsLogarithmic() ? half + std::sqrt(half * half + center * center) : center + half;
    const double right = KWMath::Bound(NarrowestStop(LowestStart()), stop, m_highest);
    const double start = IsLogarithmic() ? center * center / right : center - half;
    return {KWMath::Bound(LowestStart(), start, WidestStart(right)), right, span, center};
}

t_SpectrumAxis CSpectrumAxis::WithCenter(const t_SpectrumAxis& axis, double center,
                                         double wantedSpan) const
{
    if (!IsLogarithmic())
    {
        return AboutCenter(center, KWMath::Bound(kSmallestSpan, wantedSpan, LargestSpan(center)));
    }
    const double f = std::sqrt(axis.stop / axis.start);
    double start = std::max(center / f, kLogarithmicStartMinimum);
    double stop = std::min(center * f, m_highest);
    if (WidestStart(stop) < start)
    {
        stop = std::min(NarrowestStop(start), m_highest);
        start = std::min(start, WidestStart(stop));
    }
    t_SpectrumAxis moved = BetweenEnds(start, stop);
    if (Agree(moved.center, center, center))
    {
        moved.center = center;
    }
    return moved;
}

t_SpectrumAxis CSpectrumAxis::WithSpan(const t_SpectrumAxis& axis, double span) const
{
    return AboutCenter(axis.center, span);
}

t_SpectrumAxis CSpectrumAxis::FromOtherScaling(const t_SpectrumAxis& axis) const
{
    return IsLogarithmic() ? FromEnds(axis.start, axis.stop) : FromEnds(0.0, axis.center * 2.0);
}

t_SpectrumAxis CSpectrumAxis::Shifted(const t_SpectrumAxis& axis, double share) const
{
    if (!IsLogarithmic())
    {
        const double half = axis.span / 2.0;
        const double center = axis.center + share * axis.span;
        return AboutCenter(KWMath::Bound(half, center, m_highest - half), axis.span);
    }
    const double factor =
        KWMath::Bound(kLogarithmicStartMinimum / axis.start,
                      std::pow(axis.stop / axis.start, share), m_highest / axis.stop);
    return FromEnds(axis.start * factor, axis.stop * factor);
}

t_SpectrumAxis CSpectrumAxis::Minimum(const t_SpectrumAxis& axis) const
{
    const double start = LowestStart();
    if (!IsLogarithmic())
    {
        return {start, kSmallestSpan, kSmallestSpan, kSmallestSpan / 2.0};
    }
    const double span = axis.center * kHalfDecade - axis.center / kHalfDecade;
    // Rounding must not push the axis that is there out of its limits.
    return {start, NarrowestStop(start), std::max(kSmallestSpan, std::min(span, axis.span)),
            start * kHalfDecade};
}

t_SpectrumAxis CSpectrumAxis::Maximum(const t_SpectrumAxis& axis) const
{
    const double span = std::min(std::max(LargestSpan(axis.center), axis.span), m_highest);
    const double center =
        IsLogarithmic() ? m_highest / kHalfDecade : m_highest - kSmallestSpan / 2.0;
    return {WidestStart(m_highest), m_highest, span, center};
}

bool CSpectrumAxis::IsConsistent(const t_SpectrumAxis& axis) const
{
    const bool isWideEnough =
        axis.start <= WidestStart(axis.stop) + kAgreement * std::fabs(axis.stop);
    return LiesWithin(Minimum(axis), axis, Maximum(axis)) && isWideEnough &&
           Agree(axis.stop - axis.start, axis.span, axis.stop) &&
           Agree(Middle(axis.start, axis.stop), axis.center, axis.stop);
}

double CSpectrumAxis::StepAt(const t_SpectrumAxis& axis, double frequency) const
{
    // A file may hold ends that are still to be brought into order.
    const double left = std::max(axis.start, LowestStart());
    const double right = std::max(axis.stop, NarrowestStop(left));
    const double width =
        IsLogarithmic() ? std::max(frequency, left) * std::log(right / left) : right - left;
    return NRules::RoundStep(NRules::StepOf(width / NRules::kHorizontalDivisions));
}

double CSpectrumAxis::FrequencyAt(const t_SpectrumAxis& axis, double place) const
{
    return IsLogarithmic() ? KWMath::LogarithmicValue(place, axis.start, axis.stop)
                           : KWMath::LinearValue(place, axis.start, axis.stop);
}
