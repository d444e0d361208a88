// SPDX-License-Identifier: MIT
#include "Analysis/PgMeasurements.h"

#include "Analysis/MeasurementRules.h"
#include "Analysis/PgMeasurement.h"
#include "Analysis/PgaMeasurement.h"

KW_ACCEPTANCE CPgMeasurements::OnPropertySet(const CDbPropBase* property)
{
    NRules::KeepOrdered(*m_pGateStart, *m_pGateStop, property);
    NMeasurementRules::KeepOrdered(*m_pLowerReferencePercent, *m_pMiddleReferencePercent,
                                   *m_pUpperReferencePercent, property);
    NMeasurementRules::KeepOrdered(*m_pLowerReferenceLevel, *m_pMiddleReferenceLevel,
                                   *m_pUpperReferenceLevel, property);
    return CPgMeasurementsBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgMeasurements::OnFunction(const CDbFunction* function)
{
    if (function == m_pResetStatistics)
    {
        ForEach(&CPgMeasurement::ResetStatistics);
    }
    if (function == m_pDisableAll)
    {
        ForEach(&CPgMeasurement::Disable);
    }
    return CPgMeasurementsBase::OnFunction(function);
}

void CPgMeasurements::OnTreeCreated()
{
    CPgMeasurementsBase::OnTreeCreated();
    NMeasurementRules::AddTraceDependency(
        *this, [this] { NRules::UpdateSubtree(*this); }, QStringLiteral("Measurements/Unit"));
}

void CPgMeasurements::ForEach(void (CPgMeasurement::*step)())
{
    for (INT32 i = 0; i < m_pMeasurement->GetCount(); ++i)
    {
        (m_pMeasurement->ItemDirect(i)->*step)();
    }
}
