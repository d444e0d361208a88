// SPDX-License-Identifier: MIT
#include "Buses/PgSerialBusLabelItem.h"

#include "Buses/PgmSignalTranslation.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgSerialBusLabelItem::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pPayloadLength)
    {
        NRules::UpdateSubtree(*m_pSignalTranslation);
    }
    UpdateGroup();
    return CPgSerialBusLabelItemBase::OnPropertySet(property);
}

void CPgSerialBusLabelItem::UpdateGroup()
{
    const UINT32 highest = (UINT32{1} << m_pIdentifierLength->Get()) - 1;
    NRules::SetLimits<UINT32>(*m_pIdentifier, 0, highest);
}
