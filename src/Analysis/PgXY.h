// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgXYBase.h"

/** The XY diagram: its axes are different channels that are switched on. A channel that an axis
    takes is no longer offered to those after it; the second curve may be none. */
class CPgXY : public CPgXYBase
{
public:
    t_Couplings Rules() const override;

private:
    /** The horizontal axis chooses first. With a single channel on, nothing is left for the
        vertical one: it keeps its channel. */
    void OfferAxes();
    /** None where both axes leave no channel. */
    void UpdateSecondCurve();
};
