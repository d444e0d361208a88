// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"

#include <initializer_list>
#include <optional>

/** What functions that show readings share: meter, counter, harmonics, logger. */
namespace NRules
{
/** Keeps the values: clients see them as they were, and that they no longer hold. */
void Invalidate(std::initializer_list<CDbPropBase*> results);

/** Makes a result what another one says, its validity included. */
template <typename T>
void CopyResult(CDbPropNum<T>& result, const CDbPropNum<T>& other)
{
    KW_CHECKED(result.DbSet(other.Get()));
    KW_CHECKED(result.SetValidity(other.GetValidity()));
}

/** Writes `reading` minus `reference`; invalid while the reading is. */
void WriteDifference(CDbPropNumDouble& result, const CDbPropNumDouble& reading, double reference);

/** Makes a reading a setting, as far as limits let it. eKW_ACC_NOTHING_TO_ACT_ON while the reading
    is invalid. */
KW_ACCEPTANCE TakeReading(CDbPropNumDouble& setting, const CDbPropNumDouble& reading);

/** Lets a selector offer the values for which `isUsable` holds; a value that is not among them
    gives way to `otherwise`, or to the lowest that is, and returns when it can. Some value must be
    usable. */
template <typename T, typename TUsable>
void OfferValues(CDbPropEnum<T>& selector, const TUsable& isUsable,
                 std::optional<T> otherwise = std::nullopt)
{
    INT32 lowest = selector.GetEnumSize();
    for (INT32 value = selector.GetEnumSize() - 1; value >= 0; --value)
    {
        const bool on = isUsable(static_cast<T>(value));
        KW_CHECKED(selector.EnableValue(value, on));
        lowest = on ? value : lowest;
    }
    KW_CHECKED(selector.FollowWish(otherwise ? static_cast<INT32>(*otherwise) : lowest));
}
} // namespace NRules
