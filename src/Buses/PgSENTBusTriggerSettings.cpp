// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusTriggerSettings.h"

#include "KWEnumerationsSerialBus.h"

KW_ACCEPTANCE CPgSENTBusTriggerSettings::OnPropertySet(const CDbPropBase* property)
{
    NRules::FitPattern(*m_pStatus, NRules::ExactPattern(kNibble), QLatin1Char('X'));
    return CBusTrigger::OnPropertySet(property);
}

KW_ACCEPTANCE CPgSENTBusTriggerSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pClearPatterns)
    {
        KW_CHECKED(m_pStatus->DbSet(QString(kNibble, QLatin1Char('X'))));
    }
    return CBusTrigger::OnFunction(function);
}

NRules::t_PatternSize CPgSENTBusTriggerSettings::DataSize() const
{
    constexpr INT32 kFrameBits = 32;
    constexpr INT32 kMessageBits = 16;
    const bool isMessage = m_pType->Get() == eKW_SENT_TRIGGER_TYPE_IDENTIFIER_AND_DATA;
    return NRules::PatternOfUnits(kNibble, isMessage ? kMessageBits : kFrameBits);
}

NRules::t_PatternSize CPgSENTBusTriggerSettings::IdentifierSize() const
{
    return NRules::ExactPattern(m_pIdentifierType->Get() == eKW_SENT_IDPATTERN_TYPE_4_BIT ? 4 : 8);
}

bool CPgSENTBusTriggerSettings::HasIdentifier() const
{
    return m_pIdentifierType->Get() != eKW_SENT_IDPATTERN_TYPE_ANY;
}
