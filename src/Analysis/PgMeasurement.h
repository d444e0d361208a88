// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementBase.h"

/** One automatic measurement. Another quantity or source makes its results invalid. */
class CPgMeasurement : public CPgMeasurementBase
{
public:
    using CPgMeasurementBase::CPgMeasurementBase;

    t_Couplings Rules() const override;

    /** Led by CPgMeasurements, as Disable; counts begin at zero and the limit test at "inside". */
    void ResetStatistics();
    void Disable();

private:
    void OrderLimits(const CDbPropBase* written);
    void OfferSources();
    /** A digital trace has no levels: a quantity that needs them gives way to the frequency. */
    void OfferQuantities();
    void UpdateUnit();
    /** Until the acquisition delivers the new quantity. */
    void InvalidateActual();
};
