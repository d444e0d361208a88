// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgLogicBase.h"

enum KW_ONOFF : INT32;

/** The digital channels. Coupled halves of the probe have the same threshold and hysteresis: those
    that were written last, or those of the selected half when they are coupled. */
class CPgLogic : public CPgLogicBase
{
public:
    t_Couplings Rules() const override;

private:
    void LimitThresholds();
    void CoupleToSelected();
    void CoupleToWritten(const CDbPropBase* written);
    /** Gives the settings of one half of the probe to the other while they are coupled. */
    void CoupleTo(INT32 half);
    void EnableAllChannels();
    void DisableAllChannels();
    void EnableChannels(KW_ONOFF state);
    void ResetOrder();
    void ResetDeskew();
};
