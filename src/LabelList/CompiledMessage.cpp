// SPDX-License-Identifier: MIT
#include "LabelList/CompiledMessage.h"

#include <algorithm>
#include <limits>

using namespace NCompiled;

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

const std::string* CLabels::FindFar(UINT64 raw) const noexcept
{
    if (!m_dense.empty())
    {
        return nullptr;
    }
    const auto found =
        std::lower_bound(m_labels.begin(), m_labels.end(), raw,
                         [](const auto& label, UINT64 value) { return label.first < value; });
    return found != m_labels.end() && found->first == raw ? &found->second : nullptr;
}

UINT64 CPayload::ReadFar(const t_Field& field) const noexcept
{
    constexpr UINT32 kByte = 8;
    const UINT64 word = WordAt(field.firstByte, field.order);
    if (!field.hasNineBytes)
    {
        return word >> field.shift;
    }
    const UINT64 last = m_payload[field.firstByte + sizeof word];
    if (field.order == e_Order::Big)
    {
        return word << field.shift | last >> (kByte - field.shift);
    }
    const UINT64 next = m_unit == NSignalBits::kByte ? last : WithNibblesSwapped(last);
    return word >> field.shift | next << (kWord - field.shift);
}

double NCompiled::UncommonValueOf(const t_SignalStep& step, UINT64 raw) noexcept
{
    double number = 0.0;
    switch (step.kind)
    {
    case e_Kind::Unsigned:
        number = static_cast<double>(raw);
        break;
    case e_Kind::Float:
        number = static_cast<double>(std::bit_cast<float>(static_cast<UINT32>(raw)));
        break;
    case e_Kind::Double:
        number = std::bit_cast<double>(raw);
        break;
    default:
        return std::numeric_limits<double>::quiet_NaN();
    }
    return step.offset + number * step.factor;
}
