// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorMeasurementsBase.h"

/** The measurements between the cursor lines; they follow what can be measured. */
class CPgCursorMeasurements : public CPgCursorMeasurementsBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateMeasurements();
};
