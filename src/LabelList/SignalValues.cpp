// SPDX-License-Identifier: MIT
#include "LabelList/SignalValues.h"

#include "LabelList/CompiledMessage.h"

#include <algorithm>
#include <array>

using namespace NCompiled;

namespace
{
using t_Bytes = std::array<UINT8, CPayload::kLongest>;

/** The bits of a payload as text that are one of `characters`, as ones. */
t_Bytes Pack(QStringView payload, QStringView characters)
{
    t_Bytes bytes{};
    for (qsizetype place = 0; place < payload.size(); ++place)
    {
        if (characters.contains(payload[place]))
        {
            UINT8& byte = bytes[static_cast<std::size_t>(place) / 8U];
            byte = static_cast<UINT8>(byte | 0x80U >> place % 8);
        }
    }
    return bytes;
}

/** The bits of a payload, and which of them are known. */
class CReadBits
{
public:
    /** Of whole units only: the notation does not number the bits of others. */
    CReadBits(QStringView payload, UINT32 unit)
        : m_count(static_cast<UINT32>(std::min<qsizetype>(payload.size(), kLongest)) / unit * unit),
          m_ones(Pack(payload.left(m_count), u"1")), m_digits(Pack(payload.left(m_count), u"01")),
          m_bits(m_ones, unit, m_count), m_known(m_digits, unit, m_count)
    {
    }
    CReadBits(const CReadBits&) = delete;
    CReadBits& operator=(const CReadBits&) = delete;

    bool Holds(const t_Field& field) const { return m_bits.Holds(field); }
    /** False where the payload does not hold the signal, or one of its bits is not known. */
    bool Read(const t_Field& field, UINT64& raw) const
    {
        const bool isKnown = Holds(field) && m_known.Read(field) == field.mask;
        raw = isKnown ? m_bits.Read(field) : 0;
        return isKnown;
    }

private:
    static constexpr auto kLongest = static_cast<qsizetype>(8 * CPayload::kLongest);

    UINT32 m_count;
    t_Bytes m_ones;
    t_Bytes m_digits;
    CPayload m_bits; ///< of the ones
    CPayload m_known;
};

QString TextOfSignal(const t_SignalStep& step, const CReadBits& payload)
{
    UINT64 raw = 0;
    const CLabelListDecoder::t_Signal& signal = *step.signal;
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
std::optional<std::vector<const t_SignalStep*>> Present(const CLabelListDecoder::t_Message& message,
                                                        const CReadBits& payload)
{
    CSelection selection(message, [&payload](const t_Field& field, UINT64& raw)
                         { return payload.Read(field, raw); });
    std::vector<const t_SignalStep*> present;
    for (const t_SignalStep& step : message.steps)
    {
        if (selection.Has(step))
        {
            if (!payload.Holds(step.field))
            {
                return std::nullopt;
            }
            present.push_back(&step);
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
    const CReadBits bits(payload, message.unit);
    const auto present = Present(message, bits);
    if (!present)
    {
        return std::nullopt;
    }
    QString text = QStringLiteral("");
    for (const t_SignalStep* const step : *present)
    {
        const QString before = text.isEmpty() ? QString() : QString(between);
        const QString part = before + TextOfSignal(*step, bits);
        const auto behind = step == present->back() ? 0 : between.size() + rest.size();
        if (text.size() + part.size() + behind > longest)
        {
            return text + before + rest;
        }
        text += part;
    }
    return text;
}
