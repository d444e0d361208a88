// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "Spectrum/SpectrumAxis.h"

enum KW_SCALING_TYPE : INT32;
enum KW_UNIT : INT32;

/** What the screen of the spectrum shows: which frequency stands where, and how far a knob moves
    what stands on it. */
class CSpectrumScreen
{
public:
    /** Of the linear magnitude axis `top` is the upper end. */
    struct t_Magnitude
    {
        KW_SCALING_TYPE scaling;
        double top;
        KW_UNIT unit;
    };
    CSpectrumScreen(const CSpectrumAxis& rules, const t_SpectrumAxis& axis,
                    const t_Magnitude& magnitude)
        : m_rules(rules), m_axis(axis), m_magnitude(magnitude)
    {
    }
    /** The screen in the tree that `group` is part of. */
    static CSpectrumScreen Of(const CDbPropertyGroup& group);

    /** The frequency at a place of the axis, 0 at its left end and 1 at its right end. */
    double FrequencyAt(double place) const { return m_rules.FrequencyAt(m_axis, place); }
    /** Gives a line the steps of the screen: a fiftieth of a division where it stands. */
    void UpdateStep(CDbPropNumDouble& frequency) const;
    /** The same, and its level the unit of the magnitude axis. */
    void UpdateLine(CDbPropNumDouble& frequency, CDbPropNumDouble& level) const;
    /** Of a level on the magnitude axis, and of the difference of two. */
    KW_UNIT LevelUnit() const { return m_magnitude.unit; }
    KW_UNIT DifferenceUnit() const;

private:
    double LevelStep() const;

    CSpectrumAxis m_rules;
    t_SpectrumAxis m_axis;
    t_Magnitude m_magnitude;
};
