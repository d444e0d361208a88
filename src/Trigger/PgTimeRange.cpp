// SPDX-License-Identifier: MIT
#include "Trigger/PgTimeRange.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/TimeRange.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgTimeRange::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::LowerLimit, Names::UpperLimit) >> Do<&CPgTimeRange::OrderLimits>);
    return rows;
}

void CPgTimeRange::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, written);
}
