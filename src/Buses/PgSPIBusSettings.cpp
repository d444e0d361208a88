// SPDX-License-Identifier: MIT
#include "Buses/PgSPIBusSettings.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/SPIBusSettings.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgSPIBusSettings::Rules() const
{
    using S = CPgSPIBusSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&S::AssignLines, &S::UpdateAvailabilities, &S::FollowWordLength>,
        NRules::kSwitched >> Derive<&S::AssignLines>,
        Twins(Names::StandardWordLength, Names::WordLength));
    return rows;
}

void CPgSPIBusSettings::AssignLines(const CDbPropBase* written)
{
    NRules::AssignLines({{m_pClockSource, true},
                         {m_pMosiSource, m_pMosiEnabled->Get() == eKW_ONOFF_ON},
                         {m_pMisoSource, m_pMisoEnabled->Get() == eKW_ONOFF_ON},
                         {m_pSelectSource, m_pFrameMode->Get() == eKW_FRAME_MODE_SELECT}},
                        written);
}

void CPgSPIBusSettings::UpdateAvailabilities()
{
    const bool isSelected = m_pFrameMode->Get() == eKW_FRAME_MODE_SELECT;
    NRules::SetAvailable({m_pSelectPolarity}, isSelected);
    NRules::SetAvailable({m_pIdleTime}, !isSelected);
}

KW_ACCEPTANCE CPgSPIBusSettings::FollowWordLength(const CDbPropBase* written)
{
    return NRules::FollowStandard(*m_pStandardWordLength, *m_pWordLength, written);
}
