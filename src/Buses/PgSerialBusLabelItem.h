// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSerialBusLabelItemBase.h"

/** Label of one frame: its identifier fits its length, its signals lie within the payload. */
class CPgSerialBusLabelItem : public CPgSerialBusLabelItemBase
{
public:
    t_Couplings Rules() const override;

private:
    void LimitIdentifier();
    void FitSignals();
};
