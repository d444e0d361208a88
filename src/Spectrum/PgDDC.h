// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgDDCBase.h"

/**
 * The down-converter. The spectrum analysis sets it with Init and Switch. What a client changes
 * here directly, for debugging, holds until the spectrum's axis or mode changes again or the
 * converter is switched off.
 *
 * Formulas: CZELDatabaseHelperDDC.
 */
class CPgDDC : public CPgDDCBase
{
public:
    t_Couplings Rules() const override;

    /** Settings for a frequency range in Hz, bounded into the limits of Center and Span: writes
        Span, Center, SampleDezimationFactor, FrequencyShift and Gain, in this order. */
    void Init(double center, double span);
    /** Makes the FFT use the converter, or not; off, it neither shifts nor amplifies. */
    void Switch(bool on);
    /** FrequencyShift and Gain back to their defaults. */
    void Reset();

private:
    /** Switched on by a client. What switching off means is the spectrum's to say: its analysis
        may need the converter. */
    void OnState();
    void OnCenterOrSpan();
    /** A real signal has half of its power at negative frequencies, which mixing and decimation
        take away: the factor is 2 while both happen, else 1. */
    void UpdateGainCorrection();
};
