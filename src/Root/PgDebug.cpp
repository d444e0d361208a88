// SPDX-License-Identifier: MIT
#include "Root/PgDebug.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"

using namespace NNames;

t_Couplings CPgDebug::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::RegisterAddress) >> Do<&CPgDebug::ForgetReadback>);
    return rows;
}

void CPgDebug::ForgetReadback()
{
    KW_CHECKED(m_pRegisterReadback->SetValidity(eKW_VALIDITY_INVALID));
}
