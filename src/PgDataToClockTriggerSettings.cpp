// SPDX-License-Identifier: MIT
#include "PgDataToClockTriggerSettings.h"

#include "TriggerRules.h"

KW_ACCEPTANCE CPgDataToClockTriggerSettings::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgDataToClockTriggerSettingsBase::OnPropertySet(property);
}

void CPgDataToClockTriggerSettings::OnItemInserted(CDbContainerBase* container, const QString& item)
{
    CPgDataToClockTriggerSettingsBase::OnItemInserted(container, item);
    UpdateGroup();
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
