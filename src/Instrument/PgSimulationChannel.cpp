// SPDX-License-Identifier: MIT
#include "Instrument/PgSimulationChannel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsHardware.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSimulationChannel::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::Shape) >> Derive<&CPgSimulationChannel::UpdateAvailable>);
    return rows;
}

void CPgSimulationChannel::UpdateAvailable()
{
    const KW_ZEL_SIM_SIGNALSHAPE shape = m_pShape->Get();
    const bool isPeriodic =
        shape != eKW_ZEL_SIM_SIGNALSHAPE_DC && shape != eKW_ZEL_SIM_SIGNALSHAPE_NOISE;
    const bool hasHighTime =
        shape == eKW_ZEL_SIM_SIGNALSHAPE_SQUARE || shape == eKW_ZEL_SIM_SIGNALSHAPE_PULSE;
    NRules::SetAvailable({m_pAmplitude, m_pFrequency, m_pPhase}, isPeriodic);
    NRules::SetAvailable({m_pDutyCycle}, hasHighTime);
}
