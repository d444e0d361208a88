// SPDX-License-Identifier: MIT
#include "LabelList/LabelListDecoder.h"

#include "KWEnumerationsSerialBus.h"
#include "LabelList/CompiledMessage.h"
#include "LabelList/LabelBuses.h"
#include "LabelList/LabelChecks.h"
#include "LabelList/SignalBits.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

using namespace NCompiled;

namespace
{
constexpr UINT32 kByte = NSignalBits::kByte;

constexpr UINT64 LowBits(UINT32 count)
{
    return ~UINT64{0} >> (kWord - count);
}

bool IsInteger(KW_SIGNAL_TRANSLATION_VALUE_TYPE type)
{
    return type != eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT &&
           type != eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
}

e_Kind KindOf(const CLabelListSignal& signal)
{
    constexpr UINT32 kFloatBits = 32;
    const UINT32 bits = signal.getBitLength();
    if (signal.getFactor() == 0.0)
    {
        return e_Kind::Unreadable;
    }
    switch (signal.getValueType())
    {
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT:
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM:
        return bits == kWord ? e_Kind::Unsigned : e_Kind::Integer;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT:
        return e_Kind::Integer;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT:
        return bits == kFloatBits ? e_Kind::Float : e_Kind::Unreadable;
    case eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE:
        return bits == kWord ? e_Kind::Double : e_Kind::Unreadable;
    }
    return e_Kind::Unreadable;
}

/** Of a signal that a payload of CPayload::kLongest bytes holds. */
t_Field FieldOf(const NSignalBits::t_Signal& signal)
{
    const bool isBig = signal.endianness == eKW_ENDIANNESS_BIG_ENDIAN;
    const auto bitsUpTo = static_cast<UINT32>(NSignalBits::BitsUpTo(signal));
    const UINT32 first = isBig ? NSignalBits::PlaceOf(signal, 0) : signal.startBit;
    const UINT32 firstByte = bitsUpTo <= kWord ? 0 : first / kByte;
    const UINT32 before = first - kByte * firstByte;
    const UINT32 used = before + signal.bitLength;
    const UINT32 bigShift = used > kWord ? used - kWord : kWord - used;
    return {LowBits(signal.bitLength),
            static_cast<UINT16>(firstByte),
            static_cast<UINT16>(bitsUpTo),
            static_cast<UINT8>(isBig ? bigShift : before),
            isBig ? e_Order::Big : e_Order::Little,
            used > kWord};
}

/** The raw value that a label beyond CLabelListSignal's is of, as far as the signal can have it. */
std::optional<UINT64> RawOf(INT64 value, const CLabelListSignal& signal)
{
    const UINT32 unused = kWord - signal.getBitLength();
    const UINT64 raw = std::bit_cast<UINT64>(value);
    const bool isSigned = signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
    const bool isNegative =
        isSigned && value < 0 && std::bit_cast<INT64>(raw << unused) >> unused == value;
    const UINT64 kept = raw << unused >> unused;
    return kept == raw || isNegative ? std::optional(kept) : std::nullopt;
}

std::map<UINT64, std::string> LabelsOf(const CLabelListSignal& signal,
                                       const KW_LabelSignalDetails& details)
{
    std::map<UINT64, std::string> labels;
    for (const auto& [raw, label] : signal.getSignalEnumValues())
    {
        labels.emplace(raw, label.toStdString());
    }
    for (const auto& [value, label] : details.furtherLabels)
    {
        if (const auto raw = RawOf(value, signal))
        {
            labels.emplace(*raw, label);
        }
    }
    return labels;
}

/** Makes one message. */
class CMessageCompiler
{
public:
    CMessageCompiler(const KW_LabelEntry& entry, UINT32 unit) : m_entry(entry)
    {
        m_message.name = entry.message.getName();
        m_message.length = entry.message.getLength();
        m_message.unit = unit;
        m_message.isPlain = unit == kByte;
    }

