// SPDX-License-Identifier: MIT
#include "Buses/PgLabelListSettings.h"

#include "Buses/PgmSerialBusLabelItem.h"
#include "CheckedAccess.h"

KW_ACCEPTANCE CPgLabelListSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pClear)
    {
        for (const QString& name : m_pSerialBusLabelItem->GetNames())
        {
            KW_CHECKED(m_pSerialBusLabelItem->ProcessRemove(name));
        }
    }
    return CPgLabelListSettingsBase::OnFunction(function);
}

void CPgLabelListSettings::OnItemInserted(CDbContainerBase* container, const QString& item)
{
    CPgLabelListSettingsBase::OnItemInserted(container, item);
    UpdateGroup();
}

void CPgLabelListSettings::OnItemRemoved(CDbContainerBase* container, const QString& item)
{
    CPgLabelListSettingsBase::OnItemRemoved(container, item);
    UpdateGroup();
}

void CPgLabelListSettings::UpdateGroup()
{
    KW_CHECKED(m_pNumberOfLabels->DbSet(static_cast<UINT32>(m_pSerialBusLabelItem->GetCount())));
}
