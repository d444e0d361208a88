// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLINBusSettingsBase.h"

/** LIN decoder: the bit rate follows its usual values. */
class CPgLINBusSettings : public CPgLINBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    std::vector<t_Twins> GetTwins() const override;
};
