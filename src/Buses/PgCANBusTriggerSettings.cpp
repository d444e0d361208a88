// SPDX-License-Identifier: MIT
#include "Buses/PgCANBusTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/CANBusSettings.h"
#include "Names/CANBusTriggerSettings.h"
#include "Names/SerialBus.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgCANBusTriggerSettings::Rules() const
{
    using T = CPgCANBusTriggerSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&T::UpdateAvailabilities, &T::OfferFrameTypes>, PatternRows(),
        Changed(ZEL::SerialBus / SerialBus::CANBusSettings / CANBusSettings::Standard) >>
            Derive<&T::UpdateAvailabilities>);
    return rows;
}

void CPgCANBusTriggerSettings::UpdateAvailabilities()
{
    const KW_CAN_STANDARD standard =
        At(ZEL::SerialBus / SerialBus::CANBusSettings / CANBusSettings::Standard)->Get();
    NRules::SetAvailable({m_pFDFBit, m_pBRSBit, m_pESIBit}, standard == eKW_CAN_STANDARD_CAN_FD);
}

void CPgCANBusTriggerSettings::OfferFrameTypes()
{
    const KW_CAN_TRIGGER_TYPE type = m_pType->Get();
    const bool looksAtIdentifier =
        type == eKW_CAN_TRIGGER_TYPE_IDENTIFIER || type == eKW_CAN_TRIGGER_TYPE_IDENTIFIER_AND_DATA;
    for (const KW_CAN_FRAME_TYPE frame : {eKW_CAN_FRAME_TYPE_ERROR, eKW_CAN_FRAME_TYPE_OVERLOAD})
    {
        KW_CHECKED(m_pFrameType->EnableValue(frame, !looksAtIdentifier));
    }
    if (!m_pFrameType->IsValueEnabled(m_pFrameType->Get()))
    {
        KW_CHECKED(m_pFrameType->DbSet(eKW_CAN_FRAME_TYPE_DATA));
    }
}

NRules::t_PatternSize CPgCANBusTriggerSettings::IdentifierSize() const
{
    constexpr double kLongest = 29.0;
    const INT32 type = m_pIdentifierType->GetAsInt();
    return NRules::ExactPattern(
        static_cast<INT32>(m_pIdentifierType->GetNameInfo().GetNumber(type).value_or(kLongest)));
}

bool CPgCANBusTriggerSettings::HasIdentifier() const
{
    return m_pIdentifierType->Get() != eKW_CAN_IDENTIFIER_TYPE_ANY;
}
