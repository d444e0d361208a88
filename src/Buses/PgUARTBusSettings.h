// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgUARTBusSettingsBase.h"

/** UART decoder: the bit rate follows its usual values, the word that ends a frame has as many bits
    as a word, and what the frame mode does not use is not available. */
class CPgUARTBusSettings : public CPgUARTBusSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateAvailabilities();
    void FitEndOfFrame();
    KW_ACCEPTANCE FollowBitRate(const CDbPropBase* written);
};
