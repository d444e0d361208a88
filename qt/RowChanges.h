// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <set>
#include <vector>

/** Who keeps rows in step with a list: each call changes the rows between the model's begin and
    end. */
class IRowChanges
{
public:
    virtual ~IRowChanges() = default;
    virtual void RemoveRows(std::size_t first, std::size_t last) = 0;
    /** To a place further up. */
    virtual void MoveRow(std::size_t from, std::size_t to) = 0;
    /** New ones, from `first` of the wanted list on. */
    virtual void InsertRows(std::size_t first, std::size_t last) = 0;
};

/** Leads rows from the keys that they have to those that are wanted: first what goes, then from top
    to bottom what comes and moves. Keys are unique. */
template <typename TKey>
void ChangeRows(std::vector<TKey> keys, const std::vector<TKey>& wanted, IRowChanges& rows)
{
    const std::set<TKey> kept(wanted.begin(), wanted.end());
    for (std::size_t end = keys.size(); end > 0;)
    {
        std::size_t first = end;
        while (first > 0 && kept.count(keys[first - 1]) == 0)
        {
            --first;
        }
        if (first == end)
        {
            --end;
            continue;
        }
        rows.RemoveRows(first, end - 1);
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(first),
                   keys.begin() + static_cast<std::ptrdiff_t>(end));
        end = first;
    }

    const std::set<TKey> known(keys.begin(), keys.end());
    for (std::size_t i = 0; i < wanted.size(); ++i)
    {
        const auto at = keys.begin() + static_cast<std::ptrdiff_t>(i);
        if (i < keys.size() && *at == wanted[i])
        {
            continue;
        }
        if (known.count(wanted[i]) != 0)
        {
            const auto from = std::find(at, keys.end(), wanted[i]);
            rows.MoveRow(static_cast<std::size_t>(from - keys.begin()), i);
            std::rotate(at, from, from + 1);
            continue;
        }
        std::size_t last = i;
        while (last + 1 < wanted.size() && known.count(wanted[last + 1]) == 0)
        {
            ++last;
        }
        rows.InsertRows(i, last);
        keys.insert(at, wanted.begin() + static_cast<std::ptrdiff_t>(i),
                    wanted.begin() + static_cast<std::ptrdiff_t>(last + 1));
        i = last;
    }
}
