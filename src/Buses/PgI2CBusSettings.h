// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgI2CBusSettingsBase.h"

/** I²C decoder: clock and data come from two inputs that are switched on. */
class CPgI2CBusSettings : public CPgI2CBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    void Assign(const CDbPropBase* written);
};
