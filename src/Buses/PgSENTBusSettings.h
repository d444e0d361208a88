// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSENTBusSettingsBase.h"

/** SENT decoder: what pause pulse and shown channels have no use for is not available. */
class CPgSENTBusSettings : public CPgSENTBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
