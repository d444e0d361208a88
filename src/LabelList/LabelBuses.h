// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <span>

enum KW_ZEL_SERIALBUS_PROTOCOL : INT32;

/** What labels of a bus can be, by its protocol. */
namespace NLabelBuses
{
struct t_Bus
{
    std::span<const UINT32>
        identifierLengths; ///< in bits, the usual one first; 0: frames have none
    UINT32 unit;           ///< bits of what the bytes of a payload are to it
    UINT32 longestPayload; ///< in bytes, of all its frames and variants
};

/**
 * CAN: 11 and 29 bits, up to 64 bytes with CAN FD. LIN: 6 bits, 8 bytes. I²C: addresses of 7 and 10
 * bits without the direction bit, the first 64 bytes. SENT: identifiers of serial messages, 8 or 4
 * bits, and none for the fast channel. SPI and UART have frames without identifiers; where a
 * protocol on top names what follows by its first byte, that is an identifier of 8 bits.
 */
const t_Bus& Of(KW_ZEL_SERIALBUS_PROTOCOL protocol);

/** Whether frames of the bus can have identifiers of that length. */
bool HasLength(KW_ZEL_SERIALBUS_PROTOCOL protocol, UINT32 identifierLength);
} // namespace NLabelBuses
