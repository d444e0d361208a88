// SPDX-License-Identifier: MIT
#include "Buses/PgBusChannelSettings.h"

#include "Buses/BusRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Names/BusChannelSettings.h"
#include "Names/Channel.h"
#include "Names/Levels.h"
#include "Names/Logic.h"
#include "Names/LogicThresholdSettings.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

namespace
{
constexpr INT32 kLinesPerHalf = 4;

/** The threshold of a channel's own, or of the half of the logic probe that the input belongs to;
    null for what has no threshold. */
const CDbPropNumDouble* ThresholdOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL input)
{
    if (NApplicationDefinitions::IsAnalogChannel(input))
    {
        return group.At(ZEL::Vertical / Vertical::Channel / input / Channel::Levels /
                        Levels::LogicThresholdSettings / 0 / LogicThresholdSettings::Threshold);
    }
    if (input < eKW_ZEL_CHANNEL_D0 || input > eKW_ZEL_CHANNEL_D7)
    {
        return nullptr;
    }
    const INT32 half = (input - eKW_ZEL_CHANNEL_D0) / kLinesPerHalf;
    return group.At(ZEL::Logic / Logic::LogicThresholdSettings / half /
                    LogicThresholdSettings::Threshold);
}
} // namespace

t_Couplings CPgBusChannelSettings::Rules() const
{
    using L = CPgBusChannelSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&L::AssignLines>, NRules::kSwitched >> Derive<&L::AssignLines>,
        Changed(ZEL::Vertical / Vertical::Channel / each / Channel::Levels /
                    Levels::LogicThresholdSettings / 0 / LogicThresholdSettings::Threshold,
                ZEL::Logic / Logic::LogicThresholdSettings / each /
                    LogicThresholdSettings::Threshold) >>
            Derive<&L::UpdateThreshold>);
    return rows;
}

std::vector<CPgBusChannelSettings*> CPgBusChannelSettings::Lines() const
{
    std::vector<CPgBusChannelSettings*> lines;
    GetParent()->VisitItems([&lines](CDbPropertyGroup& line)
                            { lines.push_back(&static_cast<CPgBusChannelSettings&>(line)); });
    return lines;
}

void CPgBusChannelSettings::AssignLines(const CDbPropBase* written)
{
    const std::vector<CPgBusChannelSettings*> lines = Lines();
    std::vector<NRules::t_BusLine> sources;
    for (const CPgBusChannelSettings* const line : lines)
    {
        sources.push_back({line->m_pSource, line->m_pEnabled->Get() == eKW_ONOFF_ON});
    }
    NRules::AssignLines(sources, written);
    for (CPgBusChannelSettings* const line : lines)
    {
        line->UpdateThreshold();
    }
}

void CPgBusChannelSettings::UpdateThreshold()
{
    const CDbPropNumDouble* const threshold = ThresholdOf(*this, m_pSource->Get());
    if (threshold == nullptr)
    {
        KW_CHECKED(m_pThreshold->SetValidity(eKW_VALIDITY_INVALID));
        return;
    }
    KW_CHECKED(m_pThreshold->SetUnit(threshold->GetUnit()));
    KW_CHECKED(m_pThreshold->DbSet(threshold->Get()));
}
