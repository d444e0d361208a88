// SPDX-License-Identifier: MIT
#include "Instrument/PgADReceiver.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgaADReceiverChannel.h"
#include "KWEnumerationsOnOff.h"

using namespace NNames;

t_Couplings CPgADReceiver::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Train) >> Do<&CPgADReceiver::BeginTraining>);
    return rows;
}

void CPgADReceiver::BeginTraining()
{
    KW_CHECKED(m_pTrained->DbSet(eKW_ONOFF_OFF));
    for (INT32 i = 0; i < m_pADReceiverChannel->GetCount(); ++i)
    {
        KW_CHECKED(m_pADReceiverChannel->ItemDirect(i)->GetPrErrorCount()->DbSet(0));
    }
}
