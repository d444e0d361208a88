// SPDX-License-Identifier: MIT
#include "Instrument/PgWirelessClient.h"

#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgWirelessClient::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgWirelessClientBase::OnPropertySet(property);
}

void CPgWirelessClient::UpdateGroup()
{
    NRules::SetAvailable({m_pFixedAddress}, m_pAutomaticAddress->Get() == eKW_ONOFF_OFF);
}
