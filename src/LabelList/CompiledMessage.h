// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelConditions.h"
#include "LabelList/LabelListDecoder.h"

#include <array>
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
/** In the order in which the bits of an eight-byte word are numbered. */
enum class e_Order : UINT8
{
    Little,
    Big,
    LittleNibbles, ///< nibbles in place of bytes, of which the upper one of a byte comes first
};

/** The bits of a signal in a payload of bytes. */
struct t_Field
{
    UINT64 mask;      ///< of the lowest bits, as many as the signal has
    UINT16 firstByte; ///< < 64
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
    const std::string* Find(UINT64 raw) const noexcept;

private:
    std::vector<std::pair<UINT64, std::string>> m_labels; ///< by value
    std::vector<const std::string*> m_dense; ///< by value as index; empty where the values lie too
                                             ///< far apart
};

constexpr INT32 kAlways = -1;

/** A signal, as it is read. */
struct t_Step
{
    t_Field field;
    double factor;
    double offset;
    const CLabels* labels; ///< null without any
    INT32 condition;       ///< index in the message, or kAlways
    UINT8 unusedBits;      ///< that a word has above a signed number; 0 without a sign
    e_Kind kind;
};

/** A multiplexor and the raw values with which it selects. */
struct t_Condition
{
    std::size_t step; ///< of the multiplexor
    std::vector<KW_RawRange> ranges;
};

/** A payload, with zeros behind it so that words can be read wherever a signal begins. */
class CPayload
{
public:
    static constexpr std::size_t kLongest = 64; ///< in bytes; what is behind does not count

    explicit CPayload(std::span<const UINT8> payload) noexcept;
    /** Of so many bits, all of them 0. */
    explicit CPayload(UINT32 bits) noexcept : m_bits(bits) {}

    bool Holds(const t_Field& field) const noexcept { return field.bitsUpTo <= m_bits; }
    /** The raw value of a signal that it holds. */
    UINT64 Read(const t_Field& field) const noexcept;
    /** Sets a bit by its place: the most significant one of the first byte is 0. */
    void SetBit(UINT32 place) noexcept
    {
        m_bytes[place / 8U] = static_cast<UINT8>(m_bytes[place / 8U] | 0x80U >> place % 8U);
    }

private:
    UINT64 ReadNine(const t_Field& field, UINT64 word) const noexcept;

    UINT32 m_bits;
    std::array<UINT8, kLongest + 16> m_bytes{};
};

/** Physical value of a raw value: offset + number × factor. */
double ValueOf(const t_Step& step, UINT64 raw) noexcept;

/** The label of a raw value; null when it has none. */
inline const std::string* LabelOf(const t_Step& step, UINT64 raw) noexcept
{
    return step.labels != nullptr ? step.labels->Find(raw) : nullptr;
}
} // namespace NCompiled

struct CLabelListDecoder::t_Message
{
    std::string name;
    UINT32 length = 0;
    UINT32 unit = 8;                      ///< bits of what bytes are to the bus
    std::vector<t_Signal> signalList;     ///< in the order of the list
    std::vector<NCompiled::t_Step> steps; ///< of each signal
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

    bool Has(const t_Step& step) noexcept
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
            const t_Step& multiplexor = m_message.steps[met.step];
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
