// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerChannelBase.h"

/** One channel of the logger. FindScale puts the recorded extremes at the ends of the axis:
    eKW_ACC_NOTHING_TO_ACT_ON while there are none, or no range between them. */
class CPgLoggerChannel : public CPgLoggerChannelBase
{
public:
    using CPgLoggerChannelBase::CPgLoggerChannelBase;

    t_Couplings Rules() const override;

    /** Sets the results invalid. */
    void Clear();

private:
    KW_ACCEPTANCE FindScale();
};
