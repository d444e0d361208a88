// SPDX-License-Identifier: MIT
#pragma once

#include "Harmonic/HarmonicLimits.h"
#include "Harmonic/PgHarmonicLimitUserBase.h"

/** Limits set by the user. Entries of "OrderLimits" that can not be read have no effect and make
    the write a warning. Limits can be copied from those in use: eKW_ACC_NOTHING_TO_ACT_ON while
    there are none. */
class CPgHarmonicLimitUser : public CPgHarmonicLimitUserBase
{
public:
    t_Couplings Rules() const override;

    NHarmonicLimits::t_Limits Limits() const;

private:
    KW_ACCEPTANCE CheckOrderLimits() const;
    KW_ACCEPTANCE CopyStandard();
};
