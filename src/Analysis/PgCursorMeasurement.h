// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorMeasurementBase.h"

/** One measurement between the cursor lines. Another quantity or source makes it invalid. */
class CPgCursorMeasurement : public CPgCursorMeasurementBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
