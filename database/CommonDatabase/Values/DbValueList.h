// SPDX-License-Identifier: MIT
#pragma once

#include "MatConstants.h"

#include <QVariant>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

/** The numbers that a numeric property may take, where it has a list of them. Entries that are no
    numbers of the type are passed over. */
namespace NValueList
{
/** False when the entry is no number of type T: text that is none, NaN, or a whole number that T
   can not hold. `number` means nothing then. */
template <typename T>
bool ReadEntry(const QVariant& entry, T& number)
{
    bool isNumber = false;
    if constexpr (std::is_same_v<T, double>)
    {
        number = entry.toDouble(&isNumber);
        return isNumber && !std::isnan(number);
    }
    else if constexpr (std::is_signed_v<T>)
    {
        const qlonglong wide = entry.toLongLong(&isNumber);
        number = static_cast<T>(wide);
        return isNumber && std::in_range<T>(wide);
    }
    else
    {
        const qulonglong wide = entry.toULongLong(&isNumber);
        number = static_cast<T>(wide);
        return isNumber && std::in_range<T>(wide);
    }
}

/** Whether rules let entry `index` be taken now: its bit, where it has one. */
inline bool IsOffered(std::uint64_t offered, int index)
{
    constexpr int kBits = 64;
    return index >= kBits || (offered >> index & 1U) != 0U;
}

/** The same number but for rounding, which whole numbers have none of. */
template <typename T>
bool IsSame(T a, T b)
{
    if constexpr (std::is_same_v<T, double>)
    {
        return a == b || CMatConstants::AreEqual(a, b);
    }
    else
    {
        return a == b;
    }
}

/** From `low` up to `high`, exact for whole numbers: the difference of two that T holds may be more
    than T holds. */
template <typename T>
auto Distance(T low, T high)
{
    using t_Distance = std::conditional_t<std::is_same_v<T, double>, double, std::uint64_t>;
    return static_cast<t_Distance>(high) - static_cast<t_Distance>(low);
}

/** Index of the offered entry that equals `value` but for rounding; -1 when there is none. */
template <typename T>
int Find(const QVariantList& list, std::uint64_t offered, T value)
{
    for (int i = 0; i < list.size(); ++i)
    {
        T entry{};
        if (IsOffered(offered, i) && ReadEntry(list[i], entry) && IsSame(entry, value))
        {
            return i;
        }
    }
    return -1;
}

/** Whether any entry may be taken within the limits; an empty list restricts nothing. */
template <typename T>
bool HasEntryWithin(const QVariantList& list, std::uint64_t offered, T min, T max)
{
    for (int i = 0; i < list.size(); ++i)
    {
        T entry{};
        if (IsOffered(offered, i) && ReadEntry(list[i], entry) && entry >= min && entry <= max)
        {
            return true;
        }
    }
    return list.isEmpty();
}

/** The offered entry within the limits that is nearest to `value`, the lower of two; the nearer
   limit when there is none. */
template <typename T>
T Nearest(const QVariantList& list, std::uint64_t offered, T value, T min, T max)
{
    std::optional<T> below; ///< the largest that is not above
    std::optional<T> above; ///< the smallest that is above
    for (int i = 0; i < list.size(); ++i)
    {
        T entry{};
        if (!IsOffered(offered, i) || !ReadEntry(list[i], entry) || entry < min || entry > max)
        {
            continue;
        }
        if (entry <= value)
        {
            below = std::max(below.value_or(entry), entry);
        }
        else
        {
            above = std::min(above.value_or(entry), entry);
        }
    }
    if (below && above)
    {
        return Distance(value, *above) < Distance(*below, value) ? *above : *below;
    }
    return below ? *below : above.value_or(std::clamp(value, min, max));
}
} // namespace NValueList
