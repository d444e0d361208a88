// SPDX-License-Identifier: MIT
#include "Buses/PgBusChannelSettings.h"

#include "Buses/BusRules.h"
#include "Buses/PgaBusChannelSettings.h"
#include "Channels/PgChannel.h"
#include "Channels/PgLevels.h"
#include "Channels/PgLogic.h"
#include "Channels/PgLogicThresholdSettings.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "Channels/PgaLogicThresholdSettings.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Root/PgZEL.h"
#include "Rules/ChannelRules.h"

namespace
{
constexpr INT32 kLinesPerHalf = 4;

/** The threshold of a channel's own, or of the half of the logic probe that the input belongs to;
    null for what has no threshold. */
const CPgLogicThresholdSettings* ThresholdOf(const CPgZEL& root, KW_ZEL_CHANNEL input)
{
    if (NApplicationDefinitions::IsAnalogChannel(input))
    {
        const CPgChannel* const channel = root.GetPgVertical()->GetPgChannel()->ItemDirect(input);
        return channel->GetPgLevels()->GetPgLogicThresholdSettings()->ItemDirect(0);
    }
    if (input < eKW_ZEL_CHANNEL_D0 || input > eKW_ZEL_CHANNEL_D7)
    {
        return nullptr;
    }
    const INT32 half = (input - eKW_ZEL_CHANNEL_D0) / kLinesPerHalf;
    return root.GetPgLogic()->GetPgLogicThresholdSettings()->ItemDirect(half);
}

void AddThresholdDependency(CDbPropertyGroup& owner, const std::function<void()>& update)
{
    CPgZEL* const root = CPgZEL::Of(owner);
    if (root == nullptr)
    {
        return;
    }
    std::vector<CDbPropBase*> sources;
    for (const KW_ZEL_CHANNEL input : {eKW_ZEL_CHANNEL_C1, eKW_ZEL_CHANNEL_C2, eKW_ZEL_CHANNEL_C3,
                                       eKW_ZEL_CHANNEL_C4, eKW_ZEL_CHANNEL_D0, eKW_ZEL_CHANNEL_D4})
    {
        sources.push_back(ThresholdOf(*root, input)->GetPrThreshold());
    }
    root->GetDependencies().Add(owner, sources, update,
                                QStringLiteral("BusChannelSettings/Threshold"));
}
} // namespace

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
        AddThresholdDependency(*this, [this] { UpdateThresholds(); });
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
    UpdateThresholds();
}

void CPgBusChannelSettings::UpdateThresholds()
{
    const auto* const array = dynamic_cast<const CPgaBusChannelSettings*>(GetParent());
    for (INT32 i = 0; array != nullptr && i < array->GetCount(); ++i)
    {
        array->ItemDirect(i)->UpdateThreshold();
    }
}

void CPgBusChannelSettings::UpdateThreshold()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    const CPgLogicThresholdSettings* const settings =
        root != nullptr ? ThresholdOf(*root, m_pSource->Get()) : nullptr;
    if (settings == nullptr)
    {
        KW_CHECKED(m_pThreshold->SetValidity(eKW_VALIDITY_INVALID));
        return;
    }
    KW_CHECKED(m_pThreshold->SetUnit(settings->GetPrThreshold()->GetUnit()));
    KW_CHECKED(m_pThreshold->DbSet(settings->GetPrThreshold()->Get()));
}
