// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSPIBusSettingsBase.h"

/** SPI decoder: lines in use come from inputs of their own, the word length follows its usual
    values, and what the frame mode does not use is not available. */
class CPgSPIBusSettings : public CPgSPIBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    std::vector<t_Twins> GetTwins() const override;
    void OnTreeCreated() override;

private:
    KW_ACCEPTANCE Follow(const CDbPropBase* written);
};
