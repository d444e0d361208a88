// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusSettings.h"

#include "KWEnumerationsSerialBus.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgSENTBusSettings::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgSENTBusSettingsBase::OnPropertySet(property);
}

void CPgSENTBusSettings::UpdateGroup()
{
    NRules::SetAvailable({m_pFrameLength},
                         m_pPausePulse->Get() == eKW_SENT_PAUSE_PULSE_CONSTANT_FRAME);
    NRules::SetAvailable({m_pDisplayFast}, m_pDisplay->Get() != eKW_SENT_DISPLAY_SLOW);
}
