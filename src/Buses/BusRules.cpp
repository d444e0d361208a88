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

/** The lowest free channel. */
std::optional<KW_ZEL_CHANNEL> FreeChannel(const CDbPropEnum<KW_ZEL_CHANNEL>& source,
                                          const t_Channels& taken)
{
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        if (source.IsValueEnabled(channel) && !Contains(taken, channel))
        {
            return channel;
        }
    }
    return std::nullopt;
}

/** Another channel for a line without one of its own: for good where another line took the one
    that the user wanted, else until that is on again. Where all are taken the line shares one. */
void TakeFreeChannel(CDbPropEnum<KW_ZEL_CHANNEL>& source, t_Channels& taken)
{
    const std::optional<KW_ZEL_CHANNEL> channel = FreeChannel(source, taken);
    if (!channel)
    {
        NRules::OfferSources(source, NRules::eSOURCES_INPUTS);
        return;
    }
    const bool isLost = source.IsValueEnabled(source.GetUserValueAsInt());
    KW_CHECKED(isLost ? source.DbSet(*channel) : source.SetForNow(*channel));
    taken.push_back(*channel);
}

/** Takes a channel that the line can have and nobody has taken. */
bool Claim(CDbPropEnum<KW_ZEL_CHANNEL>& source, INT32 value, t_Channels& taken)
{
    const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
    if (!source.IsValueEnabled(channel) || Contains(taken, channel))
    {
        return false;
    }
    KW_CHECKED(source.SetForNow(channel));
    taken.push_back(channel);
    return true;
}
} // namespace

namespace NRules
{
void AssignLines(const std::vector<t_BusLine>& lines, const CDbPropBase* written)
{
    std::vector<t_BusLine> order = lines;
    std::stable_partition(order.begin(), order.end(),
                          [written](const t_BusLine& line) { return line.source == written; });
    std::vector<CDbPropEnum<KW_ZEL_CHANNEL>*> waiting;
    for (const t_BusLine& line : order)
    {
        RestrictSources(*line.source, eSOURCES_INPUTS);
        line.inUse ? waiting.push_back(line.source) : OfferSources(*line.source, eSOURCES_INPUTS);
    }
    t_Channels taken;
    // What users chose, then what lines have had for the time being, then what is left.
    std::erase_if(waiting, [&taken](auto* source)
                  { return Claim(*source, source->GetUserValueAsInt(), taken); });
    std::erase_if(waiting,
                  [&taken](auto* source) { return Claim(*source, source->GetAsInt(), taken); });
    for (CDbPropEnum<KW_ZEL_CHANNEL>* const source : waiting)
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
