// SPDX-License-Identifier: MIT
#include "Buses/PgUARTBusSettings.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/UARTBusSettings.h"

using namespace NNames;

t_Couplings CPgUARTBusSettings::Rules() const
{
    using U = CPgUARTBusSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&U::UpdateAvailabilities, &U::FitEndOfFrame, &U::FollowBitRate>,
        Twins(Names::StandardBitRate, Names::BitRate));
    return rows;
}

void CPgUARTBusSettings::UpdateAvailabilities()
{
    const KW_FRAME_MODE mode = m_pFrameMode->Get();
    NRules::SetAvailable({m_pIdleTime}, mode == eKW_FRAME_MODE_TIMEOUT);
    NRules::SetAvailable({m_pEndOfFramePattern}, mode == eKW_FRAME_MODE_PATTERN);
}

void CPgUARTBusSettings::FitEndOfFrame()
{
    NRules::FitPattern(*m_pEndOfFramePattern,
                       NRules::ExactPattern(NRules::WordLength(*m_pDataLength)), QLatin1Char('0'));
}

KW_ACCEPTANCE CPgUARTBusSettings::FollowBitRate(const CDbPropBase* written)
{
    return NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, written);
}
