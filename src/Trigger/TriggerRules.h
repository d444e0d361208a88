// SPDX-License-Identifier: MIT
#pragma once

#include "Rules/NumberRules.h"

class CPgaChannelState;
class CPgaDataSource;
enum KW_ZEL_CHANNEL : INT32;

/** What several trigger types share. */
namespace NTriggerRules
{
/** Every channel becomes "don't care". */
void ClearStates(const CPgaChannelState& states);

/** Lets the data lines of a clock offer the inputs that are on; no data line is the clock. */
void OfferData(const CPgaDataSource& data, KW_ZEL_CHANNEL clock);

/** The same for a clock and its data lines. */
void OfferClockAndData(CDbPropEnum<KW_ZEL_CHANNEL>& clock, const CPgaDataSource& data);
} // namespace NTriggerRules
