// SPDX-License-Identifier: MIT
#pragma once

#include "Failure.h"
#include "KWTexts.h"

#include <QString>

enum KW_UNIT : INT32;

/** The failure of a text that is no number in `unit`; `what` names the quantity. */
CFailure NoNumber(const QString& text, KW_UNIT unit, const QString& what);

/** Reads a number in `unit`; fails as above. */
double ReadDouble(const QString& text, KW_UNIT unit, const QString& what);
