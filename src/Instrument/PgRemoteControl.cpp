// SPDX-License-Identifier: MIT
#include "Instrument/PgRemoteControl.h"

#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSystem.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgRemoteControl::OnFunction(const CDbFunction* function)
{
    CPgZEL* const root = CPgZEL::Of(*this);
    if (function == m_pReturnToLocal && root != nullptr)
    {
        root->SetControlMode(eCONTROL_LOCAL);
        KW_CHECKED(root->GetPrRemoteState()->DbSet(eKW_ONOFF_OFF));
        KW_CHECKED(m_pLocalLockout->DbSet(eKW_ONOFF_OFF));
    }
    return CPgRemoteControlBase::OnFunction(function);
}

KW_ACCEPTANCE CPgRemoteControl::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgRemoteControlBase::OnPropertySet(property);
}

void CPgRemoteControl::UpdateGroup()
{
    const KW_REMOTECONTROL_INTERFACE used = m_pInterface->Get();
    NRules::SetAvailable({m_pPort}, used == eKW_REMOTECONTROL_INTERFACE_ETHERNET ||
                                        used == eKW_REMOTECONTROL_INTERFACE_WIRELESS);
}
