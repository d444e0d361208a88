// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorMeasurementBase.h"

/** One measurement between the cursor lines, of one quantity of one source in one unit: with
   another it is invalid. */
class CPgCursorMeasurement : public CPgCursorMeasurementBase
{
public:
    t_Couplings Rules() const override;

private:
    /** What can be measured now; of anything else than before there is no result yet. */
    void Follow();
    void UpdateUnit();
    void DropOfProbe(const CDbPropBase* probe);
    void DropOfMathematics();
};
