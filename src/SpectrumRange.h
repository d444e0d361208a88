// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/DbPropNum.h"
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

/** Gives a property its limits and a value within them; the value is written at most once, and not
    at all when it stands already: a wish that the limits hold back to it stays a wish. */
inline void WriteInRange(CDbPropNumDouble& property, double min, double value, double max)
{
    if (property.Get() != value || KWMath::Bound(min, property.GetUserValue(), max) != value)
    {
        OpenLimits(property, min, value, max);
        KW_CHECKED(property.DbSet(value));
    }
    KW_CHECKED(property.SetMinAndMax(min, max));
}

/** `value` bounded for a move that a user asked for: what could not be done is reported, as a
    warning. */
double BoundReported(double min, double value, double max);
