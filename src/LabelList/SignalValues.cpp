// SPDX-License-Identifier: MIT
#include "LabelList/SignalValues.h"

#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelListMessage.h"
#include "LabelList/SignalBits.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace
{
constexpr UINT32 kFloatBits = 32;
constexpr UINT32 kDoubleBits = 64;

NSignalBits::t_Signal BitsOf(const CLabelListSignal& signal, UINT32 unit)
{
    return {signal.getStartBit(), signal.getBitLength(), signal.getEndianness(), unit};
}

bool Holds(QStringView payload, const NSignalBits::t_Signal& bits)
{
    const auto units = static_cast<UINT64>(payload.size()) / bits.unit;
    return NSignalBits::BitsUpTo(bits) <= units * bits.unit;
}

/** The bits as a number; nothing where one is unknown, or there are too many. */
std::optional<UINT64> RawOf(QStringView payload, const NSignalBits::t_Signal& bits)
{
    if (bits.bitLength < 1 || bits.bitLength > kDoubleBits || !Holds(payload, bits))
    {
        return std::nullopt;
    }
    UINT64 raw = 0;
    for (UINT32 i = 0; i < bits.bitLength; ++i)
    {
        const QChar bit = payload[static_cast<int>(NSignalBits::PlaceOf(bits, i))];
        if (bit != QLatin1Char('0') && bit != QLatin1Char('1'))
        {
            return std::nullopt;
        }
        raw = raw << 1U | (bit == QLatin1Char('1') ? 1U : 0U);
    }
    return raw;
}

/** Two's complement of that many bits. */
double SignedOf(UINT64 raw, UINT32 bitLength)
{
    const UINT32 unused = kDoubleBits - bitLength;
    return static_cast<double>(std::bit_cast<INT64>(raw << unused) >> unused);
}

/** The number that the bits encode, before factor and offset. */
std::optional<double> NumberOf(const CLabelListSignal& signal, UINT64 raw)
{
    const UINT32 bits = signal.getBitLength();
    switch (signal.getValueType())
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT:
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM:
        return static_cast<double>(raw);
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT:
        return SignedOf(raw, bits);
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return bits == kFloatBits ? std::optional(static_cast<double>(
                                        std::bit_cast<float>(static_cast<UINT32>(raw))))
                                  : std::nullopt;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return bits == kDoubleBits ? std::optional(std::bit_cast<double>(raw)) : std::nullopt;
    }
    return std::nullopt;
}

/** 15 digits: what factor and offset add to a decimal number by rounding does not show. */
QString NumberText(double value)
{
    constexpr int kDigits = 15;
    return QString::number(value == 0.0 ? 0.0 : value, 'g', kDigits);
}

/** The label of a raw value in brackets, as far as there is one. */
QString LabelText(const CLabelListSignal& signal, UINT64 raw)
{
    const auto& labels = signal.getSignalEnumValues();
    const bool isLabelled =
        signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM && raw <= 0xffffffffU;
    const auto label = isLabelled ? labels.find(static_cast<UINT32>(raw)) : labels.end();
    return label != labels.end() ? QStringLiteral(" (%1)").arg(QString::fromUtf8(label->second))
                                 : QString();
}
} // namespace

QString NSignalValues::TextOf(const CLabelListSignal& signal, QStringView payload, UINT32 unit)
{
    const auto raw = RawOf(payload, BitsOf(signal, unit));
    const auto number = raw ? NumberOf(signal, *raw) : std::nullopt;
    if (!number || signal.getFactor() == 0.0)
    {
        return QStringLiteral("???");
    }
    QString text = NumberText(signal.getOffset() + *number * signal.getFactor());
    if (!signal.getUnit().empty())
    {
        text += QLatin1Char(' ') + QString::fromStdString(signal.getUnit());
    }
    return text + LabelText(signal, *raw);
}

std::optional<QString> NSignalValues::TextOf(const CLabelListMessage& message, QStringView payload,
                                             UINT32 unit, INT32 longest)
{
    const QLatin1String rest("...");
    const auto& list = message.getSignals();
    if (!std::all_of(list.begin(), list.end(),
                     [&](const auto& signal)
                     { return Holds(payload, BitsOf(signal.second, unit)); }))
    {
        return std::nullopt;
    }
    QString text = QStringLiteral("");
    for (auto signal = list.begin(); signal != list.end(); ++signal)
    {
        const QString part = (text.isEmpty() ? QString() : QStringLiteral("; ")) +
                             QString::fromStdString(signal->second.getName()) +
                             QStringLiteral(" = ") + TextOf(signal->second, payload, unit);
        const bool isLast = std::next(signal) == list.end();
        const INT32 needed = static_cast<INT32>(text.size() + part.size()) +
                             (isLast ? 0 : static_cast<INT32>(rest.size()) + 2);
        if (needed > longest)
        {
            return text + (text.isEmpty() ? QString() : QStringLiteral("; ")) + rest;
        }
        text += part;
    }
    return text;
}
