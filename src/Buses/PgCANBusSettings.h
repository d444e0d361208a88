// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgCANBusSettingsBase.h"

/** CAN decoder: both bit rates follow their usual values, the data phase is never slower than the
    arbitration, and what only CAN FD has is available with CAN FD only. */
class CPgCANBusSettings : public CPgCANBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    std::vector<t_Twins> GetTwins() const override;

private:
    KW_ACCEPTANCE Follow(const CDbPropBase* written);
};
