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
    void OfferSources();
    /** Of the automatic one: until it is delivered. */
    void AwaitFundamental();
    void DropFundamental();
    /** A fixed one, or the user's, is known at once. */
    void UpdateFundamental();
    /** Also when a measured fundamental is delivered. */
    void UpdateSelected();
    void UpdateVisibility();
    /** eKW_ACC_NOTHING_TO_ACT_ON while the fundamental is not known. */
    KW_ACCEPTANCE FitTimebase();
    /** Each begins anew by its count or its results; the settings stay. */
    void ResetAverage();
    void ResetHistory();
};
