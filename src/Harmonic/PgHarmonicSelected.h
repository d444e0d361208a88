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
    void UpdateUnits();
    /** Other limits: what was compared with the former ones. */
    void DropTest();

private:
    KW_ACCEPTANCE SelectNext();
    KW_ACCEPTANCE SelectPrevious();
    /** The next one that is analysed and selected for display. */
    KW_ACCEPTANCE SelectShown(INT32 direction);
    /** Among the orders above the fundamental with a valid magnitude. */
    KW_ACCEPTANCE SelectLargest();
    /** eKW_ACC_WARNING where the limits of the order hold it back. */
    KW_ACCEPTANCE Select(UINT32 order);
    /** Its readings belong to the former one. */
    void OnOtherHarmonic();
    /** What is delivered of a test without limits for what the channel measures. */
    void DropUntested();
    /** Invalid while the fundamental is. */
    void UpdateFrequency();
};
