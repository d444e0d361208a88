// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgPerformanceBase.h"

/** Figures of speed and load: a reset leaves none valid until they are measured again. */
class CPgPerformance : public CPgPerformanceBase
{
public:
    t_Couplings Rules() const override;
};
