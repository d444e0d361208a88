// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

enum KW_WIRELESS_COUNTRY : INT32;

/** Channels of 20 MHz on which a network may be offered indoors, by the rules of a country.
    Stateless. */
namespace NRadioChannels
{
/** Of the 2.4 GHz band (1 is 2412 MHz) or of the 5 GHz band (36 is 5180 MHz). The world domain has
    none of the upper band: what is permitted everywhere there is to listen. */
bool IsPermitted(KW_WIRELESS_COUNTRY country, int channel);
} // namespace NRadioChannels
