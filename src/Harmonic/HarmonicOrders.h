// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

class CDbPropertyGroup;

/** Orders by the settings of the harmonic analysis in the tree that a group is part of. */
namespace NHarmonicOrders
{
/** Highest order that is analysed. */
UINT32 Highest(const CDbPropertyGroup& group);

/** Whether an order is analysed and among those selected. The direct component is no harmonic: it
    is shown where all are. */
bool IsShown(const CDbPropertyGroup& group, UINT32 order);
} // namespace NHarmonicOrders
