// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSPIBusSettingsBase.h"

/** SPI decoder: lines in use come from inputs of their own, the word length follows its usual
    values, and what the frame mode does not use is not available. */
class CPgSPIBusSettings : public CPgSPIBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void AssignLines(const CDbPropBase* written);
    void UpdateAvailabilities();
    KW_ACCEPTANCE FollowWordLength(const CDbPropBase* written);
};
