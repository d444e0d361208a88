// SPDX-License-Identifier: MIT
#include "Instrument/PgWirelessClient.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/FixedAddress.h"

using namespace NNames;

t_Couplings CPgWirelessClient::Rules() const
{
    using C = CPgWirelessClient;
    static constexpr auto rows = Table<Names>(
        On(Names::FixedAddress, Names::NetworkMask, Names::Gateway) >> Do<&C::CheckAddress>,
        On(Names::AutomaticAddress) >> Derive<&C::UpdateAvailable>);
    return rows;
}

t_FixedAddress CPgWirelessClient::Fixed() const
{
    return {*m_pAutomaticAddress, *m_pFixedAddress, *m_pNetworkMask, *m_pGateway, *m_pNameServer};
}

void CPgWirelessClient::UpdateAvailable()
{
    Fixed().UpdateAvailable();
}

KW_ACCEPTANCE CPgWirelessClient::CheckAddress()
{
    return Fixed().Check();
}
