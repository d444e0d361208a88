// SPDX-License-Identifier: MIT
#include "Analysis/PgMeasurement.h"

#include "Analysis/MeasurementRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "Names/Measurement.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgMeasurement::Rules() const
{
    using M = CPgMeasurement;
    constexpr auto measured =
        On(Names::Type, Names::Source, Names::SecondSource, Names::Slope, Names::SecondSlope);
    static constexpr auto rows =
        Table<Names>(On(Names::LowerLimit, Names::UpperLimit) >> Do<&M::OrderLimits>,
                     measured >> Derive<&M::OfferSources, &M::OfferQuantities, &M::UpdateUnit>,
                     measured >> Do<&M::ResetStatistics, &M::InvalidateActual>);
    return rows;
}

void CPgMeasurement::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, written);
}

void CPgMeasurement::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
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
    KW_CHECKED(m_pUnit->DbSet(
        NMeasurementRules::UnitOfQuantity(m_pType->Get(), NRules::UnitOf(*this, m_pSource->Get()),
                                          NRules::UnitOf(*this, m_pSecondSource->Get()))));
}

void CPgMeasurement::InvalidateActual()
{
    KW_CHECKED(m_pActual->SetValidity(eKW_VALIDITY_INVALID));
}

void CPgMeasurement::ResetStatistics()
{
    for (CDbPropNumDouble* const value : {m_pMinimum, m_pMaximum, m_pMean, m_pStandardDeviation})
    {
        KW_CHECKED(value->SetValidity(eKW_VALIDITY_INVALID));
    }
    KW_CHECKED(m_pCount->DbSet(0));
    KW_CHECKED(m_pLimit->DbSet(eKW_ZEL_LIMIT_INSIDE));
}

void CPgMeasurement::Disable()
{
    KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
}
