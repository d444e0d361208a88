// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLogicThresholdSettingsBase.h"
#include "Rules/ChannelRules.h"

/** Threshold at which a signal is read as low or high: that of a logic family, or the user's, as
    near as the screen lets it. */
class CPgLogicThresholdSettings : public CPgLogicThresholdSettingsBase
{
public:
    t_Couplings Rules() const override;

    void FollowScreen(const NRules::t_Screen& screen);
    /** Takes over the settings of the other half of a probe. */
    void CopyFrom(const CPgLogicThresholdSettings& other);

private:
    void SelectUser();
    void UpdateThreshold();
};
