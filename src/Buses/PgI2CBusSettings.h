// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgI2CBusSettingsBase.h"

/** I²C decoder: clock and data come from two inputs that are switched on. Labels have an address of
    7 or 10 bits; payloads have any length, labels describe their first 64 bytes. */
class CPgI2CBusSettings : public CPgI2CBusSettingsBase, public NRules::ILabelledBus
{
public:
    t_Couplings Rules() const override;
    KW_ZEL_SERIALBUS_PROTOCOL Protocol() const override;
    INT32 PayloadBits(UINT32 identifierLength) const override;

private:
    void AssignLines(const CDbPropBase* written);
    void SwapLines();
};
