// SPDX-License-Identifier: MIT
#include "Meter/PgMeterSourceChannel.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "Names/MeterSourceChannel.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgMeterSourceChannel::Rules() const
{
    using S = CPgMeterSourceChannel;
    static constexpr auto rows = Table<Names>(On(Names::Range) >> Do<&S::EndAutoRange>,
                                              On(Names::Range) >> Derive<&S::ScaleFromRange>);
    return rows;
}

t_MeterInput CPgMeterSourceChannel::Input() const
{
    const auto channel = ZEL::Vertical / Vertical::Channel / NRules::IndexInArray(*this);
    return {m_pRange->Get() * At(channel / Channel::ProbeFactor)->Get(),
            At(channel / Channel::ProbeUnit)->Get()};
}

void CPgMeterSourceChannel::EndAutoRange()
{
    KW_CHECKED(m_pAutoRange->DbSet(eKW_ZEL_METER_AUTORANGE_OFF));
}

void CPgMeterSourceChannel::ScaleFromRange()
{
    KW_CHECKED(m_pScale->DbSet(
        CZELDatabaseHelperCommon::ConvertMeterRange2VerticalScale(m_pRange->Get())));
}
