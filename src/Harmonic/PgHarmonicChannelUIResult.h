// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicChannelUIResultBase.h"

class CPgHarmonic;

/** Results of one channel; its harmonics know whether they are shown. */
class CPgHarmonicChannelUIResult : public CPgHarmonicChannelUIResultBase
{
public:
    using CPgHarmonicChannelUIResultBase::CPgHarmonicChannelUIResultBase;

    void OnItemInserted(CDbContainerBase* container, const QString& item) override;

    void UpdateVisibility(const CPgHarmonic& harmonic);
    void ResetHistory();
};
