// SPDX-License-Identifier: MIT
#include "Instrument/PgWirelessClient.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgWirelessClient::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgWirelessClient::UpdateAvailable>);
    return rows;
}

void CPgWirelessClient::UpdateAvailable()
{
    NRules::SetAvailable({m_pFixedAddress}, m_pAutomaticAddress->Get() == eKW_ONOFF_OFF);
}
