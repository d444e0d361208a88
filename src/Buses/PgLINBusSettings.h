// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLINBusSettingsBase.h"

/** LIN decoder: the bit rate follows its usual values. */
class CPgLINBusSettings : public CPgLINBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    KW_ACCEPTANCE FollowBitRate(const CDbPropBase* written);
};
