// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterSourceChannelBase.h"

/** Analog input of the voltmeter or the counter: the user's range ends the automatic one, and the
    scale of the input follows the range. */
class CPgMeterSourceChannel : public CPgMeterSourceChannelBase
{
public:
    using CPgMeterSourceChannelBase::CPgMeterSourceChannelBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
