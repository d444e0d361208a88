// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLogicBase.h"

class CPgLogicThresholdSettings;
enum KW_ONOFF : INT32;

/** The digital channels. Coupled halves of the probe have the same threshold and hysteresis: those
    that were written last, or those of the selected half when they are coupled. */
class CPgLogic : public CPgLogicBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

    /** A half of the probe got other settings. */
    void OnThreshold(const CPgLogicThresholdSettings& half);

private:
    void EnableChannels(KW_ONOFF state);
    void ResetOrder();
    void ResetDeskew();
};
