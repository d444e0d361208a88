// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgRemoteControlBase.h"

/** Remote control: its port is that of a network, and it gives the keys back. */
class CPgRemoteControl : public CPgRemoteControlBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
