// SPDX-License-Identifier: MIT
#pragma once

#include "PgStatisticsBase.h"

/** Statistics of a counter; invalid while they are of no reading. */
class CPgStatistics : public CPgStatisticsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

    void Reset();
};
