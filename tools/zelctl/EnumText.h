// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"
#include "KWTexts.h"

#include <QString>

/** As KW_ParseEnum. A text that stands for no value, or for several, ends in a failure that names
    the quantity as `what` and the names that are near. */
INT32 ReadEnum(const CEnumNameInfo& names, const QString& text, const QString& what);

template <typename T>
T ReadEnum(const QString& text, const QString& what)
{
    return static_cast<T>(ReadEnum(GetStaticEnumNameInfo<T>(), text, what));
}

template <typename T>
QString GetEnumText(T value)
{
    return KW_FormatEnum(GetStaticEnumNameInfo<T>(), value);
}
