// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QString>

/** Name of a code as in the library's enumeration without its prefix, such as "ABOVE_MAXIMUM";
    the number for any other code. */
QString GetAcceptanceName(KW_ACCEPTANCE code);

/** "code 3 ABOVE_MAXIMUM, above the maximum". */
QString DescribeAcceptance(KW_ACCEPTANCE code);

/** A code by its number or name, with or without prefix; fails for any other text. */
KW_ACCEPTANCE ReadAcceptance(const QString& text);
