// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicBase.h"

/** Harmonic analysis. A measured fundamental frequency is invalid until one is found; orders end at
    the number of harmonics; the history of the limit test can be begun anew. Results follow the
    probes, and are invalid when what they were measured with changes: of a channel with its probe,
    of a test with the limits. Channels are tested against limits of what they measure. */
class CPgHarmonic : public CPgHarmonicBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferSources();
    /** Of the automatic one: until it is delivered. */
    void AwaitFundamental();
    /** A fixed one, or the user's, is known at once. */
    void UpdateFundamental();
    /** Also when a measured fundamental is delivered. */
    void UpdateSelected();
    /** Of all results, and what they are shown in. */
    void UpdateUnits();
    bool HasLimits() const;

    // What was measured with other settings.
    void DropAnalysis();
    void DropShown();
    void DropTest();
    void DropOfProbe(const CDbPropBase* probe);
    void DropHidden();
    void DropChannel(INT32 channel);
    /** What is delivered of a test without limits for what the channels measure. */
    void DropUntested();

    void UpdateVisibility();
    /** eKW_ACC_NOTHING_TO_ACT_ON while the fundamental is not known. */
    KW_ACCEPTANCE FitTimebase();
    /** Each begins anew by its count or its results; the settings stay. */
    void ResetAverage();
    void ResetHistory();
};
