// SPDX-License-Identifier: MIT
#include "Buses/PgUARTBusTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Names/BusChannelSettings.h"
#include "Names/SerialBus.h"
#include "Names/UARTBusSettings.h"
#include "Names/UARTBusTriggerSettings.h"
#include "Names/ZEL.h"

#include <algorithm>

using namespace NNames;

namespace
{
constexpr auto kBus = ZEL::SerialBus / SerialBus::UARTBusSettings;
constexpr auto kEachLine = kBus / UARTBusSettings::BusChannelSettings / each;
} // namespace

t_Couplings CPgUARTBusTriggerSettings::Rules() const
{
    using U = CPgUARTBusTriggerSettings;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&U::OfferLines>, PatternRows(),
        Changed(kBus / UARTBusSettings::DataLength, kEachLine / BusChannelSettings::Enabled,
                kEachLine / BusChannelSettings::Source) >>
            Settle<&U::LimitPatternLength, &U::OfferLines, &U::FitConditions>);
    return rows;
}

void CPgUARTBusTriggerSettings::LimitPatternLength()
{
    const auto words = static_cast<UINT32>(NRules::kPatternBits / WordLength());
    NRules::SetLimits<UINT32>(*m_pPatternLength, 1, words);
}

/** The sources of the enabled lines; those of all while none is. */
void CPgUARTBusTriggerSettings::OfferLines()
{
    std::vector<KW_ZEL_CHANNEL> enabled;
    std::vector<KW_ZEL_CHANNEL> all;
    const auto line = [](INT32 i) { return kBus / UARTBusSettings::BusChannelSettings / i; };
    for (INT32 i = 0; At(line(i) / BusChannelSettings::Source) != nullptr; ++i)
    {
        all.push_back(At(line(i) / BusChannelSettings::Source)->Get());
        if (At(line(i) / BusChannelSettings::Enabled)->Get() == eKW_ONOFF_ON)
        {
            enabled.push_back(all.back());
        }
    }
    const std::vector<KW_ZEL_CHANNEL>& usable = enabled.empty() ? all : enabled;
    for (INT32 value = 0; value < m_pSource->GetEnumSize(); ++value)
    {
        KW_CHECKED(m_pSource->EnableValue(value, std::find(usable.begin(), usable.end(), value) !=
                                                     usable.end()));
    }
    KW_CHECKED(m_pSource->FollowWish(usable.front()));
}

NRules::t_PatternSize CPgUARTBusTriggerSettings::DataSize() const
{
    return NRules::ExactPattern(WordLength() * static_cast<INT32>(m_pPatternLength->Get()));
}

INT32 CPgUARTBusTriggerSettings::WordLength() const
{
    return NRules::WordLength(*At(kBus / UARTBusSettings::DataLength));
}
