// SPDX-License-Identifier: MIT
#include "Trigger/PgDataToClockTriggerSettings.h"

#include "Rules/ChannelRules.h"
#include "Trigger/TriggerRules.h"

KW_ACCEPTANCE CPgDataToClockTriggerSettings::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgDataToClockTriggerSettingsBase::OnPropertySet(property);
}

void CPgDataToClockTriggerSettings::OnItemInserted(CDbContainerBase* container, const QString& item)
{
    CPgDataToClockTriggerSettingsBase::OnItemInserted(container, item);
    // Not the clock: in a recall the digital channel that it is may not be on yet.
    NTriggerRules::OfferData(*m_pDataSource, m_pClockSource->Get());
}

void CPgDataToClockTriggerSettings::UpdateGroup()
{
    NTriggerRules::OfferClockAndData(*m_pClockSource, *m_pDataSource);
}

void CPgDataToClockTriggerSettings::OnTreeCreated()
{
    CPgDataToClockTriggerSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("DataToClockTriggerSettings/ClockSource"));
}
