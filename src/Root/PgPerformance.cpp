// SPDX-License-Identifier: MIT
#include "Root/PgPerformance.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/Performance.h"

using namespace NNames;

t_Couplings CPgPerformance::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ResetFigures) >> Do<&CPgPerformance::DropMeasuredBelow>);
    return rows;
}
