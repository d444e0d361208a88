// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/SENTBusTriggerSettings.h"

using namespace NNames;

t_Couplings CPgSENTBusTriggerSettings::Rules() const
{
    using S = CPgSENTBusTriggerSettings;
    static constexpr auto rows =
        Table<Names>(OnAny() >> Do<&S::FitStatus>, On(Names::ClearPatterns) >> Do<&S::ClearStatus>,
                     PatternRows());
    return rows;
}

void CPgSENTBusTriggerSettings::FitStatus()
{
    NRules::FitPattern(*m_pStatus, NRules::ExactPattern(kNibble), QLatin1Char('X'));
}

void CPgSENTBusTriggerSettings::ClearStatus()
{
    KW_CHECKED(m_pStatus->DbSet(QString(kNibble, QLatin1Char('X'))));
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
