// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurements.h"

#include "Analysis/PgaCursorMeasurement.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Cursor.h"
#include "Names/CursorMeasurements.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgCursorMeasurements::Rules() const
{
    static constexpr auto update = Settle<&CPgCursorMeasurements::UpdateMeasurements>;
    static constexpr auto rows =
        Table<Names>(NRules::kSwitched >> update, NRules::kScreens >> update,
                     NRules::kMathematicsScreen >> update,
                     // Another stretch of the trace.
                     Changed(ZEL::Cursor / Cursor::X1, ZEL::Cursor / Cursor::X2) >>
                         Do<&CPgCursorMeasurements::DropMeasuredBelow>);
    return rows;
}

void CPgCursorMeasurements::UpdateMeasurements()
{
    NRules::UpdateSubtree(*m_pCursorMeasurement);
}
