// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskChannelSetupBase.h"

/** Mask of one channel. */
class CPgMaskChannelSetup : public CPgMaskChannelSetupBase
{
public:
    using CPgMaskChannelSetupBase::CPgMaskChannelSetupBase;

    void ClearCounts();
    void ClearMask();
};
