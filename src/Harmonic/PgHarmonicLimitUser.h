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
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

    NHarmonicLimits::t_Limits Limits() const;

private:
    KW_ACCEPTANCE CopyStandard();
};
