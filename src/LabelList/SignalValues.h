// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListDecoder.h"

#include <QString>
#include <QStringView>
#include <optional>

/** What a payload that was read bit by bit says, as text for the results of a decoded frame. */
namespace NSignalValues
{
/**
 * The signals that are there, in the order of the message: "Speed = 812.5 rpm; Gear = 3 (Drive)".
 * Values are CLabelListDecoder's, with the signal's unit and the label of the raw value; "???" of a
 * signal that is not readable, and where a bit could not be read. Where a bit of a multiplexor
 * could not be, nothing that it selects is there.
 *
 * @param payload a character for each bit, first byte first, most significant bit first; "0" and
 *        "1", anything else for a bit that could not be read. At most 64 bytes of it count.
 * @param longest characters that the text has at most; what does not fit is left out, signals as a
 *        whole, and "..." stands in its place
 * @return empty where no signal is there; nothing when the payload is too short for one that is
 */
std::optional<QString> TextOf(const CLabelListDecoder::t_Message& message, QStringView payload,
                              INT32 longest);
} // namespace NSignalValues
