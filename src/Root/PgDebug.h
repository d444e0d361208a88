// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgDebugBase.h"

/** Service switches: what was read belongs to the address it was read from. */
class CPgDebug : public CPgDebugBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
};
