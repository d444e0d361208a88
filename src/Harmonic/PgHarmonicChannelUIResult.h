// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicChannelUIResultBase.h"

/** Results of one channel, led by the analysis. */
class CPgHarmonicChannelUIResult : public CPgHarmonicChannelUIResultBase
{
public:
    using CPgHarmonicChannelUIResultBase::CPgHarmonicChannelUIResultBase;

    void UpdateVisibility();
    void ResetHistory();
};
