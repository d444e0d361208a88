// SPDX-License-Identifier: MIT
#include "LabelList/LabelListBuilder.h"

#include "LabelList/LabelBounds.h"
#include "LabelList/LabelChecks.h"

#include <utility>

CLabelListBuilder::CLabelListBuilder(KW_LabelList& list, CLabelReports& reports,
                                     const KW_LabelReadOptions& options)
    : m_list(list), m_reports(reports), m_options(options)
{
}

bool CLabelListBuilder::BeginMessage(t_TextPlace place)
{
    EndMessage();
    if (m_begun == NLabelBounds::kMaxMessages)
    {
        return Refuse(place,
                      QStringLiteral("more than %1 messages").arg(NLabelBounds::kMaxMessages));
    }
    ++m_begun;
    m_isOpen = true;
    m_place = place;
    return true;
}

bool CLabelListBuilder::AddSignal(const CLabelListSignal& signal,
                                  const KW_LabelSignalDetails& details, t_TextPlace place)
{
    if (m_signalPlaces.size() == NLabelBounds::kMaxSignalsPerMessage)
    {
        return Refuse(place, QStringLiteral("more than %1 signals in a message")
                                 .arg(NLabelBounds::kMaxSignalsPerMessage));
    }
    if (m_signals == NLabelBounds::kMaxSignals)
    {
        return Refuse(place, QStringLiteral("more than %1 signals").arg(NLabelBounds::kMaxSignals));
    }
    ++m_signals;
    m_signalPlaces.push_back(place);
    KW_AddSignal(m_entry, signal, details);
    return true;
}

bool CLabelListBuilder::AddItem(t_TextPlace place)
{
    return ++m_items <= NLabelBounds::kMaxItems ||
           Refuse(place, QStringLiteral("more than %1 labels, attributes, senders and receivers")
                             .arg(NLabelBounds::kMaxItems));
}

bool CLabelListBuilder::AddObject(t_TextPlace place)
{
    return ++m_objects <= NLabelBounds::kMaxObjects ||
           Refuse(place,
                  QStringLiteral("more than %1 nodes, value tables and definitions of attributes")
                      .arg(NLabelBounds::kMaxObjects));
}

void CLabelListBuilder::Spoil()
{
    (m_isOpen ? m_isSpoilt : m_isRefused) = true;
}

bool CLabelListBuilder::Finish()
{
    EndMessage();
    if (m_isRefused)
    {
        return false;
    }
    NLabelChecks::CheckIdentifiers(
        m_list, [this](int message) { return m_places[static_cast<std::size_t>(message)]; },
        m_reports);
    return true;
}

void CLabelListBuilder::EndMessage()
{
    if (!std::exchange(m_isOpen, false))
    {
        return;
    }
    const auto placeOf = [this](int signal)
    { return signal < 0 ? m_place : m_signalPlaces[static_cast<std::size_t>(signal)]; };
    const bool isGood = !std::exchange(m_isSpoilt, false) &&
                        NLabelChecks::Check(m_list.protocol, m_entry, placeOf, m_reports);
    KW_LabelEntry entry = std::exchange(m_entry, {});
    m_signalPlaces.clear();
    if (isGood)
    {
        m_list.messages.push_back(std::move(entry));
        m_places.push_back(m_place);
    }
    else if (m_options.skipsBadMessages)
    {
        m_reports.Error(m_place, QStringLiteral("message \"%1\" is left out")
                                     .arg(QString::fromStdString(entry.message.getName())));
    }
    else
    {
        m_isRefused = true;
    }
}

bool CLabelListBuilder::Refuse(t_TextPlace place, const QString& text)
{
    m_isRefused = true;
    m_isOpen = false; // no word on a message that goes on unread
    m_reports.Error(place, text);
    return false;
}
