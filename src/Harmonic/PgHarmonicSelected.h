// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicSelectedBase.h"

/** The harmonic of one channel that is picked out for reading. Its readings lose their validity
    when another one is picked. */
class CPgHarmonicSelected : public CPgHarmonicSelectedBase
{
public:
    using CPgHarmonicSelectedBase::CPgHarmonicSelectedBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    /** The selecting actions answer eKW_ACC_NOTHING_TO_ACT_ON where there is no such harmonic. */
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

    /** `fundamental` is the frequency in use. */
    void Follow(UINT32 highestOrder, const CDbPropNumDouble& fundamental);

private:
    KW_ACCEPTANCE SelectShown(INT32 direction);
    KW_ACCEPTANCE SelectLargest();
    KW_ACCEPTANCE Select(UINT32 order);
    void OnOtherHarmonic();
    void UpdateFrequency(const CDbPropNumDouble& fundamental);
};
