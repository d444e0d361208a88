// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

class CDbPropertyGroup;
enum KW_HMA_STANDARD : INT32;
enum KW_UNIT : INT32;

/** What the numbers of the harmonic analysis are in. Channels are counted from 0; of the tree that
   a group is part of. */
namespace NHarmonicUnits
{
/** What the probe of a channel measures. */
KW_UNIT OfChannel(const CDbPropertyGroup& group, INT32 channel);

/** Of the magnitudes as they are shown, and of their limits. */
KW_UNIT OfMagnitudes(const CDbPropertyGroup& group, INT32 channel);

/** What a standard limits the harmonics of: voltages or currents, both (65, none) for limits of the
    user; "not defined" (64) without a standard. */
KW_UNIT OfStandard(KW_HMA_STANDARD standard);

/** Whether there are limits for what a channel measures. */
bool HasLimits(const CDbPropertyGroup& group, INT32 channel);
} // namespace NHarmonicUnits
