// SPDX-License-Identifier: MIT
#include "LabelText.h"

#include "EnumText.h"

#include <QJsonArray>
#include <QLocale>
#include <map>

namespace
{
constexpr UINT32 kMaxBits = 64;

QString FromStd(const std::string& text)
{
    return QString::fromStdString(text);
}

/** The number that raw bits of a signed signal are; what its bits can not have stays as it is. */
INT64 SignedOf(INT64 raw, UINT32 bitLength)
{
    if (bitLength < 1 || bitLength >= kMaxBits || raw < 0 || raw >> bitLength != 0)
    {
        return raw;
    }
    const INT64 half = INT64{1} << (bitLength - 1);
    return raw < half ? raw : raw - half - half;
}

QJsonObject ToJson(const KW_LabelAttributes& attributes)
{
    QJsonObject json;
    for (const auto& [name, attribute] : attributes)
    {
        json[FromStd(name)] = FromStd(attribute.value);
    }
    return json;
}

QJsonArray ToJson(const std::vector<std::string>& names)
{
    QJsonArray json;
    for (const std::string& name : names)
    {
        json.append(FromStd(name));
    }
    return json;
}

QJsonArray ToJson(const std::vector<KW_RawRange>& ranges)
{
    QJsonArray json;
    for (const KW_RawRange& range : ranges)
    {
        json.append(QJsonArray{static_cast<double>(range.first), static_cast<double>(range.last)});
    }
    return json;
}

/** What most signals have not stands there only where they have it. */
void AddDetails(const KW_LabelSignal& signal, QJsonObject& json)
{
    const KW_LabelSignalDetails& details = *signal.details;
    if (!details.multiplexor.empty())
    {
        json[QLatin1String("multiplexor")] = FromStd(details.multiplexor);
        json[QLatin1String("selectedBy")] = ToJson(details.selectedBy);
    }
    if (details.isMultiplexor)
    {
        json[QLatin1String("isMultiplexor")] = true;
    }
    json[QLatin1String("receivers")] = ToJson(details.receivers);
    json[QLatin1String("comment")] = FromStd(details.comment);
    QJsonObject labels;
    for (const auto& [raw, label] : GetLabels(signal))
    {
        labels[raw] = label;
    }
    json[QLatin1String("labels")] = labels;
    json[QLatin1String("attributes")] = ToJson(details.attributes);
}

QJsonObject ToJson(const KW_LabelSignal& shown)
{
    const CLabelListSignal& signal = *shown.signal;
    QJsonObject json;
    json[QLatin1String("name")] = FromStd(signal.getName());
    json[QLatin1String("start")] = static_cast<qint64>(signal.getStartBit());
    json[QLatin1String("length")] = static_cast<qint64>(signal.getBitLength());
    json[QLatin1String("order")] = GetEnumText(signal.getEndianness());
    json[QLatin1String("type")] = GetEnumText(signal.getValueType());
    json[QLatin1String("factor")] = signal.getFactor();
    json[QLatin1String("offset")] = signal.getOffset();
    json[QLatin1String("minimum")] = signal.getMinimum();
    json[QLatin1String("maximum")] = signal.getMaximum();
    json[QLatin1String("unit")] = FromStd(signal.getUnit());
    AddDetails(shown, json);
    return json;
}
} // namespace

std::size_t CountSignals(const KW_LabelList& list)
{
    std::size_t count = 0;
    for (const KW_LabelEntry& entry : list.messages)
    {
        count += entry.message.getSignals().size();
    }
    return count;
}

QString GetIdentifierText(const CLabelListMessage& message)
{
    const int bits = QByteArray::fromStdString(message.getIdentifierFormat()).toInt();
    const QString digits = QString::number(message.getIdentifier(), 16).toUpper();
    return bits == 0
               ? QStringLiteral("–")
               : QStringLiteral("0x") + digits.rightJustified((bits + 3) / 4, QLatin1Char('0'));
}

QString GetNumberText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString GetCycleText(double seconds)
{
    return seconds < 1.0 ? QStringLiteral("every %1 ms").arg(QString::number(1e3 * seconds, 'g', 9))
                         : QStringLiteral("every %1 s").arg(QString::number(seconds, 'g', 9));
}

QString GetOrderText(const CLabelListSignal& signal)
{
    return signal.getEndianness() == eKW_ENDIANNESS_BIG_ENDIAN ? QStringLiteral("big")
                                                               : QStringLiteral("little");
}

