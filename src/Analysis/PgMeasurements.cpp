// SPDX-License-Identifier: MIT
#include "Analysis/PgMeasurements.h"

#include "Analysis/MeasurementRules.h"
#include "Analysis/PgMeasurement.h"
#include "Analysis/PgaMeasurement.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Measurements.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgMeasurements::Rules() const
{
    using M = CPgMeasurements;
    static constexpr auto update = Settle<&M::UpdateMeasurements>;
    static constexpr auto rows = Table<Names>(
        On(Names::GateStart, Names::GateStop) >> Do<&M::OrderGate>,
        On(Names::LowerReferencePercent, Names::MiddleReferencePercent,
           Names::UpperReferencePercent) >>
            Do<&M::OrderPercents>,
        On(Names::LowerReferenceLevel, Names::MiddleReferenceLevel, Names::UpperReferenceLevel) >>
            Do<&M::OrderLevels>,
        // Another stretch of the trace, or other levels at which its edges count.
        Changed(Names::GateEnabled, Names::GateStart, Names::GateStop, Names::ReferenceLevelMode,
                Names::LowerReferencePercent, Names::MiddleReferencePercent,
                Names::UpperReferencePercent, Names::LowerReferenceLevel,
                Names::MiddleReferenceLevel, Names::UpperReferenceLevel) >>
            Do<&M::DropMeasuredBelow>,
        On(Names::ResetStatistics) >> Do<&M::ResetStatistics>,
        On(Names::DisableAll) >> Do<&M::DisableAll>, NRules::kSwitched >> update,
        NRules::kScreens >> update, NRules::kMathematicsScreen >> update);
    return rows;
}

void CPgMeasurements::OrderGate(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pGateStart, *m_pGateStop, written);
}

void CPgMeasurements::OrderPercents(const CDbPropBase* written)
{
    NMeasurementRules::KeepOrdered(*m_pLowerReferencePercent, *m_pMiddleReferencePercent,
                                   *m_pUpperReferencePercent, written);
}

void CPgMeasurements::OrderLevels(const CDbPropBase* written)
{
    NMeasurementRules::KeepOrdered(*m_pLowerReferenceLevel, *m_pMiddleReferenceLevel,
                                   *m_pUpperReferenceLevel, written);
}

void CPgMeasurements::ResetStatistics()
{
    ForEach(&CPgMeasurement::ResetStatistics);
}

void CPgMeasurements::DisableAll()
{
    ForEach(&CPgMeasurement::Disable);
}

void CPgMeasurements::UpdateMeasurements()
{
    NRules::UpdateSubtree(*m_pMeasurement);
}

void CPgMeasurements::ForEach(void (CPgMeasurement::*step)())
{
    for (INT32 i = 0; i < m_pMeasurement->GetCount(); ++i)
    {
        (m_pMeasurement->ItemDirect(i)->*step)();
    }
}
