// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgChannelTypeBase.h"

/** What kind of channel this is. */
class CPgChannelType : public CPgChannelTypeBase
{
public:
    /** The analog channel at a place of the array, its samples simulated or not. */
    void Identify(INT32 index, bool isSimulated);
};
