// SPDX-License-Identifier: MIT
#include "Buses/PgLINBusTriggerSettings.h"

#include "KWEnumerationsSerialBus.h"

NRules::t_PatternSize CPgLINBusTriggerSettings::DataSize() const
{
    constexpr INT32 kByte = 8;
    return NRules::PatternOfUnits(kByte, kByte * static_cast<INT32>(m_pDataLength->Get()));
}

bool CPgLINBusTriggerSettings::HasIdentifier() const
{
    return m_pIdentifier->Get() == eKW_LIN_TRIGGER_IDENTIFIER_USER;
}
