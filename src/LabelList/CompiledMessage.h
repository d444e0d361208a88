// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelConditions.h"
#include "LabelList/LabelListDecoder.h"
#include "LabelList/SignalBits.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

/** What a message is compiled to: for each signal a place to read eight bytes at, a shift and a
    mask, and how the number is made of them. */
namespace NCompiled
{
/** In the order in which the bits of an eight-byte word are numbered. Little-endian signals of SENT
    have nibbles in place of bytes, of which the upper one of a byte comes first. */
enum class e_Order : UINT8
{
    Little,
    Big,
};

constexpr UINT32 kWord = 64; ///< bits

/** The bits of a signal in a payload of bytes. */
struct t_Field
{
    UINT64 mask;      ///< of the lowest bits, as many as the signal has
    UINT16 firstByte; ///< 0 of all that end within the first word
    UINT16 bitsUpTo;  ///< that a payload needs to hold the signal; ≤ 512
    UINT8 shift;      ///< of the word to the right; of nine bytes in the big order to the left
    e_Order order;
    bool hasNineBytes;
};

/** Makes the number of a signal's bits. */
enum class e_Kind : UINT8
{
    Integer,  ///< of two's complement, or of less than 64 bits without a sign
    Unsigned, ///< of 64 bits
    Float,
    Double,
    Unreadable,
};

/** Labels by raw value. */
class CLabels
{
public:
    explicit CLabels(const std::map<UINT64, std::string>& labels);
    CLabels(const CLabels&) = delete;
    CLabels& operator=(const CLabels&) = delete;

    /** Null when the value has none. */
    const std::string* Find(UINT64 raw) const noexcept
    {
        return raw < m_dense.size() ? m_dense[static_cast<std::size_t>(raw)] : FindFar(raw);
    }

private:
    const std::string* FindFar(UINT64 raw) const noexcept;

    std::vector<std::pair<UINT64, std::string>> m_labels; ///< by value
    std::vector<const std::string*> m_dense; ///< by value as index; empty where the values lie too
                                             ///< far apart
};

constexpr INT32 kAlways = -1;

/** A signal, as it is read. */
struct t_SignalStep
{
    t_Field field;
    const CLabelListDecoder::t_Signal* signal;
    double factor;
    double offset;
    const CLabels* labels; ///< null without any
    INT32 condition;       ///< index in the message, or kAlways
    UINT64 signBit;        ///< of a signed integer; else 0
    e_Kind kind;
};

/** A multiplexor and the raw values with which it selects. */
struct t_Condition
{
    std::size_t step; ///< of the multiplexor
    std::vector<KW_RawRange> ranges;
};

/** Puts the upper nibble of each byte below the lower one. */
constexpr UINT64 WithNibblesSwapped(UINT64 word)
{
    constexpr UINT64 kLower = 0x0f0f0f0f0f0f0f0fU;
    return (word & kLower) << 4U | (word >> 4U & kLower);
}

/** The first eight bytes of a payload in each order. */
using t_Words = std::array<UINT64, 2>;

/** The raw value of a signal that ends within them. */
inline UINT64 ReadWord(const t_Words& words, const t_Field& field) noexcept
{
    return words[static_cast<std::size_t>(field.order)] >> field.shift & field.mask;
}

/** A payload, as signals are read from it. */
class CPayload
{
public:
    static constexpr std::size_t kLongest = 64; ///< in bytes; what is behind does not count

    /** @param unit bits of what bytes are to the bus
        @param bits that count of the payload */
    CPayload(std::span<const UINT8> payload, UINT32 unit, UINT32 bits) noexcept
        : m_payload(payload.first(std::min(payload.size(), kLongest))), m_unit(unit),
          m_bits(bits), m_first{WordAt(0, e_Order::Little), WordAt(0, e_Order::Big)}
    {
    }
    CPayload(std::span<const UINT8> payload, UINT32 unit) noexcept
        : CPayload(payload, unit, static_cast<UINT32>(8 * std::min(payload.size(), kLongest)))
    {
    }

