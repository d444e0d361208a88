// SPDX-License-Identifier: MIT
#include "Instrument/PgDisplay.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgmUserInterfaceLanguage.h"

using namespace NNames;

t_Couplings CPgDisplay::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::SelectedLanguage) >> Do<&CPgDisplay::RefuseForeignLanguage>);
    return rows;
}

void CPgDisplay::RefuseForeignLanguage()
{
    if (m_pSelectedLanguage->IsActive() &&
        m_pSelectedLanguage->GetContainer() != m_pUserInterfaceLanguage)
    {
        KW_CHECKED(m_pSelectedLanguage->DbSet(QStringLiteral("")));
    }
}
