// SPDX-License-Identifier: MIT
#include "Buses/PgSENTBusTriggerSettings.h"

#include "Buses/PgSENTBusSettings.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/SENTBusSettings.h"
#include "Names/SENTBusTriggerSettings.h"
#include "Names/SerialBus.h"
#include "Names/ZEL.h"

using namespace NNames;

namespace
{
constexpr auto kBus = ZEL::SerialBus / SerialBus::SENTBusSettings;
}

t_Couplings CPgSENTBusTriggerSettings::Rules() const
{
    using S = CPgSENTBusTriggerSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Do<&S::FitStatus>, On(Names::ClearPatterns) >> Do<&S::ClearStatus>,
        PatternRows(),
        Changed(kBus / SENTBusSettings::DataNibbles, kBus / SENTBusSettings::SerialMessageFormat) >>
            Settle<&S::FitConditions>);
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
    const bool isMessage = m_pType->Get() == eKW_SENT_TRIGGER_TYPE_IDENTIFIER_AND_DATA;
    const bool hasByte = m_pIdentifierType->Get() == eKW_SENT_IDPATTERN_TYPE_8_BIT;
    const UINT32 identifier = !isMessage ? 0 : hasByte ? 8 : 4;
    return NRules::PatternOfUnits(kNibble, At(kBus)->PayloadBits(identifier));
}

NRules::t_PatternSize CPgSENTBusTriggerSettings::IdentifierSize() const
{
    return NRules::ExactPattern(m_pIdentifierType->Get() == eKW_SENT_IDPATTERN_TYPE_4_BIT ? 4 : 8);
}

bool CPgSENTBusTriggerSettings::HasIdentifier() const
{
    return m_pIdentifierType->Get() != eKW_SENT_IDPATTERN_TYPE_ANY;
}
