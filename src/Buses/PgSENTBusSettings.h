// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSENTBusSettingsBase.h"

/** SENT decoder: what pause pulse and shown channels have no use for is not available. */
class CPgSENTBusSettings : public CPgSENTBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateAvailabilities();
};
