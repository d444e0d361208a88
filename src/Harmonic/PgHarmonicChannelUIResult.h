// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicChannelUIResultBase.h"

/** Results of one channel, led by the analysis. */
class CPgHarmonicChannelUIResult : public CPgHarmonicChannelUIResultBase
{
public:
    using CPgHarmonicChannelUIResultBase::CPgHarmonicChannelUIResultBase;

    t_Couplings Rules() const override;

    void UpdateVisibility();
    void UpdateUnits();
    void ResetHistory();
    /** Other limits: what was compared with the former ones. */
    void DropTest();

private:
    /** What is delivered of a test without limits for what the channel measures. */
    void DropUntested(const CDbPropBase* delivered);
};
