// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicMagnitudeUIResultBase.h"

enum KW_UNIT : INT32;

/** One harmonic as it is shown; whether it is depends on the order that is delivered for it. */
class CPgHarmonicMagnitudeUIResult : public CPgHarmonicMagnitudeUIResultBase
{
public:
    using CPgHarmonicMagnitudeUIResultBase::CPgHarmonicMagnitudeUIResultBase;

    t_Couplings Rules() const override;

    /** Only in a tree. */
    void UpdateVisibility();
    /** Of the magnitude and what it is compared with, led by the channel. */
    void SetUnit(KW_UNIT unit);
};
