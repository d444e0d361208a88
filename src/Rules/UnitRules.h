// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

enum KW_UNIT : INT32;

/** Units of what is computed from quantities with units. Where the catalogue of units has no such
    quantity, the answer is "not defined" (64). */
namespace NRules
{
KW_UNIT UnitPerSecond(KW_UNIT unit);
KW_UNIT UnitPerDivision(KW_UNIT unit);
KW_UNIT UnitTimesSecond(KW_UNIT unit);
KW_UNIT UnitProduct(KW_UNIT a, KW_UNIT b);
KW_UNIT UnitQuotient(KW_UNIT a, KW_UNIT b);
} // namespace NRules
