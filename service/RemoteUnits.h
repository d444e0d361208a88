// SPDX-License-Identifier: MIT
#pragma once

#include "KWTexts.h"

#include <QByteArray>
#include <QString>

namespace NRemote
{
/** The unit that a suffix names for a number in `unit`, as KW_ParseNumber takes it: "MV" is mV,
    "MHZ" MHz, "MAV" MV. Null for a suffix of another quantity. `suffix` is in capitals. */
QString UnitOf(const QByteArray& suffix, KW_UNIT unit);
} // namespace NRemote
