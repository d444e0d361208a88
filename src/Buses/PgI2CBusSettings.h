// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgI2CBusSettingsBase.h"

/** I²C decoder: clock and data come from two inputs that are switched on. */
class CPgI2CBusSettings : public CPgI2CBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void AssignLines(const CDbPropBase* written);
    void SwapLines();
};
