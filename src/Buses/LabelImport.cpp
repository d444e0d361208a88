// SPDX-License-Identifier: MIT
#include "Buses/LabelImport.h"

#include "Buses/PgmSerialBusLabelItem.h"
#include "Buses/PgmSignalTranslation.h"
#include "Buses/PgmSignalTranslationEnumValues.h"
#include "CheckedAccess.h"
#include "CommonDatabase/Values/DbBounds.h"
#include "LabelList/LabelChecks.h"
#include "LabelList/LabelConditions.h"

#include <algorithm>

namespace
{
constexpr auto kRecall = eWRITEKIND::Recall;

/** A new item of a map that has the number in its name; null without room. */
template <typename TItem, typename TMap>
TItem* Insert(TMap& map, const char* pattern, INT32 number)
{
    std::shared_ptr<CDbPropertyGroup> item;
    const QString name = QLatin1String(pattern) + QString::number(number);
    map.InsertInternal(name, QString(), number - 1, false, false, &item);
    return static_cast<TItem*>(item.get());
}

/** Blanks in place of what no file can hold. */
QString Saveable(const QString& text)
{
    if (CDbPropTextBase::IsSavable(text))
    {
        return text;
    }
    QString saveable;
    for (auto c = text.cbegin(); c != text.cend(); ++c)
    {
        const bool isPair = c->isHighSurrogate() && std::next(c) != text.cend();
        const QString one = isPair ? QString(c, 2) : QString(*c);
        saveable += CDbPropTextBase::IsSavable(one) ? one : QStringLiteral(" ");
        c += isPair ? 1 : 0;
    }
    return saveable;
}

/** The first characters; of a pair both or none. */
QString Cut(const QString& text, INT32 length)
{
    const bool splits = text.at(length - 1).isHighSurrogate();
    return text.left(splits ? length - 1 : length);
}
} // namespace

void CLabelImport::Replace(const KW_LabelList& list)
{
    const QStringList present = m_settings.GetPgSerialBusLabelItem()->GetNames();
    for (auto name = present.crbegin(); name != present.crend(); ++name)
    {
        KW_CHECKED(m_settings.GetPgSerialBusLabelItem()->ProcessRemove(*name));
    }
    Write(*m_settings.GetPrName(), list.name, "the list\'s name");
    m_protocol = list.protocol;
    for (const KW_LabelEntry& entry : list.messages)
    {
        Add(entry);
    }
    TellRest();
}

void CLabelImport::Add(const KW_LabelEntry& entry)
{
    m_message = QStringLiteral("message ") + QuotedName(entry.message.getName());
    m_signal.clear();
    if (!IsGood(entry))
    {
        return;
    }
    CPgmSerialBusLabelItem& labels = *m_settings.GetPgSerialBusLabelItem();
    auto* const label = m_leftOut == 0 && !labels.IsMaxCountReached()
                            ? Insert<CPgSerialBusLabelItem>(labels, "Label", labels.GetCount() + 1)
                            : nullptr;
    if (label == nullptr)
    {
        ++m_leftOut;
        return;
    }
    WriteMessage(*label, entry);
    AddSignals(*label, entry);
    m_nodes += label->CountNodes();
    if (m_nodes > NDbBounds::kMaxNewNodes)
    {
        KW_CHECKED(labels.ProcessRemove(label->GetNodeName()));
        ++m_leftOut;
    }
}

bool CLabelImport::IsGood(const KW_LabelEntry& entry)
{
    const QStringList errors = NLabelChecks::ErrorsOf(m_protocol, entry);
    for (const QString& error : errors)
    {
        m_reports.Error({}, m_message + QStringLiteral(" left out: ") + error);
    }
    return errors.isEmpty();
}

void CLabelImport::WriteMessage(CPgSerialBusLabelItem& label, const KW_LabelEntry& entry)
{
    const CLabelListMessage& message = entry.message;
    const UINT64 length = QByteArray::fromStdString(message.getIdentifierFormat()).toUInt();
    Write(*label.GetPrName(), message.getName(), "name");
    KW_CHECKED(label.GetPrIdentifierLength()->WriteValue(length, kRecall));
    KW_CHECKED(label.GetPrIdentifier()->WriteValue(UINT64{message.getIdentifier()}, kRecall));
    KW_CHECKED(label.GetPrPayloadLength()->WriteValue(UINT64{message.getLength()}, kRecall));
    const QString comment = Saveable(QString::fromStdString(entry.details.comment));
    const INT32 longest = label.GetPrComment()->GetMaxLength();
    const bool isCut = comment.size() > longest;
    m_cutComments += isCut ? 1 : 0;
    KW_CHECKED(label.GetPrComment()->WriteValue(isCut ? Cut(comment, longest) : comment, kRecall));
}

void CLabelImport::AddSignals(CPgSerialBusLabelItem& label, const KW_LabelEntry& entry)
{
    std::size_t leftOut = 0;
    for (const KW_LabelSignal& known : KW_GetSignals(entry))
    {
        if (label.GetPgSignalTranslation()->IsMaxCountReached())
        {
            ++leftOut;
            continue;
        }
        AddSignal(label, *known.signal, *known.details);
    }
    m_signal.clear();
    if (leftOut > 0)
    {
        Tell(QStringLiteral("the last %1 signals left out: a label has room for %2")
                 .arg(leftOut)
                 .arg(label.GetPgSignalTranslation()->GetMaxCount()));
    }
}

