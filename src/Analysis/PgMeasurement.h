// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementBase.h"

/** One automatic measurement. Another quantity or source makes its results invalid. */
class CPgMeasurement : public CPgMeasurementBase
{
public:
    using CPgMeasurementBase::CPgMeasurementBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

    void ResetStatistics();
    void Disable();

private:
    void OfferQuantities();
};
