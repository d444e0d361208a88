// SPDX-License-Identifier: MIT
#include "PropertyMarks.h"

#include "IKWProperties.h"

#include <bit>

namespace
{
UINT64 ToMark(double value)
{
    return std::bit_cast<UINT64>(value);
}

template <typename T>
UINT64 ToMark(T value)
{
    return static_cast<UINT64>(value);
}

t_PropertyMarks Join(const IDbProperty& property, UINT64 value, UINT64 least, UINT64 most,
                     UINT64 selectable)
{
    return {value,
            least,
            most,
            selectable,
            ToMark(property.GetUnitCode()),
            ToMark(property.GetValidity()),
            ToMark(property.GetAvailability())};
}

/** Most numbers have no value list: only those that do pay for its texts. */
template <typename T>
std::function<t_PropertyMarks()> GetNumberReader(const std::shared_ptr<IDbProperty>& property)
{
    const auto handle = std::dynamic_pointer_cast<IKWNumericProperty<T>>(property->GetHandle());
    if (!handle)
    {
        return {};
    }
    const bool hasList = !property->GetValueTexts().isEmpty();
    return [property, handle, hasList]
    {
        return Join(*property, ToMark(handle->Get()), ToMark(handle->GetMin()),
                    ToMark(handle->GetMax()), hasList ? qHash(property->GetValueTexts()) : 0);
    };
}

/** The states of all values, folded: a base of three would overflow behind 40 values. */
UINT64 FoldValueStates(const IKWEnumPropertyBase& handle)
{
    constexpr UINT64 kPrime = 0x100000001B3;
    UINT64 folded = 0;
    for (INT32 value = 0; value < handle.GetEnumNameInfo().GetEnumSize(); ++value)
    {
        folded = (folded ^ ToMark(handle.GetValueState(value))) * kPrime + 1;
    }
    return folded;
}

std::function<t_PropertyMarks()> GetEnumReader(const std::shared_ptr<IDbProperty>& property)
{
    const auto handle = std::dynamic_pointer_cast<IKWEnumPropertyBase>(property->GetHandle());
    if (!handle)
    {
        return {};
    }
    return [property, handle]
    { return Join(*property, ToMark(handle->GetAsInt()), 0, 0, FoldValueStates(*handle)); };
}
} // namespace

std::function<t_PropertyMarks()> GetMarksReader(const std::shared_ptr<IDbProperty>& property)
{
    for (const auto& get :
         {GetEnumReader, GetNumberReader<double>, GetNumberReader<INT32>, GetNumberReader<UINT32>,
          GetNumberReader<INT64>, GetNumberReader<UINT64>, GetNumberReader<INT16>,
          GetNumberReader<UINT16>})
    {
        if (auto reader = get(property))
        {
            return reader;
        }
    }
    return {};
}
