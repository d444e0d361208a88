// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgStatisticsBase.h"

/** Statistics of a counter. */
class CPgStatistics : public CPgStatisticsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

    void Reset();
};
