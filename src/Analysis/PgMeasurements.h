// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementsBase.h"

class CPgMeasurement;

/** The automatic measurements: gate and reference levels in order, one set of statistics. */
class CPgMeasurements : public CPgMeasurementsBase
{
public:
    t_Couplings Rules() const override;

private:
    void OrderGate(const CDbPropBase* written);
    void OrderPercents(const CDbPropBase* written);
    void OrderLevels(const CDbPropBase* written);
    void ResetStatistics();
    void DisableAll();
    /** Each measurement derives anew, when traces and screens have settled. */
    void UpdateMeasurements();
    void ForEach(void (CPgMeasurement::*step)());
};
