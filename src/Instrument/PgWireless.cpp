// SPDX-License-Identifier: MIT
#include "Instrument/PgWireless.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgWirelessAccesspoint.h"
#include "Instrument/PgWirelessClient.h"
#include "Instrument/RadioChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSystem.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgWireless::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Mode) >> Do<&CPgWireless::EndLink>,
                     On(Names::Country) >> Derive<&CPgWireless::OfferChannels>);
    return rows;
}

void CPgWireless::OfferChannels()
{
    CDbPropNum<UINT16>& channel = *m_pWirelessAccesspoint->GetPrChannel();
    const QVariantList& channels = channel.GetValueList();
    UINT64 offered = 0;
    for (int i = 0; i < channels.size(); ++i)
    {
        const bool isOffered = NRadioChannels::IsPermitted(m_pCountry->Get(), channels[i].toInt());
        offered |= UINT64{isOffered} << i;
    }
    KW_CHECKED(channel.OfferEntries(offered));
}

void CPgWireless::EndLink()
{
    KW_CHECKED(m_pConnected->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pAddress->DbSet(QStringLiteral("")));
    KW_CHECKED(m_pWirelessClient->GetPrSignal()->SetValidity(eKW_VALIDITY_INVALID));
    KW_CHECKED(m_pWirelessAccesspoint->GetPrGuests()->DbSet(0));
}
