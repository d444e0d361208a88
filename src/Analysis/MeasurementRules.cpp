// SPDX-License-Identifier: MIT
#include "Analysis/MeasurementRules.h"

#include "Mathematics/UnitRules.h"

#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsUnits.h"

namespace
{
bool IsBetween(KW_ZEL_MEASUREMENT_TYPE type, KW_ZEL_MEASUREMENT_TYPE first,
               KW_ZEL_MEASUREMENT_TYPE last)
{
    return type >= first && type <= last;
}
} // namespace

bool NMeasurementRules::IsDigitalQuantity(KW_ZEL_MEASUREMENT_TYPE type)
{
    return type == eKW_ZEL_MEASUREMENT_TYPE_FREQUENCY || type == eKW_ZEL_MEASUREMENT_TYPE_PERIOD ||
           IsBetween(type, eKW_ZEL_MEASUREMENT_TYPE_POS_PULSE_WIDTH,
                     eKW_ZEL_MEASUREMENT_TYPE_FALLING_EDGE_COUNT);
}

bool NMeasurementRules::IsPower(KW_ZEL_MEASUREMENT_TYPE type)
{
    return type == eKW_ZEL_MEASUREMENT_TYPE_ACTIVE_POWER ||
           type == eKW_ZEL_MEASUREMENT_TYPE_APPARENT_POWER ||
           type == eKW_ZEL_MEASUREMENT_TYPE_REACTIVE_POWER ||
           type == eKW_ZEL_MEASUREMENT_TYPE_POWER_FACTOR;
}

bool NMeasurementRules::MakePower(KW_UNIT level, KW_UNIT second)
{
    return level == eKW_UNIT_LEVEL_A ? second == eKW_UNIT_LEVEL_V
                                     : level == eKW_UNIT_LEVEL_V && second == eKW_UNIT_LEVEL_A;
}

KW_UNIT NMeasurementRules::UnitOfQuantity(KW_ZEL_MEASUREMENT_TYPE type, KW_UNIT level,
                                          KW_UNIT second)
{
    if (IsPower(type) && !MakePower(level, second))
    {
        return eKW_UNIT_NOT_DEFINED;
    }
    switch (type)
    {
    case eKW_ZEL_MEASUREMENT_TYPE_POS_OVERSHOOT:
    case eKW_ZEL_MEASUREMENT_TYPE_NEG_OVERSHOOT:
    case eKW_ZEL_MEASUREMENT_TYPE_POS_DUTY_CYCLE:
    case eKW_ZEL_MEASUREMENT_TYPE_NEG_DUTY_CYCLE:
        return eKW_UNIT_COUNT_PCT;
    case eKW_ZEL_MEASUREMENT_TYPE_CREST:
    case eKW_ZEL_MEASUREMENT_TYPE_POWER_FACTOR:
        return eKW_UNIT_NONE;
    case eKW_ZEL_MEASUREMENT_TYPE_AREA:
    case eKW_ZEL_MEASUREMENT_TYPE_CYCLE_AREA:
        return NUnits::TimesSecond(level);
    case eKW_ZEL_MEASUREMENT_TYPE_FREQUENCY:
        return eKW_UNIT_FREQ_HZ;
    case eKW_ZEL_MEASUREMENT_TYPE_POS_SLEWRATE:
    case eKW_ZEL_MEASUREMENT_TYPE_NEG_SLEWRATE:
        return NUnits::PerSecond(level);
    case eKW_ZEL_MEASUREMENT_TYPE_PHASE:
        return eKW_UNIT_ANGLE_DEG;
    case eKW_ZEL_MEASUREMENT_TYPE_ACTIVE_POWER:
        return eKW_UNIT_LEVEL_W;
    case eKW_ZEL_MEASUREMENT_TYPE_APPARENT_POWER:
    case eKW_ZEL_MEASUREMENT_TYPE_REACTIVE_POWER:
        return eKW_UNIT_LEVEL_VA;
    default:
        break;
    }
    if (IsBetween(type, eKW_ZEL_MEASUREMENT_TYPE_POS_PULSE_COUNT,
                  eKW_ZEL_MEASUREMENT_TYPE_FALLING_EDGE_COUNT))
    {
        return eKW_UNIT_COUNT;
    }
    return IsBetween(type, eKW_ZEL_MEASUREMENT_TYPE_PERIOD,
                     eKW_ZEL_MEASUREMENT_TYPE_DELAY_TO_TRIGGER)
               ? eKW_UNIT_FREQ_SEC
               : level;
}

void NMeasurementRules::KeepOrdered(CDbPropNumDouble& lower, CDbPropNumDouble& middle,
                                    CDbPropNumDouble& upper, const CDbPropBase* written)
{
    if (written == &upper)
    {
        NRules::KeepOrdered(middle, upper, &upper);
        NRules::KeepOrdered(lower, middle, &middle);
        return;
    }
    NRules::KeepOrdered(lower, middle, written);
    NRules::KeepOrdered(middle, upper, &middle);
}
