// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QString>
#include <QStringView>

/** A decimal digit of ASCII; QChar::isDigit takes those of every script. */
inline bool KW_IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/** Numbers as the tree's texts: the shortest decimal text that reads back to the same value, with
    "." and without regard to the locale. T is one of the seven number types. */
template <typename T>
QString KW_NumberToText(T value);

/**
 * Reads such a text, whole. Refused, with `value` left alone:
 * eKW_ACC_BAD_TEXT for white space, units, trailing characters, for a fraction or exponent where T
 * is an integer, and for a real number of more than 64 characters;
 * eKW_ACC_BELOW_MINIMUM and eKW_ACC_ABOVE_MAXIMUM for a number that T can not hold.
 * A real number between zero and the smallest that a double holds is zero, the nearest one.
 */
template <typename T>
KW_ACCEPTANCE KW_ParseNumber(QStringView text, T& value);

/** The same, where it does not matter why a text is refused. */
template <typename T>
bool KW_TextToNumber(QStringView text, T& value)
{
    return KW_IsAccepted(KW_ParseNumber(text, value));
}
