// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementBase.h"

/** One automatic measurement. Another quantity or source makes its results invalid. */
class CPgMeasurement : public CPgMeasurementBase
{
public:
    using CPgMeasurementBase::CPgMeasurementBase;

    t_Couplings Rules() const override;

    void ResetStatistics();
    void Disable();

private:
    void OrderLimits(const CDbPropBase* written);
    void OfferSources();
    void OfferQuantities();
    void UpdateUnit();
    void InvalidateActual();
};
