// SPDX-License-Identifier: MIT
#include "LabelList/SignalValues.h"

#include "LabelList/CompiledMessage.h"

#include <algorithm>

using namespace NCompiled;

namespace
{
/** The bits of a payload, and which of them are known. */
struct t_ReadBits
{
    CPayload bits;
    CPayload known;

    /** False where the payload does not hold the signal, or one of its bits is not known. */
    bool Read(const t_Field& field, UINT64& raw) const
    {
        const bool isKnown = bits.Holds(field) && known.Read(field) == field.mask;
        raw = isKnown ? bits.Read(field) : 0;
        return isKnown;
    }
};

/** Of whole units only: the notation does not number the bits of others. */
t_ReadBits ReadBits(QStringView payload, UINT32 unit)
{
    constexpr auto kLongest = static_cast<qsizetype>(8 * CPayload::kLongest);
    const UINT32 count =
        static_cast<UINT32>(std::min<qsizetype>(payload.size(), kLongest)) / unit * unit;
    t_ReadBits read{CPayload(count), CPayload(count)};
    for (UINT32 place = 0; place < count; ++place)
    {
        const QChar bit = payload[static_cast<int>(place)];
        if (bit == QLatin1Char('1'))
        {
            read.bits.SetBit(place);
        }
        if (bit == QLatin1Char('1') || bit == QLatin1Char('0'))
        {
            read.known.SetBit(place);
        }
    }
    return read;
}

QString TextOfSignal(const CLabelListDecoder::t_Signal& signal, const t_Step& step,
                     const t_ReadBits& payload)
{
    UINT64 raw = 0;
    QString text = QString::fromStdString(signal.name) + QStringLiteral(" = ");
    if (!signal.isReadable || !payload.Read(step.field, raw))
    {
        return text + QStringLiteral("???");
    }
    CLabelListDecoder::t_TextBuffer buffer;
    const std::string_view value = CLabelListDecoder::Format(ValueOf(step, raw), buffer);
    text += QLatin1String(value.data(), static_cast<int>(value.size()));
    if (!signal.unit.empty())
    {
        text += QLatin1Char(' ') + QString::fromStdString(signal.unit);
    }
    const std::string* const label = LabelOf(step, raw);
    return label != nullptr ? text + QStringLiteral(" (%1)").arg(QString::fromStdString(*label))
                            : text;
}

/** The signals that are there; nothing when the payload is too short for one of them. */
std::optional<std::vector<std::size_t>> Present(const CLabelListDecoder::t_Message& message,
                                                const t_ReadBits& payload)
{
    CSelection selection(message, [&payload](const t_Field& field, UINT64& raw)
                         { return payload.Read(field, raw); });
    std::vector<std::size_t> present;
    for (std::size_t i = 0; i < message.steps.size(); ++i)
    {
        if (selection.Has(message.steps[i]))
        {
            if (!payload.bits.Holds(message.steps[i].field))
            {
                return std::nullopt;
            }
            present.push_back(i);
        }
    }
    return present;
}
} // namespace

std::optional<QString> NSignalValues::TextOf(const CLabelListDecoder::t_Message& message,
                                             QStringView payload, INT32 longest)
{
    const QLatin1String rest("...");
    const QLatin1String between("; ");
    const t_ReadBits bits = ReadBits(payload, message.unit);
    const auto present = Present(message, bits);
    if (!present)
    {
        return std::nullopt;
    }
    QString text = QStringLiteral("");
    for (const std::size_t i : *present)
    {
        const QString before = text.isEmpty() ? QString() : QString(between);
        const QString part = before + TextOfSignal(message.signalList[i], message.steps[i], bits);
        const auto behind = i == present->back() ? 0 : between.size() + rest.size();
        if (text.size() + part.size() + behind > longest)
        {
            return text + before + rest;
        }
        text += part;
    }
    return text;
}
