// SPDX-License-Identifier: MIT
#include "Instrument/PgWirelessAccesspoint.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"

using namespace NNames;

t_Couplings CPgWirelessAccesspoint::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Passphrase) >> Do<&CPgWirelessAccesspoint::DropShortPassphrase>);
    return rows;
}

void CPgWirelessAccesspoint::DropShortPassphrase()
{
    constexpr int kShortest = 8;
    const auto length = m_pPassphrase->Get().size();
    if (length > 0 && length < kShortest)
    {
        KW_CHECKED(m_pPassphrase->DbSet(QStringLiteral("")));
    }
}
