// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/PgHarmonicBase.h"

/** Harmonic analysis. A measured fundamental frequency is invalid until one is found; orders end at
    the number of harmonics; the history of the limit test can be begun anew. */
class CPgHarmonic : public CPgHarmonicBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

    UINT32 HighestOrder() const;
    /** Whether an order is analysed and among those selected. The direct component is no harmonic:
        it is shown where all are. */
    bool IsShown(UINT32 order) const;

private:
    void UpdateFundamental();
    void UpdateSelected();
    /** eKW_ACC_NOTHING_TO_ACT_ON while the fundamental is not known. */
    KW_ACCEPTANCE FitTimebase();
    void ResetHistory();
};
