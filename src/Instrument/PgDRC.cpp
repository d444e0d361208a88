// SPDX-License-Identifier: MIT
#include "Instrument/PgDRC.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"

using namespace NNames;

t_Couplings CPgDRC::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::ClearViolations) >> Do<&CPgDRC::ClearViolations>);
    return rows;
}

void CPgDRC::ClearViolations()
{
    KW_CHECKED(m_pViolations->DbSet(0));
    KW_CHECKED(m_pLastViolation->DbSet(QStringLiteral("")));
}
