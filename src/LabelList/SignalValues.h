// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <QStringView>
#include <optional>

class CLabelListMessage;
class CLabelListSignal;

/**
 * What a payload says by the signals of its message. Values are those of CAN databases:
 * offset + raw value × factor, with signed raw values in two's complement and floats and doubles by
 * IEEE 754, for every length from 1 to 64 bits. This is not getPhysicalValue, whose limits existing
 * texts rely on.
 *
 * `payload` has a character for each bit, first byte first, most significant bit first; "0" and
 * "1", anything else for a bit that could not be read. `unit` is that of the notation
 * (SignalBits.h).
 */
namespace NSignalValues
{
/** The value as text in up to 15 digits, whatever the locale, with the signal's unit and, of a
    signal of the type enum, the label of its raw value: "812.5 rpm", "3 (Drive)". "???" with a
    factor of 0, a bit that could not be read, or a length that the type does not allow. */
QString TextOf(const CLabelListSignal& signal, QStringView payload, UINT32 unit);

/**
 * All signals in the order of their keys: "Speed = 812.5 rpm; Gear = 3 (Drive)".
 *
 * @param longest characters that the text has at most; what does not fit is left out, signals as a
 *        whole, and "..." stands in its place
 * @return empty for a message without signals; nothing when the payload is too short for one
 */
std::optional<QString> TextOf(const CLabelListMessage& message, QStringView payload, UINT32 unit,
                              INT32 longest);
} // namespace NSignalValues
