// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"

#include <QString>

/** How a value is called in files and answers: its serial name, or its number where it has none. */
QString GetEnumText(const CEnumNameInfo& names, INT32 value);

/** The value that a serial, remote or display name stands for, tried in this order and without
    regard to case. A value without names is called by its number. Any other text ends in a failure
    that names the quantity as `what` and the names that are near. */
INT32 ReadEnum(const CEnumNameInfo& names, const QString& text, const QString& what);

template <typename T>
T ReadEnum(const QString& text, const QString& what)
{
    return static_cast<T>(ReadEnum(GetStaticEnumNameInfo<T>(), text, what));
}

template <typename T>
QString GetEnumText(T value)
{
    return GetEnumText(GetStaticEnumNameInfo<T>(), value);
}
