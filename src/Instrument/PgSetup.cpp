// SPDX-License-Identifier: MIT
#include "Instrument/PgSetup.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/FixedAddress.h"
#include "Names/Setup.h"

using namespace NNames;

t_Couplings CPgSetup::Rules() const
{
    static constexpr auto rows = Table<Names>(
        On(Names::EthernetFixedAddress, Names::EthernetNetworkMask, Names::EthernetGateway) >>
            Do<&CPgSetup::CheckAddress>,
        On(Names::EthernetAutomaticAddress) >> Derive<&CPgSetup::UpdateAvailable>);
    return rows;
}

t_FixedAddress CPgSetup::Wired() const
{
    return {*m_pEthernetAutomaticAddress, *m_pEthernetFixedAddress, *m_pEthernetNetworkMask,
            *m_pEthernetGateway, *m_pEthernetNameServer};
}

void CPgSetup::UpdateAvailable()
{
    Wired().UpdateAvailable();
}

KW_ACCEPTANCE CPgSetup::CheckAddress()
{
    return Wired().Check();
}
