// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurement.h"

#include "Analysis/MeasurementRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsUnits.h"
#include "Names/CursorMeasurement.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgCursorMeasurement::Rules() const
{
    using M = CPgCursorMeasurement;
    constexpr auto measured = On(Names::Type, Names::Source);
    static constexpr auto rows = Table<Names>(measured >> Derive<&M::OfferSources, &M::UpdateUnit>,
                                              measured >> Do<&M::InvalidateResult>);
    return rows;
}

void CPgCursorMeasurement::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
}

void CPgCursorMeasurement::UpdateUnit()
{
    const KW_UNIT level = NRules::UnitOf(*this, m_pSource->Get());
    KW_CHECKED(m_pUnit->DbSet(NMeasurementRules::UnitOfQuantity(m_pType->Get(), level, level)));
}

void CPgCursorMeasurement::InvalidateResult()
{
    KW_CHECKED(m_pResult->SetValidity(eKW_VALIDITY_INVALID));
}
