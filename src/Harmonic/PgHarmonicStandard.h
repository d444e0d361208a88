// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicStandardBase.h"

/** The limits in use are those of the standard, or the user's; none without a standard. */
class CPgHarmonicStandard : public CPgHarmonicStandardBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateLimits();
    /** As it is set; that of most ships while it is measured. */
    double SupplyFrequency() const;
};
