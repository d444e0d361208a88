// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgCANBusSettingsBase.h"

/** CAN decoder: both bit rates follow their usual values, the data phase is never slower than the
    arbitration, and what only CAN FD has is available with CAN FD only. */
class CPgCANBusSettings : public CPgCANBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    KW_ACCEPTANCE FollowBitRate(const CDbPropBase* written);
    KW_ACCEPTANCE FollowDataBitRate(const CDbPropBase* written);
    void UpdateAvailabilities();
};
