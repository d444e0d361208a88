// SPDX-License-Identifier: MIT
#include "Instrument/PgRemoteControl.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSystem.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgRemoteControl::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgRemoteControl::UpdateAvailable>,
                     On(Names::ReturnToLocal) >> Do<&CPgRemoteControl::ReturnToLocal>);
    return rows;
}

void CPgRemoteControl::ReturnToLocal()
{
    GetDbRoot()->SetControlMode(eCONTROL_LOCAL);
    KW_CHECKED(At(ZEL::RemoteState)->DbSet(eKW_ONOFF_OFF));
    KW_CHECKED(m_pLocalLockout->DbSet(eKW_ONOFF_OFF));
}

void CPgRemoteControl::UpdateAvailable()
{
    const KW_REMOTECONTROL_INTERFACE used = m_pInterface->Get();
    NRules::SetAvailable({m_pPort}, used == eKW_REMOTECONTROL_INTERFACE_ETHERNET ||
                                        used == eKW_REMOTECONTROL_INTERFACE_WIRELESS);
}
