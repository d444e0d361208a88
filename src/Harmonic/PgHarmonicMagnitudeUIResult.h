// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicMagnitudeUIResultBase.h"

class CPgHarmonic;

/** One harmonic as it is shown; whether it is depends on the order that is delivered for it. */
class CPgHarmonicMagnitudeUIResult : public CPgHarmonicMagnitudeUIResultBase
{
public:
    using CPgHarmonicMagnitudeUIResultBase::CPgHarmonicMagnitudeUIResultBase;

    void OnPropertyDbSet(const CDbPropBase* property) override;

    void UpdateVisibility(const CPgHarmonic& harmonic);
};
