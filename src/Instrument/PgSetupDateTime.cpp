// SPDX-License-Identifier: MIT
#include "Instrument/PgSetupDateTime.h"

#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgSetupDateTime::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgSetupDateTimeBase::OnPropertySet(property);
}

void CPgSetupDateTime::UpdateGroup()
{
    const bool byNetwork = m_pUseNetworkTime->Get() == eKW_ONOFF_ON;
    NRules::SetAvailable({m_pTimeServer}, byNetwork);
    NRules::SetAvailable({m_pRequestedTime}, !byNetwork);
}
