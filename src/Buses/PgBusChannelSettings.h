// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgBusChannelSettingsBase.h"

/** One line of a bus: enabled lines of the same bus come from inputs of their own. */
class CPgBusChannelSettings : public CPgBusChannelSettingsBase
{
public:
    using CPgBusChannelSettingsBase::CPgBusChannelSettingsBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    /** Of all lines beside this one, itself included. */
    void AssignAll(const CDbPropBase* written);
    void UpdateThreshold();
    void UpdateThresholds();
};
