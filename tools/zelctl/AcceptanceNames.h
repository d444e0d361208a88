// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QString>

/** "code 3 ABOVE_MAXIMUM, above the maximum". */
QString DescribeAcceptance(KW_ACCEPTANCE code);

/** A code by its number or name, with or without prefix; fails for any other text. */
KW_ACCEPTANCE ReadAcceptance(const QString& text);