    bool Holds(const t_Field& field) const noexcept { return field.bitsUpTo <= m_bits; }
    /** The raw value of a signal that it holds. */
    UINT64 Read(const t_Field& field) const noexcept
    {
        return field.bitsUpTo <= kWord ? ReadWord(m_first, field) : ReadFar(field) & field.mask;
    }

private:
    /** Eight bytes; zeros behind the payload. */
    UINT64 WordAt(std::size_t firstByte, e_Order order) const noexcept
    {
        UINT64 little = 0;
        if (m_payload.size() - firstByte >= sizeof little)
        {
            std::memcpy(&little, m_payload.data() + firstByte, sizeof little);
        }
        else
        {
            std::copy(m_payload.begin() + static_cast<std::ptrdiff_t>(firstByte), m_payload.end(),
                      reinterpret_cast<UINT8*>(&little));
        }
        little = qFromLittleEndian<quint64>(little);
        return order == e_Order::Big          ? qbswap<quint64>(little)
               : m_unit == NSignalBits::kByte ? little
                                              : WithNibblesSwapped(little);
    }
    UINT64 ReadFar(const t_Field& field) const noexcept;

    std::span<const UINT8> m_payload;
    UINT32 m_unit;
    UINT32 m_bits;
    t_Words m_first;
};

/** Physical value of an e_Kind::Integer. */
inline double IntegerOf(const t_SignalStep& step, UINT64 raw) noexcept
{
    const INT64 number = std::bit_cast<INT64>((raw ^ step.signBit) - step.signBit);
    return step.offset + static_cast<double>(number) * step.factor;
}

double UncommonValueOf(const t_SignalStep& step, UINT64 raw) noexcept;

/** Physical value of a raw value: offset + number × factor. */
inline double ValueOf(const t_SignalStep& step, UINT64 raw) noexcept
{
    if (step.kind != e_Kind::Integer)
    {
        return UncommonValueOf(step, raw);
    }
    return IntegerOf(step, raw);
}

/** The label of a raw value; null when it has none. */
inline const std::string* LabelOf(const t_SignalStep& step, UINT64 raw) noexcept
{
    return step.labels != nullptr ? step.labels->Find(raw) : nullptr;
}
} // namespace NCompiled

struct CLabelListDecoder::t_Message
{
    std::string name;
    UINT32 length = 0;
    UINT32 unit = 8;                  ///< bits of what bytes are to the bus
    bool isPlain = false;             ///< integers of bytes that end within the first word and
                                      ///< are always there: what most messages are
    std::vector<t_Signal> signalList; ///< in the order of the list
    std::vector<NCompiled::t_SignalStep> steps; ///< of each signal
    std::vector<NCompiled::t_Condition> conditions;
    std::vector<std::unique_ptr<const NCompiled::CLabels>> labels;
};

namespace NCompiled
{
/** Says which signals of a frame their multiplexors select. Neighbours mostly share a condition:
    what was found last is kept. */
template <class TReader>
class CSelection
{
public:
    /** `read` gives the raw value of a field into its second argument, or false where it can
        not. */
    CSelection(const CLabelListDecoder::t_Message& message, TReader read)
        : m_message(message), m_read(read)
    {
    }

    bool Has(const t_SignalStep& step) noexcept
    {
        if (step.condition != m_condition)
        {
            m_condition = step.condition;
            m_has = IsMet(step.condition);
        }
        return m_has;
    }

private:
    /** Also ends where multiplexors select each other in a circle. */
    bool IsMet(INT32 condition) const noexcept
    {
        constexpr int kDeepest = 16;
        for (int depth = 0; condition != kAlways; ++depth)
        {
            const t_Condition& met = m_message.conditions[static_cast<std::size_t>(condition)];
            const t_SignalStep& multiplexor = m_message.steps[met.step];
            UINT64 raw = 0;
            if (depth == kDeepest || !m_read(multiplexor.field, raw) ||
                !NLabelConditions::Selects(met.ranges, raw))
            {
                return false;
            }
            condition = multiplexor.condition;
        }
        return true;
    }

    const CLabelListDecoder::t_Message& m_message;
    TReader m_read;
    INT32 m_condition = kAlways;
    bool m_has = true;
};
} // namespace NCompiled
