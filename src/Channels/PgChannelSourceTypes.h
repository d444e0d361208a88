// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgChannelSourceTypesBase.h"

/** Functions that can use the channel: an analog input serves all of them while it is on. */
class CPgChannelSourceTypes : public CPgChannelSourceTypesBase
{
public:
    /** Led by the channel. */
    void SetUsable(bool usable);
};