QString GetTypeText(const CLabelListSignal& signal)
{
    switch (signal.getValueType())
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM:
        return QStringLiteral("enum");
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT:
        return QStringLiteral("signed");
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return QStringLiteral("float");
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return QStringLiteral("double");
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT:
        break;
    }
    return QStringLiteral("unsigned");
}

QString GetRangesText(const std::vector<KW_RawRange>& ranges)
{
    QStringList texts;
    for (const KW_RawRange& range : ranges)
    {
        const QString first = QString::number(range.first);
        texts << (range.first == range.last
                      ? first
                      : first + QLatin1Char('-') + QString::number(range.last));
    }
    return texts.join(QStringLiteral(", "));
}

QString GetConditionText(const KW_LabelSignalDetails& details)
{
    return details.multiplexor.empty() ? QString()
                                       : FromStd(details.multiplexor) + QStringLiteral(" = ") +
                                             GetRangesText(details.selectedBy);
}

std::vector<std::pair<QString, QString>> GetLabels(const KW_LabelSignal& shown)
{
    const CLabelListSignal& signal = *shown.signal;
    const bool isSigned = signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
    const auto number = [&](INT64 raw)
    { return isSigned ? SignedOf(raw, signal.getBitLength()) : raw; };
    std::map<INT64, QString> byNumber;
    for (const auto& [raw, label] : signal.getSignalEnumValues())
    {
        byNumber[number(INT64{raw})] = QString::fromUtf8(label);
    }
    for (const auto& [raw, label] : shown.details->furtherLabels)
    {
        byNumber.emplace(number(raw), FromStd(label));
    }
    std::vector<std::pair<QString, QString>> labels;
    for (const auto& [raw, label] : byNumber)
    {
        // What 64 bits without a sign have above the largest signed number is kept as their bits.
        const bool isLarge = !isSigned && raw < 0 && signal.getBitLength() == kMaxBits;
        labels.emplace_back(
            isLarge ? QString::number(static_cast<UINT64>(raw)) : QString::number(raw), label);
    }
    return labels;
}

QString ToText(const std::vector<std::string>& names)
{
    QStringList texts;
    for (const std::string& name : names)
    {
        texts << FromStd(name);
    }
    return texts.join(QStringLiteral(", "));
}

QString GetCountText(UINT64 count, const QString& what)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(what,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

QString GetSizeText(const KW_LabelList& list)
{
    return GetCountText(list.messages.size(), QStringLiteral("message")) + QStringLiteral(", ") +
           GetCountText(CountSignals(list), QStringLiteral("signal"));
}

QJsonObject ToJson(const KW_LabelEntry& entry)
{
    const CLabelListMessage& message = entry.message;
    QJsonObject json;
    json[QLatin1String("name")] = FromStd(message.getName());
    json[QLatin1String("id")] = static_cast<qint64>(message.getIdentifier());
    json[QLatin1String("idBits")] = FromStd(message.getIdentifierFormat()).toInt();
    json[QLatin1String("length")] = static_cast<qint64>(message.getLength());
    json[QLatin1String("fd")] = entry.details.isFd;
    json[QLatin1String("senders")] = ToJson(entry.details.senders);
    json[QLatin1String("comment")] = FromStd(entry.details.comment);
    if (entry.details.cycleTime)
    {
        json[QLatin1String("cycleTime")] = *entry.details.cycleTime;
    }
    json[QLatin1String("bitRateSwitch")] = entry.details.hasBitRateSwitch;
    json[QLatin1String("attributes")] = ToJson(entry.details.attributes);
    QJsonArray signals;
    for (const KW_LabelSignal& signal : KW_GetSignals(entry))
    {
        signals.append(ToJson(signal));
    }
    json[QLatin1String("signals")] = signals;
    return json;
}

QJsonObject ToJson(const KW_LabelList& list)
{
    QJsonArray nodes;
    for (const KW_LabelNode& node : list.database.nodes)
    {
        nodes.append(FromStd(node.name));
    }
    QJsonObject tables;
    for (const KW_ValueTable& table : list.database.valueTables)
    {
        QJsonObject labels;
        for (const auto& [raw, label] : table.labels)
        {
            labels[QString::number(raw)] = FromStd(label);
        }
        tables[FromStd(table.name)] = labels;
    }
    return {{QStringLiteral("bus"), GetEnumText(list.protocol)},
            {QStringLiteral("name"), FromStd(list.name)},
            {QStringLiteral("comment"), FromStd(list.comment)},
            {QStringLiteral("nodes"), nodes},
            {QStringLiteral("valueTables"), tables}};
}
