// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSetupDateTimeBase.h"

/** Clock: set by hand, or by a time server. */
class CPgSetupDateTime : public CPgSetupDateTimeBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
};
