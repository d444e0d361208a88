// SPDX-License-Identifier: MIT
#include "LabelList/LabelList.h"

#include <set>

namespace
{
bool SaysNothing(const KW_LabelSignalDetails& details)
{
    return details.multiplexor.empty() && details.selectedBy.empty() && !details.isMultiplexor &&
           details.receivers.empty() && details.comment.empty() && details.shortName.empty() &&
           details.furtherLabels.empty() && details.attributes.empty();
}

/** Its place in the list, not the first number that is free: many of one name take no longer. */
QByteArray FreeKey(const KW_LabelEntry& entry, const QByteArray& key)
{
    QByteArray free = key;
    for (std::size_t number = entry.details.signalsInOrder.size() + 1;
         entry.message.hasSignal(free); ++number)
    {
        free = key + '/' + QByteArray::number(static_cast<qulonglong>(number));
    }
    return free;
}
} // namespace

std::vector<KW_LabelSignal> KW_GetSignals(const KW_LabelEntry& entry)
{
    static const KW_LabelSignalDetails none;
    const auto& all = entry.message.getSignals();
    std::vector<KW_LabelSignal> known;
    known.reserve(all.size());
    std::set<const CLabelListSignal*> seen;
    const auto add = [&](const QByteArray& key, const CLabelListSignal& signal)
    {
        if (seen.insert(&signal).second)
        {
            const auto details = entry.details.signalDetails.find(key);
            const bool isKnown = details != entry.details.signalDetails.end();
            known.push_back({&signal, isKnown ? &details->second : &none});
        }
    };
    for (const QByteArray& key : entry.details.signalsInOrder)
    {
        const auto signal = all.find(key);
        if (signal != all.end())
        {
            add(key, signal->second);
        }
    }
    for (const auto& [key, signal] : all)
    {
        add(key, signal);
    }
    return known;
}

QByteArray KW_AddSignal(KW_LabelEntry& entry, const CLabelListSignal& signal,
                        KW_LabelSignalDetails details)
{
    const QByteArray key = FreeKey(entry, signal.getSignalKey());
    entry.message.addSignal({key, signal});
    entry.details.signalsInOrder.push_back(key);
    if (!SaysNothing(details))
    {
        entry.details.signalDetails.insert_or_assign(key, std::move(details));
    }
    return key;
}
