// SPDX-License-Identifier: MIT
#include "Buses/PgLabelListSettings.h"

#include "Buses/PgmSerialBusLabelItem.h"
#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/LabelListSettings.h"

using namespace NNames;

t_Couplings CPgLabelListSettings::Rules() const
{
    using L = CPgLabelListSettings;
    static constexpr auto rows =
        Table<Names>(On(Names::Clear) >> Do<&L::Clear>,
                     Items(Names::SerialBusLabelItem) >> Derive<&L::CountLabels>);
    return rows;
}

void CPgLabelListSettings::Clear()
{
    for (const QString& name : m_pSerialBusLabelItem->GetNames())
    {
        KW_CHECKED(m_pSerialBusLabelItem->ProcessRemove(name));
    }
}

void CPgLabelListSettings::CountLabels()
{
    KW_CHECKED(m_pNumberOfLabels->DbSet(static_cast<UINT32>(m_pSerialBusLabelItem->GetCount())));
}
