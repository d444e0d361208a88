// SPDX-License-Identifier: MIT
#include "Trigger/TriggerRules.h"

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsTrigger.h"
#include "Rules/ChannelRules.h"
#include "Trigger/PgChannelState.h"
#include "Trigger/PgDataSource.h"
#include "Trigger/PgaChannelState.h"
#include "Trigger/PgaDataSource.h"

void NTriggerRules::ClearStates(const CPgaChannelState& states)
{
    for (INT32 i = 0; i < states.GetCount(); ++i)
    {
        KW_CHECKED(
            states.ItemDirect(i)->GetPrState()->DbSet(eKW_ZEL_TRIGGER_CHANNEL_STATE_DONT_CARE));
    }
}

void NTriggerRules::OfferData(const CPgaDataSource& data, KW_ZEL_CHANNEL clock)
{
    for (INT32 i = 0; i < data.GetCount(); ++i)
    {
        NRules::OfferSources(*data.ItemDirect(i)->GetPrSource(), NRules::eSOURCES_INPUTS, clock);
    }
}

void NTriggerRules::OfferClockAndData(CDbPropEnum<KW_ZEL_CHANNEL>& clock,
                                      const CPgaDataSource& data)
{
    NRules::OfferSources(clock, NRules::eSOURCES_INPUTS);
    OfferData(data, clock.Get());
}
