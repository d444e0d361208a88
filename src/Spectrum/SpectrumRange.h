// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWMath.h"

// How the rules of the spectrum put numbers into ranges.

/** Moves those limits already that keep `value` out. Limits and value that change together are
    opened, written and closed, so that the limits never take the value along to some place
    between. */
inline void OpenLimits(CDbPropNumDouble& property, double min, double value, double max)
{
    if (value < property.GetMin())
    {
        KW_CHECKED(property.SetMin(min));
    }
    if (value > property.GetMax())
    {
        KW_CHECKED(property.SetMax(max));
    }
}

/** Gives a property its limits and a value within them. What was wished for before ends. */
inline void WriteInRange(CDbPropNumDouble& property, double min, double value, double max)
{
    OpenLimits(property, min, value, max);
    KW_CHECKED(property.DbSet(value));
    KW_CHECKED(property.SetMinAndMax(min, max));
}

/** The same for a value to which the limits only hold a wish back: the wish stays, and comes back
    with the limits. Any other value is written. */
inline void HoldInRange(CDbPropNumDouble& property, double min, double value, double max)
{
    if (KWMath::Bound(min, property.GetUserValue(), max) == value)
    {
        KW_CHECKED(property.SetMinAndMax(min, max));
        return;
    }
    WriteInRange(property, min, value, max);
}

/** `value` bounded for a move that a user asked for: what could not be done is reported, as a
    warning. */
double BoundReported(double min, double value, double max);
