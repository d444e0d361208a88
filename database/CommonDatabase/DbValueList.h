// SPDX-License-Identifier: MIT
#pragma once

#include "MatConstants.h"

#include <QVariant>
#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

/** The numbers that a numeric property may take, where it has a list of them. Entries that are no
    numbers of the type are passed over. */
namespace NValueList
{
/** False when the entry is no number of type T. */
template <typename T>
bool ReadEntry(const QVariant& entry, T& number)
{
    bool isNumber = false;
    if constexpr (std::is_same_v<T, double>)
    {
        number = entry.toDouble(&isNumber);
        isNumber = isNumber && !std::isnan(number);
    }
    else if constexpr (std::is_signed_v<T>)
    {
        number = static_cast<T>(entry.toLongLong(&isNumber));
    }
    else
    {
        number = static_cast<T>(entry.toULongLong(&isNumber));
    }
    return isNumber;
}

/** Index of the entry that equals `value` but for rounding; -1 when there is none. */
template <typename T>
int Find(const QVariantList& list, T value)
{
    for (int i = 0; i < list.size(); ++i)
    {
        T entry{};
        const bool same = ReadEntry(list[i], entry) &&
                          (entry == value || CMatConstants::AreEqual(static_cast<double>(entry),
                                                                     static_cast<double>(value)));
        if (same)
        {
            return i;
        }
    }
    return -1;
}

/** Whether any entry may be taken within the limits; an empty list restricts nothing. */
template <typename T>
bool HasEntryWithin(const QVariantList& list, T min, T max)
{
    return list.isEmpty() ||
           std::any_of(list.begin(), list.end(),
                       [min, max](const QVariant& item)
                       {
                           T entry{};
                           return ReadEntry(item, entry) && entry >= min && entry <= max;
                       });
}

/** The entry within the limits that is nearest to `value`; the nearer limit when there is none. */
template <typename T>
T Nearest(const QVariantList& list, T value, T min, T max)
{
    T nearest = std::clamp(value, min, max);
    double distance = std::numeric_limits<double>::infinity();
    for (const QVariant& item : list)
    {
        T entry{};
        if (!ReadEntry(item, entry) || entry < min || entry > max)
        {
            continue;
        }
        const double d = std::fabs(static_cast<double>(entry) - static_cast<double>(value));
        if (d < distance)
        {
            distance = d;
            nearest = entry;
        }
    }
    return nearest;
}
} // namespace NValueList
