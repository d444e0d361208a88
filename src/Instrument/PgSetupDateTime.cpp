// SPDX-License-Identifier: MIT
#include "Instrument/PgSetupDateTime.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSetupDateTime::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgSetupDateTime::UpdateAvailable>);
    return rows;
}

void CPgSetupDateTime::UpdateAvailable()
{
    const bool byNetwork = m_pUseNetworkTime->Get() == eKW_ONOFF_ON;
    NRules::SetAvailable({m_pTimeServer}, byNetwork);
    NRules::SetAvailable({m_pRequestedTime}, !byNetwork);
}
