// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSerialBusLabelItemBase.h"

/** Label of one frame: its identifier fits its length, its signals lie within the payload. */
class CPgSerialBusLabelItem : public CPgSerialBusLabelItemBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
