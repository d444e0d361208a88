// SPDX-License-Identifier: MIT
#include "LabelList/CompiledMessage.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

using namespace NCompiled;

namespace
{
constexpr UINT32 kWord = 64;
constexpr UINT32 kByte = 8;

/** Puts the upper nibble of each byte below the lower one. */
constexpr UINT64 WithNibblesSwapped(UINT64 word)
{
    constexpr UINT64 kLower = 0x0f0f0f0f0f0f0f0fU;
    return (word & kLower) << 4U | (word >> 4U & kLower);
}
} // namespace

CLabels::CLabels(const std::map<UINT64, std::string>& labels)
    : m_labels(labels.begin(), labels.end())
{
    const UINT64 last = m_labels.back().first;
    const std::size_t bearable = 4 * m_labels.size() + 16;
    if (last < bearable)
    {
        m_dense.resize(static_cast<std::size_t>(last) + 1);
        for (const auto& [raw, label] : m_labels)
        {
            m_dense[static_cast<std::size_t>(raw)] = &label;
        }
    }
}

const std::string* CLabels::Find(UINT64 raw) const noexcept
{
    if (!m_dense.empty())
    {
        return raw < m_dense.size() ? m_dense[static_cast<std::size_t>(raw)] : nullptr;
    }
    const auto found =
        std::lower_bound(m_labels.begin(), m_labels.end(), raw,
                         [](const auto& label, UINT64 value) { return label.first < value; });
    return found != m_labels.end() && found->first == raw ? &found->second : nullptr;
}

CPayload::CPayload(std::span<const UINT8> payload) noexcept
    : m_bits(static_cast<UINT32>(kByte * std::min(payload.size(), kLongest)))
{
    if (m_bits != 0)
    {
        std::memcpy(m_bytes.data(), payload.data(), m_bits / kByte);
    }
}

UINT64 CPayload::Read(const t_Field& field) const noexcept
{
    const UINT8* const first = m_bytes.data() + field.firstByte;
    UINT64 word = field.order == e_Order::Big ? qFromBigEndian<quint64>(first)
                                              : qFromLittleEndian<quint64>(first);
    if (field.order == e_Order::LittleNibbles)
    {
        word = WithNibblesSwapped(word);
    }
    return (field.hasNineBytes ? ReadNine(field, word) : word >> field.shift) & field.mask;
}

UINT64 CPayload::ReadNine(const t_Field& field, UINT64 word) const noexcept
{
    const UINT64 last = m_bytes[field.firstByte + sizeof(word)];
    switch (field.order)
    {
    case e_Order::Big:
        return word << field.shift | last >> (kByte - field.shift);
    case e_Order::LittleNibbles:
        return word >> field.shift | WithNibblesSwapped(last) << (kWord - field.shift);
    default:
        return word >> field.shift | last << (kWord - field.shift);
    }
}

double NCompiled::ValueOf(const t_Step& step, UINT64 raw) noexcept
{
    double number = 0.0;
    switch (step.kind)
    {
    case e_Kind::Integer:
        number =
            static_cast<double>(std::bit_cast<INT64>(raw << step.unusedBits) >> step.unusedBits);
        break;
    case e_Kind::Unsigned:
        number = static_cast<double>(raw);
        break;
    case e_Kind::Float:
        number = static_cast<double>(std::bit_cast<float>(static_cast<UINT32>(raw)));
        break;
    case e_Kind::Double:
        number = std::bit_cast<double>(raw);
        break;
    case e_Kind::Unreadable:
        return std::numeric_limits<double>::quiet_NaN();
    }
    return step.offset + number * step.factor;
}
