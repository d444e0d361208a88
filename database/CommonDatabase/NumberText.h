// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <QStringView>

/** Numbers as the tree's texts: the shortest decimal text that reads back to the same value, with
    "." and without regard to the locale. T is one of the seven number types. */
template <typename T>
QString KW_NumberToText(T value);

/** Reads such a text, whole: white space, units and trailing characters are refused, as are
    numbers that T can not hold. `value` is left alone when false is answered. */
template <typename T>
bool KW_TextToNumber(QStringView text, T& value);
