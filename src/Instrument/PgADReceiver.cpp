// SPDX-License-Identifier: MIT
#include "Instrument/PgADReceiver.h"

#include "CheckedAccess.h"
#include "Instrument/PgaADReceiverChannel.h"
#include "KWEnumerationsOnOff.h"

KW_ACCEPTANCE CPgADReceiver::OnFunction(const CDbFunction* function)
{
    if (function == m_pTrain)
    {
        KW_CHECKED(m_pTrained->DbSet(eKW_ONOFF_OFF));
        for (INT32 i = 0; i < m_pADReceiverChannel->GetCount(); ++i)
        {
            KW_CHECKED(m_pADReceiverChannel->ItemDirect(i)->GetPrErrorCount()->DbSet(0));
        }
    }
    return CPgADReceiverBase::OnFunction(function);
}
