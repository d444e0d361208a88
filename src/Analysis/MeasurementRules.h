// SPDX-License-Identifier: MIT
#pragma once

#include "Rules/NumberRules.h"

enum KW_UNIT : INT32;
enum KW_ZEL_MEASUREMENT_TYPE : INT32;

/** What the automatic measurements and those between the cursors share. */
namespace NMeasurementRules
{
/** Whether the quantity can be found in a trace of two levels. */
bool IsDigitalQuantity(KW_ZEL_MEASUREMENT_TYPE type);

/** Whether the quantity is one of a voltage and a current: the sources are one of each. */
bool IsPower(KW_ZEL_MEASUREMENT_TYPE type);
bool MakePower(KW_UNIT level, KW_UNIT second);

/** Unit of a quantity. `level` is the unit of the source's levels, `second` that of the second
    source's, which only powers look at; "not defined" (64) where the catalogue has no unit, and
    for a power of anything else than voltage and current. */
KW_UNIT UnitOfQuantity(KW_ZEL_MEASUREMENT_TYPE type, KW_UNIT level, KW_UNIT second);

/** Keeps lower ≤ middle ≤ upper: the one that was written pushes the others on. */
void KeepOrdered(CDbPropNumDouble& lower, CDbPropNumDouble& middle, CDbPropNumDouble& upper,
                 const CDbPropBase* written);
} // namespace NMeasurementRules