    CLabelListDecoder::t_Message Compile()
    {
        const auto known = KW_GetSignals(m_entry);
        m_message.signalList.reserve(known.size());
        m_message.steps.reserve(known.size());
        for (const KW_LabelSignal& signal : known)
        {
            AddSignal(*signal.signal, *signal.details);
        }
        for (std::size_t step = 0; step < m_details.size(); ++step)
        {
            m_message.steps[step].condition = ConditionOf(*m_details[step]);
            SumUp(m_message.steps[step]);
        }
        return std::move(m_message);
    }

private:
    void AddSignal(const CLabelListSignal& signal, const KW_LabelSignalDetails& details)
    {
        const NSignalBits::t_Signal bits{signal.getStartBit(), signal.getBitLength(),
                                         signal.getEndianness(), m_message.unit};
        if (bits.bitLength < 1 || bits.bitLength > kWord ||
            NSignalBits::BitsUpTo(bits) > kByte * CPayload::kLongest)
        {
            return;
        }
        const e_Kind kind = KindOf(signal);
        m_steps.emplace(signal.getName(), m_message.steps.size());
        m_details.push_back(&details);
        m_message.signalList.push_back({signal.getName(), signal.getUnit(), signal.getValueType(),
                                        signal.getBitLength(), signal.getMinimum(),
                                        signal.getMaximum(), kind != e_Kind::Unreadable});
        const bool isSigned = signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
        m_message.steps.push_back({FieldOf(bits), &m_message.signalList.back(), signal.getFactor(),
                                   signal.getOffset(), CompileLabels(signal, details), kAlways,
                                   isSigned ? UINT64{1} << (bits.bitLength - 1) : 0, kind});
    }

    void SumUp(const t_SignalStep& step)
    {
        m_message.isPlain = m_message.isPlain && step.kind == e_Kind::Integer &&
                            step.condition == kAlways && step.field.bitsUpTo <= kWord;
    }

    const CLabels* CompileLabels(const CLabelListSignal& signal,
                                 const KW_LabelSignalDetails& details)
    {
        if (!IsInteger(signal.getValueType()))
        {
            return nullptr;
        }
        const auto labels = LabelsOf(signal, details);
        if (labels.empty())
        {
            return nullptr;
        }
        m_message.labels.push_back(std::make_unique<const CLabels>(labels));
        return m_message.labels.back().get();
    }

    /** No ranges where no signal has the multiplexor's name: these never select. */
    INT32 ConditionOf(const KW_LabelSignalDetails& details)
    {
        if (details.multiplexor.empty())
        {
            return kAlways;
        }
        const auto step = m_steps.find(details.multiplexor);
        t_Condition condition{step != m_steps.end() ? step->second : 0, {}};
        if (step != m_steps.end())
        {
            condition.ranges = details.selectedBy;
            NLabelConditions::Arrange(condition.ranges);
        }
        auto& conditions = m_message.conditions;
        if (conditions.empty() || !IsSame(conditions.back(), condition))
        {
            conditions.push_back(std::move(condition));
        }
        return static_cast<INT32>(conditions.size() - 1);
    }

    static bool IsSame(const t_Condition& a, const t_Condition& b)
    {
        return a.step == b.step &&
               std::equal(a.ranges.begin(), a.ranges.end(), b.ranges.begin(), b.ranges.end(),
                          [](const KW_RawRange& x, const KW_RawRange& y)
                          { return x.first == y.first && x.last == y.last; });
    }

    const KW_LabelEntry& m_entry;
    CLabelListDecoder::t_Message m_message;
    std::vector<const KW_LabelSignalDetails*> m_details;  ///< of each step
    std::unordered_map<std::string, std::size_t> m_steps; ///< the first of each name
};

/** All signals of a plain message in half the time, from its first word. */
std::size_t DecodePlain(const CLabelListDecoder::t_Message& message, UINT64 little,
                        CLabelListDecoder::t_Value* value)
{
    const t_Words words = {little, qbswap<quint64>(little)};
    for (const t_SignalStep& step : message.steps)
    {
        const UINT64 raw = ReadWord(words, step.field);
        *value++ = {step.signal, raw, IntegerOf(step, raw), LabelOf(step, raw)};
    }
    return message.steps.size();
}

std::size_t DecodeAny(const CLabelListDecoder::t_Message& message, std::span<const UINT8> payload,
                      std::span<CLabelListDecoder::t_Value> values)
{
    const CPayload bits(payload, message.unit);
    const auto read = [&bits](const t_Field& field, UINT64& raw)
    {
        const bool holds = bits.Holds(field);
        raw = holds ? bits.Read(field) : 0;
        return holds;
    };
    CSelection selection(message, read);
    CLabelListDecoder::t_Value* value = values.data();
    const auto* const room = value + values.size();
    for (auto step = message.steps.begin(); step != message.steps.end() && value != room; ++step)
    {
        if (bits.Holds(step->field) && selection.Has(*step))
        {
            const UINT64 raw = bits.Read(step->field);
            *value++ = {step->signal, raw, ValueOf(*step, raw), LabelOf(*step, raw)};
        }
    }
    return static_cast<std::size_t>(value - values.data());
}

UINT64 KeyOf(UINT32 identifierLength, UINT32 identifier)
{
    return UINT64{identifierLength} << 32U | identifier;
}
} // namespace

