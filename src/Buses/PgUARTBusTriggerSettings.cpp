// SPDX-License-Identifier: MIT
#include "Buses/PgUARTBusTriggerSettings.h"

#include "Buses/PgBusChannelSettings.h"
#include "Buses/PgSerialBus.h"
#include "Buses/PgUARTBusSettings.h"
#include "Buses/PgaBusChannelSettings.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Root/PgZEL.h"

#include <algorithm>

void CPgUARTBusTriggerSettings::UpdateGroup()
{
    const auto words = static_cast<UINT32>(NRules::kPatternBits / WordLength());
    NRules::SetLimits<UINT32>(*m_pPatternLength, 1, words);
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        OfferLines(*root->GetPgSerialBus()->GetPgUARTBusSettings()->GetPgBusChannelSettings());
    }
}

void CPgUARTBusTriggerSettings::OnTreeCreated()
{
    CBusTrigger::OnTreeCreated();
    CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    const CPgUARTBusSettings* const bus = root->GetPgSerialBus()->GetPgUARTBusSettings();
    const auto line = [bus](INT32 i) { return bus->GetPgBusChannelSettings()->ItemDirect(i); };
    root->GetDependencies().Add(
        *this,
        {bus->GetPrDataLength(), line(0)->GetPrEnabled(), line(0)->GetPrSource(),
         line(1)->GetPrEnabled(), line(1)->GetPrSource()},
        [this]
        {
            UpdateGroup();
            UpdatePatterns();
        },
        QStringLiteral("UARTBusTriggerSettings/Source"));
}

NRules::t_PatternSize CPgUARTBusTriggerSettings::DataSize() const
{
    return NRules::ExactPattern(WordLength() * static_cast<INT32>(m_pPatternLength->Get()));
}

/** The sources of the enabled lines; those of all while none is. */
void CPgUARTBusTriggerSettings::OfferLines(const CPgaBusChannelSettings& lines)
{
    std::vector<KW_ZEL_CHANNEL> enabled;
    std::vector<KW_ZEL_CHANNEL> all;
    for (INT32 i = 0; i < lines.GetCount(); ++i)
    {
        const CPgBusChannelSettings* const line = lines.ItemDirect(i);
        all.push_back(line->GetPrSource()->Get());
        if (line->GetPrEnabled()->Get() == eKW_ONOFF_ON)
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
    if (!m_pSource->IsValueEnabled(m_pSource->Get()))
    {
        KW_CHECKED(m_pSource->DbSet(usable.front()));
    }
}

INT32 CPgUARTBusTriggerSettings::WordLength() const
{
    constexpr INT32 kUsual = 8;
    const CPgZEL* const root = CPgZEL::Of(*this);
    return root != nullptr ? root->GetPgSerialBus()->GetPgUARTBusSettings()->WordLength() : kUsual;
}
