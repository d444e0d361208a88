// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTvTriggerSettingsBase.h"

/**
 * The video trigger. A standard that is selected brings its scan mode, its polarity, which is
 * negative in all of them, the shape of its synchronisation pulses and its lines. High definition
 * has pulses of three levels. A progressive frame of 1080 lines and up to 30 pictures a second may
 * be sent in segments; fields exist where a frame is not sent at once, the first has the odd line
 * of an odd number. Scan mode and fields that another standard does not have come back with it.
 */
class CPgTvTriggerSettings : public CPgTvTriggerSettingsBase
{
public:
    t_Couplings Rules() const override;

private:
    void SetNegativePolarity();
    void OfferScanModes();
    void OfferFields();
    void UpdateLines();
    void UpdateSyncPulse();
};
