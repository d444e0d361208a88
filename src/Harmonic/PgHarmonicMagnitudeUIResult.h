// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicMagnitudeUIResultBase.h"

/** One harmonic as it is shown; whether it is depends on the order that is delivered for it. */
class CPgHarmonicMagnitudeUIResult : public CPgHarmonicMagnitudeUIResultBase
{
public:
    using CPgHarmonicMagnitudeUIResultBase::CPgHarmonicMagnitudeUIResultBase;

    t_Couplings Rules() const override;

    /** Only in a tree. */
    void UpdateVisibility();
};
