// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsReadings.h"

/** A frequency axis in Hz: four numbers, of which two are free. */
struct t_SpectrumAxis
{
    double start;
    double stop;
    double span;   ///< stop − start on either scaling
    double center; ///< arithmetic mean of the ends; on a logarithmic axis the geometric one
};

/**
 * How the four numbers of a frequency axis follow each other. Pure arithmetic; nothing is reported.
 *
 * A legal linear axis lies in 0 … `highest` and is at least the smallest span wide. A legal
 * logarithmic one lies in the logarithmic start minimum … `highest` and covers at least a decade.
 * What a function is given as the moved number stays as it is given where the contract does not say
 * otherwise; the others follow, rounded to the last place of the stop.
 */
class CSpectrumAxis
{
public:
    /** `highest` is the highest frequency of the axis. */
    CSpectrumAxis(KW_SCALING_TYPE scaling, double highest) : m_scaling(scaling), m_highest(highest)
    {
    }

    bool IsLogarithmic() const { return m_scaling == eKW_SCALING_TYPE_LOGARITHMIC; }

    /** The legal axis nearest to two ends; the start yields to the stop. */
    t_SpectrumAxis FromEnds(double start, double stop) const;

    // The moved number must lie within Minimum and Maximum of the axis.
    /** The stop yields where the axis would become too narrow. */
    t_SpectrumAxis WithStart(const t_SpectrumAxis& axis, double start) const;
    /** The start yields likewise. */
    t_SpectrumAxis WithStop(const t_SpectrumAxis& axis, double stop) const;
    /**
     * Linear: `wantedSpan`, or as much of it as fits about the center. Logarithmic: the ends keep
     * their ratios to the center, f, up to the ends of the range: start = max(center / f, minimum),
     * stop = min(center × f, highest); where that cuts an end off, the center moves to the middle
     * of what is left.
     */
    t_SpectrumAxis WithCenter(const t_SpectrumAxis& axis, double center, double wantedSpan) const;
    /** The center stays. */
    t_SpectrumAxis WithSpan(const t_SpectrumAxis& axis, double span) const;

    /** The axis that replaces one of the other scaling. Linear: from 0 to twice the center, so that
        the center stays. Logarithmic: the stop stays, the start where it can. */
    t_SpectrumAxis FromOtherScaling(const t_SpectrumAxis& axis) const;

    /** The axis moved by a share of its width, of its decades when logarithmic, without changing
        it; it stops at the ends of the range. */
    t_SpectrumAxis Shifted(const t_SpectrumAxis& axis, double share) const;

    /** Least and greatest values that each number can be moved to while this is the axis. Those of
        the span depend on the center. */
    t_SpectrumAxis Minimum(const t_SpectrumAxis& axis) const;
    t_SpectrumAxis Maximum(const t_SpectrumAxis& axis) const;

    /** Whether this is a legal axis whose numbers agree to one part in 1e12 of its stop. */
    bool IsConsistent(const t_SpectrumAxis& axis) const;

    /** The frequency at a place of the axis, 0 at its left end and 1 at its right end. */
    double FrequencyAt(const t_SpectrumAxis& axis, double place) const;

    /** What one press of a key moves a line at a frequency by: a fiftieth of a division there,
       rounded down. */
    double StepAt(const t_SpectrumAxis& axis, double frequency) const;

private:
    double LowestStart() const;
    double NarrowestStop(double start) const;
    double WidestStart(double stop) const;
    double Middle(double start, double stop) const;
    t_SpectrumAxis BetweenEnds(double start, double stop) const;
    t_SpectrumAxis AboutCenter(double center, double span) const;
    double LargestSpan(double center) const;

    KW_SCALING_TYPE m_scaling;
    double m_highest;
};
