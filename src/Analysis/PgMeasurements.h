// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementsBase.h"

class CPgMeasurement;

/** The automatic measurements: gate and reference levels in order, one set of statistics. */
class CPgMeasurements : public CPgMeasurementsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void OnTreeCreated() override;

private:
    void ForEach(void (CPgMeasurement::*step)());
};
