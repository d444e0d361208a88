// SPDX-License-Identifier: MIT
#include "Buses/PgCANBusTriggerSettings.h"

#include "Buses/PgCANBusSettings.h"
#include "Buses/PgSerialBus.h"
#include "KWEnumerationsSerialBus.h"
#include "Root/PgZEL.h"

void CPgCANBusTriggerSettings::UpdateGroup()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    NRules::SetAvailable(
        {m_pFDFBit, m_pBRSBit, m_pESIBit},
        root != nullptr && root->GetPgSerialBus()->GetPgCANBusSettings()->GetPrStandard()->Get() ==
                               eKW_CAN_STANDARD_CAN_FD);
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

void CPgCANBusTriggerSettings::OnTreeCreated()
{
    CBusTrigger::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this, {root->GetPgSerialBus()->GetPgCANBusSettings()->GetPrStandard()},
            [this] { UpdateGroup(); }, QStringLiteral("CANBusTriggerSettings/FDFBit"));
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
