// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurements.h"

#include "Analysis/PgaCursorMeasurement.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/CursorMeasurements.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgCursorMeasurements::Rules() const
{
    static constexpr auto update = Settle<&CPgCursorMeasurements::UpdateMeasurements>;
    static constexpr auto rows =
        Table<Names>(NRules::kSwitched >> update, NRules::kScreens >> update,
                     NRules::kMathematicsScreen >> update);
    return rows;
}

void CPgCursorMeasurements::UpdateMeasurements()
{
    NRules::UpdateSubtree(*m_pCursorMeasurement);
}
