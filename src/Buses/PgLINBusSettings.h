// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgLINBusSettingsBase.h"

/** LIN decoder: the bit rate follows its usual values. Labels have an identifier of 6 bits and up
    to 8 bytes. */
class CPgLINBusSettings : public CPgLINBusSettingsBase, public NRules::ILabelledBus
{
public:
    t_Couplings Rules() const override;
    KW_ZEL_SERIALBUS_PROTOCOL Protocol() const override;
    INT32 PayloadBits(UINT32 identifierLength) const override;

private:
    KW_ACCEPTANCE FollowBitRate(const CDbPropBase* written);
};
