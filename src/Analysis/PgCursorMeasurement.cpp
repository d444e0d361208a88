// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurement.h"

#include "Analysis/MeasurementRules.h"
#include "KWEnumerationsUnits.h"
#include "Root/PgZEL.h"
#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgCursorMeasurement::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pType || property == m_pSource)
    {
        UpdateGroup();
        KW_CHECKED(m_pResult->SetValidity(eKW_VALIDITY_INVALID));
    }
    return CPgCursorMeasurementBase::OnPropertySet(property);
}

void CPgCursorMeasurement::UpdateGroup()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
    const KW_UNIT level = NRules::UnitOf(*this, m_pSource->Get());
    KW_CHECKED(m_pUnit->DbSet(NMeasurementRules::UnitOfQuantity(m_pType->Get(), level, level)));
}
