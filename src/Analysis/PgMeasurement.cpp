// SPDX-License-Identifier: MIT
#include "Analysis/PgMeasurement.h"

#include "Analysis/MeasurementRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Names/Measurement.h"
#include "Rules/ChannelRules.h"
#include "Rules/ReadingRules.h"
#include "Rules/SourceDependencies.h"

#include <tuple>

using namespace NNames;

namespace
{
/** Traces whose levels make a power with a level. */
class CPowerPartners final : public IApplicationOnSources
{
public:
    CPowerPartners(const CDbPropertyGroup& group, KW_UNIT level) : m_group(group), m_level(level) {}

    bool IsSourceApplicable(KW_ZEL_CHANNEL channel) const override
    {
        return NMeasurementRules::MakePower(m_level, NRules::UnitOf(m_group, channel));
    }
    bool AreThere() const
    {
        const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, &m_group);
        for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
        {
            const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
            if (IsSourceApplicable(channel) && activity.IsSourceActive(channel))
            {
                return true;
            }
        }
        return false;
    }

private:
    const CDbPropertyGroup& m_group;
    KW_UNIT m_level;
};
} // namespace

t_Couplings CPgMeasurement::Rules() const
{
    using M = CPgMeasurement;
    static constexpr auto rows = Table<Names>(
        On(Names::LowerLimit, Names::UpperLimit) >> Do<&M::OrderLimits>,
        On(Names::Type, Names::Source, Names::SecondSource) >> Derive<&M::Follow>,
        On(Names::Type, Names::Source, Names::SecondSource, Names::Slope, Names::SecondSlope) >>
            Do<&M::DropMeasured>,
        On(Names::LimitCheckEnabled, Names::LowerLimit, Names::UpperLimit) >> Do<&M::DropLimitTest>,
        NRules::kProbes >> Do<&M::DropOfProbe>,
        NRules::kMathematicsCurve >> Do<&M::DropOfMathematics>,
        Delivered(Names::Actual, Names::Minimum, Names::Maximum, Names::Mean,
                  Names::StandardDeviation, Names::Count, Names::Limit) >>
            Do<&M::DropUnmeasurable>);
    return rows;
}

void CPgMeasurement::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, written);
}

void CPgMeasurement::Follow()
{
    const auto measured = [this] {
        return std::tuple(m_pType->Get(), m_pSource->Get(), m_pSecondSource->Get(), m_pUnit->Get());
    };
    const auto before = measured();
    OfferSource();
    OfferQuantities();
    OfferSecondSource();
    UpdateUnit();
    if (measured() != before || !m_pSource->IsValueEnabled(m_pSource->Get()))
    {
        DropMeasured();
    }
}

void CPgMeasurement::OfferSource()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
}

void CPgMeasurement::OfferSecondSource()
{
    const CPowerPartners partners(*this, NRules::UnitOf(*this, m_pSource->Get()));
    if (NMeasurementRules::IsPower(m_pType->Get()) && partners.AreThere())
    {
        CSourceDependencies(partners, eSOURCE_ACTIVITY_SWITCHED_ON)
            .SetAvailableSources(*m_pSecondSource, true);
        return;
    }
    NRules::OfferSources(*m_pSecondSource, NRules::eSOURCES_TRACES);
}

void CPgMeasurement::OfferQuantities()
{
    const bool isDigital = NRules::TraceTypeOf(m_pSource->Get()) == eKW_ZEL_TRACE_TYPE_DIGITAL;
    for (INT32 value = 0; value < m_pType->GetEnumSize(); ++value)
    {
        const auto type = static_cast<KW_ZEL_MEASUREMENT_TYPE>(value);
        KW_CHECKED(
            m_pType->EnableValue(type, !isDigital || NMeasurementRules::IsDigitalQuantity(type)));
    }
    KW_CHECKED(m_pType->FollowWish(eKW_ZEL_MEASUREMENT_TYPE_FREQUENCY));
}

void CPgMeasurement::UpdateUnit()
{
    const KW_UNIT unit =
        NMeasurementRules::UnitOfQuantity(m_pType->Get(), NRules::UnitOf(*this, m_pSource->Get()),
                                          NRules::UnitOf(*this, m_pSecondSource->Get()));
    KW_CHECKED(m_pUnit->DbSet(unit));
    for (CDbPropNumDouble* const number : {m_pLowerLimit, m_pUpperLimit, m_pActual, m_pMinimum,
                                           m_pMaximum, m_pMean, m_pStandardDeviation})
    {
        KW_CHECKED(number->SetUnit(unit));
    }
}

void CPgMeasurement::DropLimitTest()
{
    NRules::Invalidate({m_pLimit});
}

void CPgMeasurement::DropOfProbe(const CDbPropBase* probe)
{
    if (NRules::RestsOn(m_pSource->Get(), *probe) ||
        NRules::RestsOn(m_pSecondSource->Get(), *probe))
    {
        DropMeasured();
    }
}

void CPgMeasurement::DropOfMathematics()
{
    if (m_pSource->Get() == eKW_ZEL_CHANNEL_M1 || m_pSecondSource->Get() == eKW_ZEL_CHANNEL_M1)
    {
        DropMeasured();
    }
}

void CPgMeasurement::DropUnmeasurable()
{
    if (NMeasurementRules::IsPower(m_pType->Get()) && m_pUnit->Get() == eKW_UNIT_NOT_DEFINED)
    {
        DropMeasured();
    }
}

void CPgMeasurement::ResetStatistics()
{
    NRules::Invalidate({m_pMinimum, m_pMaximum, m_pMean, m_pStandardDeviation, m_pLimit});
    KW_CHECKED(m_pCount->DbSet(0));
}

void CPgMeasurement::Disable()
{
    KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
}
