// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessBase.h"

/** Wireless network: the country limits the radio channels; another role ends the present link. */
class CPgWireless : public CPgWirelessBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

private:
    void EndLink();
};
