// SPDX-License-Identifier: MIT
#include "PgBusChannelSettings.h"

#include "BusRules.h"
#include "PgaBusChannelSettings.h"

KW_ACCEPTANCE CPgBusChannelSettings::OnPropertySet(const CDbPropBase* property)
{
    AssignAll(property);
    return CPgBusChannelSettingsBase::OnPropertySet(property);
}

void CPgBusChannelSettings::UpdateGroup()
{
    AssignAll(nullptr);
}

void CPgBusChannelSettings::OnTreeCreated()
{
    CPgBusChannelSettingsBase::OnTreeCreated();
    if (NRules::IndexInArray(*this) == 0)
    {
        NRules::AddSourceDependency(
            *this, [this] { UpdateGroup(); }, QStringLiteral("BusChannelSettings/Source"));
    }
}

void CPgBusChannelSettings::AssignAll(const CDbPropBase* written)
{
    const auto* const array = dynamic_cast<const CPgaBusChannelSettings*>(GetParent());
    std::vector<NRules::t_BusLine> lines;
    for (INT32 i = 0; array != nullptr && i < array->GetCount(); ++i)
    {
        const CPgBusChannelSettings* const line = array->ItemDirect(i);
        lines.push_back({line->GetPrSource(), line->GetPrEnabled()->Get() == eKW_ONOFF_ON});
    }
    NRules::AssignLines(lines, written);
}
