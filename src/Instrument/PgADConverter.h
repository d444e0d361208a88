// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgADConverterBase.h"

enum KW_ZEL_ADC_MODE : INT32;

/** A/D converters: their mode is the manual one, or in automatic the one that the sample-rate mode
    of the timebase needs. */
class CPgADConverter : public CPgADConverterBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateMode();
    KW_ZEL_ADC_MODE RequiredMode() const;
};
