// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgDataToClockTriggerSettingsBase.h"

/** Data that a clock takes over: clock and data are different inputs that are on. */
class CPgDataToClockTriggerSettings : public CPgDataToClockTriggerSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnItemInserted(CDbContainerBase* container, const QString& item) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
};
