// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

enum KW_UNIT : INT32;
enum KW_ZEL_MATHEMATICS_TYPE : INT32;

/** Units of what is computed from quantities with units. Where the catalogue of units has no such
    quantity, the answer is "not defined" (64). */
namespace NUnits
{
KW_UNIT PerSecond(KW_UNIT unit);
KW_UNIT PerDivision(KW_UNIT unit);
KW_UNIT TimesSecond(KW_UNIT unit);
KW_UNIT Product(KW_UNIT a, KW_UNIT b);
KW_UNIT Quotient(KW_UNIT a, KW_UNIT b);

/** Of an operation of the mathematics channel; operations on one source do not look at `b`.
    Quantities of different units have no sum. */
KW_UNIT OfOperation(KW_ZEL_MATHEMATICS_TYPE type, KW_UNIT a, KW_UNIT b);
} // namespace NUnits
