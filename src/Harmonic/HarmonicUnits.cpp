// SPDX-License-Identifier: MIT
#include "Harmonic/HarmonicUnits.h"

#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWEnumerationsHarmonics.h"
#include "KWEnumerationsUnits.h"
#include "Names/Channel.h"
#include "Names/Harmonic.h"
#include "Names/HarmonicLimitCurrent.h"
#include "Names/HarmonicStandard.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"

using namespace NNames;

KW_UNIT NHarmonicUnits::OfChannel(const CDbPropertyGroup& group, INT32 channel)
{
    return group.At(ZEL::Vertical / Vertical::Channel / channel / Channel::ProbeUnit)->Get();
}

KW_UNIT NHarmonicUnits::OfMagnitudes(const CDbPropertyGroup& group, INT32 channel)
{
    switch (group.At(ZEL::Harmonic / Harmonic::ScaleSelection)->Get())
    {
    case eKW_HMA_SCALE_SELECTION_ABSOLUTE:
        return OfChannel(group, channel);
    case eKW_HMA_SCALE_SELECTION_DB_FUNDAMENTAL:
        return eKW_UNIT_LEVEL_DB;
    default:
        return eKW_UNIT_COUNT_PCT;
    }
}

KW_UNIT NHarmonicUnits::OfStandard(KW_HMA_STANDARD standard)
{
    switch (standard)
    {
    case eKW_HMA_STANDARD_NONE:
        return eKW_UNIT_NOT_DEFINED;
    case eKW_HMA_STANDARD_EN50160:
    case eKW_HMA_STANDARD_MIL_STD_1399_VOLTAGE:
        return eKW_UNIT_LEVEL_V;
    case eKW_HMA_STANDARD_USER:
        return eKW_UNIT_NONE;
    default:
        return eKW_UNIT_LEVEL_A;
    }
}

bool NHarmonicUnits::HasLimits(const CDbPropertyGroup& group, INT32 channel)
{
    constexpr auto limits =
        ZEL::Harmonic / Harmonic::HarmonicStandard / HarmonicStandard::HarmonicLimitCurrent;
    const KW_UNIT unit = group.At(limits / HarmonicLimitCurrent::Unit)->Get();
    return unit == eKW_UNIT_NONE || unit == OfChannel(group, channel);
}
