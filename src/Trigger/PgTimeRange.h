// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTimeRangeBase.h"

/** Condition on a duration: its limits are in order. */
class CPgTimeRange : public CPgTimeRangeBase
{
public:
    t_Couplings Rules() const override;

private:
    void OrderLimits(const CDbPropBase* written);
};
