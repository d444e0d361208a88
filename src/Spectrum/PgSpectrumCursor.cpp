// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumCursor.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"

using namespace NNames;

t_Couplings CPgSpectrumCursor::Rules() const
{
    static constexpr auto rows = Table<Names>(On(Names::Reset) >> Do<&CPgSpectrumCursor::Reset>);
    return rows;
}

void CPgSpectrumCursor::Reset()
{
    KW_CHECKED(m_pHorizontal->DbSet(m_pHorizontal->GetDefault()));
}
