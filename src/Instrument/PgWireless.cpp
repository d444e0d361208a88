// SPDX-License-Identifier: MIT
#include "Instrument/PgWireless.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgWirelessAccesspoint.h"
#include "Instrument/PgWirelessClient.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSystem.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
/** Highest channel of the 2.4 GHz band. The rules of these countries, and so what holds
    everywhere, end the band at 2472 MHz. */
UINT16 HighestChannel(KW_WIRELESS_COUNTRY country)
{
    switch (country)
    {
    case eKW_WIRELESS_COUNTRY_WORLD:
    case eKW_WIRELESS_COUNTRY_CA:
    case eKW_WIRELESS_COUNTRY_CO:
    case eKW_WIRELESS_COUNTRY_DO:
    case eKW_WIRELESS_COUNTRY_GT:
    case eKW_WIRELESS_COUNTRY_PA:
    case eKW_WIRELESS_COUNTRY_PR:
    case eKW_WIRELESS_COUNTRY_TW:
    case eKW_WIRELESS_COUNTRY_US:
        return 11;
    default:
        return 13;
    }
}
} // namespace

t_Couplings CPgWireless::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Mode) >> Do<&CPgWireless::EndLink>,
                     On(Names::Country) >> Derive<&CPgWireless::LimitChannel>);
    return rows;
}

void CPgWireless::LimitChannel()
{
    NRules::SetLimits<UINT16>(*m_pWirelessAccesspoint->GetPrChannel(), 1,
                              HighestChannel(m_pCountry->Get()));
}

void CPgWireless::EndLink()
{
    KW_CHECKED(m_pConnected->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pAddress->DbSet(QStringLiteral("")));
    KW_CHECKED(m_pWirelessClient->GetPrSignal()->SetValidity(eKW_VALIDITY_INVALID));
    KW_CHECKED(m_pWirelessAccesspoint->GetPrGuests()->DbSet(0));
}
