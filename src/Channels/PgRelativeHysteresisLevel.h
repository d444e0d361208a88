// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgRelativeHysteresisLevelBase.h"

enum KW_ZEL_CHANNEL : INT32;

/** Hysteresis with which edges of a trace are found: the user's, or what the hardware set-up states
    for the bandwidth of the trace. Below a channel the trace is the channel's, below the cursors
    that of the cursor measurement in the same place. */
class CPgRelativeHysteresisLevel : public CPgRelativeHysteresisLevelBase
{
public:
    using CPgRelativeHysteresisLevelBase::CPgRelativeHysteresisLevelBase;

    t_Couplings Rules() const override;

private:
    void SelectUser();
    void UpdateHysteresis();
    KW_ZEL_CHANNEL Trace() const;
    double Automatic() const;
};
