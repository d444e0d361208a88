// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgWirelessClientBase.h"

/** Guest of a network: a fixed address is available where the network assigns none. */
class CPgWirelessClient : public CPgWirelessClientBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
