// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgFFTBase.h"

/** The transform. The spectrum sets its size and rate; its limits of the resolution bandwidth are
    those of the two sizes of the basic FFT at the full sample rate. */
class CPgFFT : public CPgFFTBase
{
public:
    t_Couplings Rules() const override;

    /** Samples per spectrum, their rate in Hz, and whether they come from the down-converter. */
    void Configure(UINT32 size, double sampleRate, bool isDownConverted);
    /** The average begins anew. */
    void ResetAverage();

private:
    void UpdateBandwidthLimits();
    void RoundAverageLength();
};
