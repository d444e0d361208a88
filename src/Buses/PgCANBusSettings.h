// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgCANBusSettingsBase.h"

/** CAN decoder: both bit rates follow their usual values, the data phase is never slower than the
    arbitration, and what only CAN FD has is available with CAN FD only; so are longer payloads of
    labels. */
class CPgCANBusSettings : public CPgCANBusSettingsBase, public NRules::ILabelledBus
{
public:
    t_Couplings Rules() const override;
    KW_ZEL_SERIALBUS_PROTOCOL Protocol() const override;
    INT32 PayloadBits(UINT32 identifierLength) const override;

private:
    KW_ACCEPTANCE FollowBitRate(const CDbPropBase* written);
    KW_ACCEPTANCE FollowDataBitRate(const CDbPropBase* written);
    void UpdateAvailabilities();
    void FitLabels();
};
