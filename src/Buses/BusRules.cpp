// SPDX-License-Identifier: MIT
#include "Buses/BusRules.h"

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsSerialBus.h"
#include "Rules/ChannelRules.h"

#include <algorithm>

namespace
{
using t_Channels = std::vector<KW_ZEL_CHANNEL>;

bool Contains(const t_Channels& channels, KW_ZEL_CHANNEL channel)
{
    return std::find(channels.begin(), channels.end(), channel) != channels.end();
}

void TakeFreeChannel(CDbPropEnum<KW_ZEL_CHANNEL>& source, t_Channels& taken)
{
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        if (source.IsValueEnabled(channel) && !Contains(taken, channel))
        {
            KW_CHECKED(source.DbSet(channel));
            taken.push_back(channel);
            return;
        }
    }
}
} // namespace

namespace NRules
{
void AssignLines(const std::vector<t_BusLine>& lines, const CDbPropBase* written)
{
    std::vector<t_BusLine> order = lines;
    std::stable_partition(order.begin(), order.end(),
                          [written](const t_BusLine& line) { return line.source == written; });
    t_Channels taken;
    std::vector<CDbPropEnum<KW_ZEL_CHANNEL>*> without;
    for (const t_BusLine& line : order)
    {
        const KW_ZEL_CHANNEL wanted = line.source->Get();
        OfferSources(*line.source, eSOURCES_INPUTS);
        const bool keeps = line.source->Get() == wanted && !Contains(taken, wanted);
        if (line.inUse && keeps)
        {
            taken.push_back(wanted);
        }
        else if (line.inUse)
        {
            without.push_back(line.source);
        }
    }
    for (CDbPropEnum<KW_ZEL_CHANNEL>* const source : without)
    {
        TakeFreeChannel(*source, taken);
    }
}

CDbPropertyGroup* OfProtocol(const CDbPropertyGroup& bus, const QString& protocol, const char* what)
{
    return bus.FindGroup(QString(protocol + QLatin1String(what)));
}

INT32 WordLength(const CDbPropEnum<KW_UART_DATA_LENGTH>& length)
{
    constexpr double kUsual = 8.0;
    return static_cast<INT32>(length.GetNameInfo().GetNumber(length.GetAsInt()).value_or(kUsual));
}
} // namespace NRules
