// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorMeasurementBase.h"

/** One measurement between the cursor lines. Another quantity or source makes it invalid. */
class CPgCursorMeasurement : public CPgCursorMeasurementBase
{
public:
    t_Couplings Rules() const override;

private:
    void OfferSources();
    void UpdateUnit();
    void InvalidateResult();
};
