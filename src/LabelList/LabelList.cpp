// SPDX-License-Identifier: MIT
#include "LabelList/LabelList.h"

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
