// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicSelectedBase.h"

/** The harmonic of one channel that is picked out for reading. Its readings lose their validity
    when another one is picked. The selecting actions answer eKW_ACC_NOTHING_TO_ACT_ON where there
    is no such harmonic. */
class CPgHarmonicSelected : public CPgHarmonicSelectedBase
{
public:
    using CPgHarmonicSelectedBase::CPgHarmonicSelectedBase;

    t_Couplings Rules() const override;

    /** Keeps the order within what is analysed, and the frequency at its multiple of the
        fundamental in use. */
    void Follow();

private:
    KW_ACCEPTANCE SelectNext();
    KW_ACCEPTANCE SelectPrevious();
    KW_ACCEPTANCE SelectShown(INT32 direction);
    KW_ACCEPTANCE SelectLargest();
    KW_ACCEPTANCE Select(UINT32 order);
    void OnOtherHarmonic();
    void UpdateFrequency();
};
