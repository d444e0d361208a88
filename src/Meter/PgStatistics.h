// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgStatisticsBase.h"

/** Statistics of a counter. */
class CPgStatistics : public CPgStatisticsBase
{
public:
    t_Couplings Rules() const override;

    void Reset();
};
