// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/SENTBusSettings.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSENTBusSettings::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgSENTBusSettings::UpdateAvailabilities>);
    return rows;
}

void CPgSENTBusSettings::UpdateAvailabilities()
{
    NRules::SetAvailable({m_pFrameLength},
                         m_pPausePulse->Get() == eKW_SENT_PAUSE_PULSE_CONSTANT_FRAME);
    NRules::SetAvailable({m_pDisplayFast}, m_pDisplay->Get() != eKW_SENT_DISPLAY_SLOW);
}
