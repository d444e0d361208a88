// SPDX-License-Identifier: MIT
#include "Buses/PgI2CBusSettings.h"

#include "Buses/BusRules.h"
#include "KWEnumerationsChannels.h"
#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgI2CBusSettings::OnPropertySet(const CDbPropBase* property)
{
    Assign(property);
    return CPgI2CBusSettingsBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgI2CBusSettings::OnFunction(const CDbFunction* function)
{
    if (function == m_pSwapLines)
    {
        const KW_ZEL_CHANNEL clock = m_pClockSource->Get();
        KW_CHECKED(m_pClockSource->DbSet(m_pDataSource->Get()));
        KW_CHECKED(m_pDataSource->DbSet(clock));
    }
    return CPgI2CBusSettingsBase::OnFunction(function);
}

void CPgI2CBusSettings::UpdateGroup()
{
    Assign(nullptr);
}

void CPgI2CBusSettings::OnTreeCreated()
{
    CPgI2CBusSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("I2CBusSettings/Sources"));
}

void CPgI2CBusSettings::Assign(const CDbPropBase* written)
{
    NRules::AssignLines({{m_pClockSource, true}, {m_pDataSource, true}}, written);
}
