// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicChannelRawResultBase.h"

/** Analysis of one channel, in the unit of its probe. */
class CPgHarmonicChannelRawResult : public CPgHarmonicChannelRawResultBase
{
public:
    using CPgHarmonicChannelRawResultBase::CPgHarmonicChannelRawResultBase;

    t_Couplings Rules() const override;

    /** Led by the analysis. */
    void UpdateUnits();
};
