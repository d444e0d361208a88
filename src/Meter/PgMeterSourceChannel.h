// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbRules.h"
#include "Meter/PgMeterSourceChannelBase.h"
#include "Names/Channel.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"

enum KW_UNIT : INT32;

/** What the range and the probe of an input make of it, at the tip of the probe. */
struct t_MeterInput
{
    double highest; ///< reading; the lowest one is its opposite
    KW_UNIT unit;
};

/** Analog input of the voltmeter or the counter: the user's range ends the automatic one, and the
    scale of the input follows the range. */
class CPgMeterSourceChannel : public CPgMeterSourceChannelBase
{
public:
    using CPgMeterSourceChannelBase::CPgMeterSourceChannelBase;

    t_Couplings Rules() const override;

    /** Only in a tree. */
    t_MeterInput Input() const;
    /** The probe of an input is another one. */
    static constexpr auto kOtherProbe =
        NNames::Changed(NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each /
                            NNames::Channel::ProbeFactor,
                        NNames::ZEL::Vertical / NNames::Vertical::Channel / NNames::each /
                            NNames::Channel::ProbeUnit);

private:
    void EndAutoRange();
    void ScaleFromRange();
};
