// SPDX-License-Identifier: MIT
#include "Buses/PgCANBusSettings.h"

#include "Buses/BusRules.h"
#include "Buses/PgLabelListSettings.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/CANBusSettings.h"

using namespace NNames;

t_Couplings CPgCANBusSettings::Rules() const
{
    using C = CPgCANBusSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&C::FollowBitRate, &C::FollowDataBitRate, &C::UpdateAvailabilities>,
        On(Names::Standard) >> Do<&C::FitLabels>, Twins(Names::StandardBitRate, Names::BitRate),
        Twins(Names::StandardDataBitRate, Names::DataBitRate));
    return rows;
}

KW_ACCEPTANCE CPgCANBusSettings::FollowBitRate(const CDbPropBase* written)
{
    return NRules::FollowStandard(*m_pStandardBitRate, *m_pBitRate, written);
}

KW_ACCEPTANCE CPgCANBusSettings::FollowDataBitRate(const CDbPropBase* written)
{
    NRules::SetLimits(*m_pDataBitRate, m_pBitRate->Get(), m_pDataBitRate->GetDeclaredMax());
    NRules::OfferStandards(*m_pStandardDataBitRate, *m_pDataBitRate);
    return NRules::FollowStandard(*m_pStandardDataBitRate, *m_pDataBitRate, written);
}

void CPgCANBusSettings::UpdateAvailabilities()
{
    NRules::SetAvailable(
        {m_pProtocolStandard, m_pStandardDataBitRate, m_pDataBitRate, m_pDataSamplePoint},
        m_pStandard->Get() == eKW_CAN_STANDARD_CAN_FD);
}

KW_ZEL_SERIALBUS_PROTOCOL CPgCANBusSettings::Protocol() const
{
    return eKW_ZEL_SERIALBUS_PROTOCOL_CAN;
}

INT32 CPgCANBusSettings::PayloadBits(UINT32 /*identifierLength*/) const
{
    constexpr INT32 kClassicalBits = 64;
    return m_pStandard->Get() == eKW_CAN_STANDARD_CAN_FD ? NRules::LongestPayload(*this)
                                                         : kClassicalBits;
}

void CPgCANBusSettings::FitLabels()
{
    m_pLabelListSettings->FitToBus();
}
