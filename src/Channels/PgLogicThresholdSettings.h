// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLogicThresholdSettingsBase.h"
#include "Rules/ChannelRules.h"

/** Threshold at which a signal is read as low or high: that of a logic family, wherever the screen
    is, or the user's, which stays on it. */
class CPgLogicThresholdSettings : public CPgLogicThresholdSettingsBase
{
public:
    t_Couplings Rules() const override;

    void FollowScreen(const NRules::t_Screen& screen);
    /** Led by the channel, before the screen follows. */
    void Rescale(double ratio);
    /** Takes over the settings of the other half of a probe. */
    void CopyFrom(const CPgLogicThresholdSettings& other);

private:
    void SelectUser();
    void UpdateThreshold();
};
