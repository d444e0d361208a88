// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"

namespace NCommonHelper
{
/** Source that the reports of the vertical and common helpers name. */
constexpr char kHelperSource[] = "src/IKWFunctionZELHelpers";

/** The number that a value of an enumeration stands for; `fallback` where it has none, which the
    caller has excluded or reports. */
template <typename T>
double NumberOf(T value, double fallback)
{
    return GetStaticEnumNameInfo<T>().GetNumber(value).value_or(fallback);
}

template <typename T>
bool IsLegal(T value)
{
    return GetStaticEnumNameInfo<T>().IsValue(value);
}
} // namespace NCommonHelper
