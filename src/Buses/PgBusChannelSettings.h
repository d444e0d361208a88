// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgBusChannelSettingsBase.h"

/** One line of a bus: enabled lines of the same bus come from inputs of their own. */
class CPgBusChannelSettings : public CPgBusChannelSettingsBase
{
public:
    using CPgBusChannelSettingsBase::CPgBusChannelSettingsBase;

    t_Couplings Rules() const override;

private:
    /** The lines of the same bus, this one included. */
    std::vector<CPgBusChannelSettings*> Lines() const;
    void AssignLines(const CDbPropBase* written);
    void UpdateThreshold();
};