/** Messages by key, in a table at most half full: the first free place ends a search. */
struct CLabelListDecoder::t_Compiled
{
    struct t_Place
    {
        UINT64 key = 0;
        const t_Message* message = nullptr;
    };

    std::vector<t_Message> messages;
    std::vector<t_Place> places;
    int shift = 0; ///< leaves as many bits of a hash as number the places

    explicit t_Compiled(const KW_LabelList& list)
    {
        messages.reserve(list.messages.size());
        const std::size_t count = std::bit_ceil(2 * list.messages.size() + 2);
        shift = static_cast<int>(kWord) - std::countr_zero(count);
        places.resize(count);
        const UINT32 unit = NLabelBuses::Of(list.protocol).unit;
        for (const KW_LabelEntry& entry : list.messages)
        {
            Add(entry, unit);
        }
    }

    void Add(const KW_LabelEntry& entry, UINT32 unit)
    {
        const auto length = NLabelChecks::IdentifierLengthOf(entry.message);
        if (!length)
        {
            return;
        }
        const UINT64 key = KeyOf(*length, entry.message.getIdentifier());
        const std::size_t place = PlaceOf(key);
        if (places[place].message == nullptr)
        {
            messages.push_back(CMessageCompiler(entry, unit).Compile());
            places[place] = {key, &messages.back()};
        }
    }

    /** The place of a key, or the free one that it would have. */
    std::size_t PlaceOf(UINT64 key) const noexcept
    {
        constexpr UINT64 kGoldenRatio = 0x9e3779b97f4a7c15U;
        auto place = static_cast<std::size_t>(key * kGoldenRatio >> shift);
        while (places[place].message != nullptr && places[place].key != key)
        {
            place = (place + 1) & (places.size() - 1);
        }
        return place;
    }
};

CLabelListDecoder::CLabelListDecoder(const KW_LabelList& list)
    : m_compiled(std::make_unique<t_Compiled>(list))
{
}
CLabelListDecoder::~CLabelListDecoder() = default;
CLabelListDecoder::CLabelListDecoder(CLabelListDecoder&&) noexcept = default;
CLabelListDecoder& CLabelListDecoder::operator=(CLabelListDecoder&&) noexcept = default;

const CLabelListDecoder::t_Message* CLabelListDecoder::Find(UINT32 identifierLength,
                                                            UINT32 identifier) const noexcept
{
    return m_compiled->places[m_compiled->PlaceOf(KeyOf(identifierLength, identifier))].message;
}

const std::string& CLabelListDecoder::NameOf(const t_Message& message) noexcept
{
    return message.name;
}

UINT32 CLabelListDecoder::LengthOf(const t_Message& message) noexcept
{
    return message.length;
}

std::span<const CLabelListDecoder::t_Signal>
CLabelListDecoder::SignalsOf(const t_Message& message) noexcept
{
    return message.signalList;
}

std::size_t CLabelListDecoder::Decode(const t_Message& message, std::span<const UINT8> payload,
                                      std::span<t_Value> values) noexcept
{
    const bool isWhole = payload.size() >= sizeof(UINT64) && values.size() >= message.steps.size();
    return message.isPlain && isWhole
               ? DecodePlain(message, qFromLittleEndian<quint64>(payload.data()), values.data())
               : DecodeAny(message, payload, values);
}

std::string_view CLabelListDecoder::Format(double value, t_TextBuffer& buffer) noexcept
{
    constexpr int kDigits = 15;
    constexpr double kSixteenDigits = 1e15;
    char* const begin = buffer.data();
    char* const room = begin + buffer.size();
    if (std::isnan(value))
    {
        return "nan";
    }
    const bool isWhole = std::fabs(value) < kSixteenDigits && value == std::trunc(value);
    // Whole numbers, of which there are most, in a fifth of the time.
    const auto end = isWhole
                         ? std::to_chars(begin, room, static_cast<INT64>(value))
                         : std::to_chars(begin, room, value, std::chars_format::general, kDigits);
    return {begin, static_cast<std::size_t>(end.ptr - begin)};
}
