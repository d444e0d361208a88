// SPDX-License-Identifier: MIT
#include "Trigger/PgSerialPatternTriggerSettings.h"

#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

KW_ACCEPTANCE CPgSerialPatternTriggerSettings::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgSerialPatternTriggerSettingsBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgSerialPatternTriggerSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pClearPattern)
    {
        KW_CHECKED(m_pPattern->DbSet(QString(m_pPattern->Get().size(), QLatin1Char('X'))));
    }
    return CPgSerialPatternTriggerSettingsBase::OnFunction(function);
}

void CPgSerialPatternTriggerSettings::UpdateGroup()
{
    NTriggerRules::OfferClockAndData(*m_pClockSource, *m_pDataSource);
}

void CPgSerialPatternTriggerSettings::OnTreeCreated()
{
    CPgSerialPatternTriggerSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); },
        QStringLiteral("SerialPatternTriggerSettings/ClockSource"));
}
