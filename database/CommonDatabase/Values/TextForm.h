// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <optional>

/** What a text must look like beyond its length. The empty text is nothing given, and fits each. */
enum class eTEXTFORM : UINT8
{
    Any,
    Passphrase, ///< of a WPA2 network: 8 to 63 printable ASCII characters, or 64 hex digits
    Address,    ///< of a host by IPv4, "192.168.0.7": neither loopback nor for groups
    Mask,       ///< of an IPv4 network with at least two hosts, "255.255.255.0"
    Condition,  ///< values of a signal with which something applies, "Mode = 0-3, 7"
};

namespace NTextForm
{
bool Fits(eTEXTFORM form, QStringView text);

/** What fits, for a user: "8 to 63 …"; empty where anything does. */
QString Describe(eTEXTFORM form);

/** Four decimal numbers up to 255 between dots, the first one in the highest byte. A leading zero
    is refused, as some programs read octal digits behind it. */
std::optional<UINT32> ReadAddress(QStringView text);
} // namespace NTextForm
