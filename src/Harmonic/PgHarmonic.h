// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicBase.h"

/** Harmonic analysis. A measured fundamental frequency is invalid until one is found; orders end at
    the number of harmonics; the history of the limit test can be begun anew. */
class CPgHarmonic : public CPgHarmonicBase
{
public:
    t_Couplings Rules() const override;

private:
    void AwaitFundamental();
    void DropFundamental();
    void UpdateFundamental();
    void UpdateSelected();
    void UpdateVisibility();
    /** eKW_ACC_NOTHING_TO_ACT_ON while the fundamental is not known. */
    KW_ACCEPTANCE FitTimebase();
    void ResetAverage();
    void ResetHistory();
};