void CLabelImport::AddSignal(CPgSerialBusLabelItem& label, const CLabelListSignal& signal,
                             const KW_LabelSignalDetails& details)
{
    m_signal = QStringLiteral(", signal ") + QuotedName(signal.getName());
    CPgmSignalTranslation& items = *label.GetPgSignalTranslation();
    auto* const item = Insert<CPgSignalTranslation>(items, "Signal", items.GetCount() + 1);
    if (item == nullptr)
    {
        Tell(QStringLiteral("left out: there is no memory for so many"));
        return;
    }
    const QString refusal = WriteMeaning(*item, signal, details);
    if (!refusal.isEmpty())
    {
        KW_CHECKED(items.ProcessRemove(item->GetNodeName()));
        Tell(QStringLiteral("left out: ") + refusal);
        return;
    }
    Write(*item->GetPrName(), signal.getName(), "name");
    Write(*item->GetPrUnit(), signal.getUnit(), "unit");
    WriteLimits(*item, signal);
    AddTexts(*item, signal);
}

QString CLabelImport::WriteMeaning(CPgSignalTranslation& item, const CLabelListSignal& signal,
                                   const KW_LabelSignalDetails& details)
{
    KW_LabelSignalDetails fitting;
    fitting.selectedBy = details.selectedBy;
    fitting.multiplexor =
        Fitting(*item.GetPrName(), details.multiplexor, "name of its multiplexor").toStdString();
    const struct
    {
        CDbPropBase& property;
        CDbValue value;
    } parts[] = {
        {*item.GetPrEndianness(), INT64{signal.getEndianness()}},
        {*item.GetPrValueType(), INT64{signal.getValueType()}},
        {*item.GetPrStartBit(), UINT64{signal.getStartBit()}},
        {*item.GetPrBitLength(), UINT64{signal.getBitLength()}},
        {*item.GetPrFactor(), signal.getFactor()},
        {*item.GetPrOffset(), signal.getOffset()},
        {*item.GetPrActiveWhen(), NLabelConditions::TextOf(fitting)},
    };
    for (const auto& [property, value] : parts)
    {
        const KW_ACCEPTANCE code = property.WriteValue(value, kRecall);
        if (code > eKW_ACC_WARNING)
        {
            return property.NodeName() + QLatin1Char(' ') + KW_GetAcceptanceText(code);
        }
    }
    return {};
}

void CLabelImport::WriteLimits(const CPgSignalTranslation& item, const CLabelListSignal& signal)
{
    CDbPropNum<double>& minimum = *item.GetPrMinimum();
    CDbPropNum<double>& maximum = *item.GetPrMaximum();
    const double lowest =
        std::clamp(signal.getMinimum(), minimum.GetDeclaredMin(), minimum.GetDeclaredMax());
    const double highest = std::clamp(signal.getMaximum(), lowest, maximum.GetDeclaredMax());
    KW_CHECKED(minimum.WriteValue(lowest, kRecall));
    KW_CHECKED(maximum.WriteValue(highest, kRecall));
    if (lowest != signal.getMinimum() || highest != signal.getMaximum())
    {
        Tell(QStringLiteral("range cut to %1 ... %2").arg(minimum.GetText(), maximum.GetText()));
    }
}

void CLabelImport::AddTexts(const CPgSignalTranslation& item, const CLabelListSignal& signal)
{
    CPgmSignalTranslationEnumValues& texts = *item.GetPgSignalTranslationEnumValues();
    for (const auto& [raw, label] : signal.getSignalEnumValues())
    {
        auto* const text =
            texts.IsMaxCountReached()
                ? nullptr
                : Insert<CPgSignalTranslationEnumValues>(texts, "Value", texts.GetCount() + 1);
        if (text == nullptr)
        {
            const auto rest =
                signal.getSignalEnumValues().size() - static_cast<std::size_t>(texts.GetCount());
            Tell(QStringLiteral("the last %1 texts of values left out: a signal has room for %2")
                     .arg(rest)
                     .arg(texts.GetMaxCount()));
            return;
        }
        KW_CHECKED(text->GetPrRawValue()->WriteValue(UINT64{raw}, kRecall));
        Write(*text->GetPrLabel(), label.toStdString(), "text of a value");
    }
}

QString CLabelImport::Fitting(const CDbPropString& property, const std::string& text,
                              const char* what)
{
    const QString whole = QString::fromStdString(text);
    const QString saveable = Saveable(whole);
    if (saveable != whole)
    {
        Tell(QStringLiteral("%1: blanks in place of control characters").arg(QLatin1String(what)));
    }
    if (saveable.size() <= property.GetMaxLength())
    {
        return saveable;
    }
    const QString cut = Cut(saveable, property.GetMaxLength());
    Tell(QStringLiteral("%1 cut to \"%2\"").arg(QLatin1String(what), cut));
    return cut;
}

void CLabelImport::Write(CDbPropString& property, const std::string& text, const char* what)
{
    KW_CHECKED(property.WriteValue(Fitting(property, text, what), kRecall));
}

void CLabelImport::Tell(const QString& text)
{
    const QString place = m_message + m_signal;
    m_reports.Warning({}, place.isEmpty() ? text : place + QStringLiteral(": ") + text);
}

void CLabelImport::TellRest()
{
    m_message.clear();
    m_signal.clear();
    if (m_leftOut > 0)
    {
        Tell(QStringLiteral("%1 messages left out: the tree has no room for more").arg(m_leftOut));
    }
    if (m_cutComments > 0)
    {
        Tell(QStringLiteral("comments of %1 messages cut to what the tree holds")
                 .arg(m_cutComments));
    }
}
