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
    void OfferAxes();
    void UpdateSecondCurve();
};
