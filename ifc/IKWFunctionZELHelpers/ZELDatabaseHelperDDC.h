// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** Records of the digital down-converter: an oscillator (NCO) mixes the signal down, a fixed stage,
    a cascaded integrator-comb stage (CIC1) and a FIR stage decimate it. */
namespace DDC
{
/** Decimation of each stage. {1, 1, 1, 1, −1} means that nothing is decimated. */
struct DecimationRate
{
    UINT32 m_R_DDC;  ///< total: fixed stage × CIC1 × FIR
    UINT8 m_R_Fixed; ///< fixed first stage; 5 whenever the chain decimates
    UINT16 m_R_CIC1; ///< 1 bypasses the stage
    UINT8 R_FIR;     ///< last stage
    INT8 m_LUTRow;   ///< row of the decimation table, −1 when computed or not decimated

    /** Equal in every field. */
    bool operator==(const DecimationRate&) const = default;
};

/** Settings of the two oscillators. Increments are fractions of a full turn per clock. */
struct NcoFrequency
{
    double m_CoarseFrequency; ///< Hz, a multiple of 4882812.5
    double m_CoarseIncrement; ///< a multiple of 1/256; negative or above 1 for such centers
    double m_FineFrequency;   ///< Hz, a multiple of 2.5e8 / 2^32
    double m_FineIncrement;   ///< PINC2: a multiple of 1/2^32 in [0, 1)

    /** Equal in every field. */
    bool operator==(const NcoFrequency&) const = default;
};

/** Gain of the chain: the total and its four factors. */
struct Gain
{
    double m_Gain_DDC;   ///< product of the other four
    double m_Gain_Scale; ///< scaling at the input
    double m_Gain_Shift; ///< fixed shift
    double m_Gain_CIC1;  ///< CIC1 stage with its own shift
    double m_Gain_FIR;   ///< FIR stage

    /** Equal in every field. */
    bool operator==(const Gain&) const = default;
};

/** Register values. */
struct HWSettings
{
    UINT32 m_CIC1Rate;    ///< CIC1 rate − 1
    UINT32 m_CIC1Shift;   ///< bits by which the hardware shifts the CIC1 result
    UINT32 m_CoarsePhase; ///< phase increment of the coarse oscillator, in 1/256 turn
    UINT32 m_FinePhase;   ///< phase increment of the fine oscillator, in 1/2^32 turn

    /** Equal in every field. */
    bool operator==(const HWSettings&) const = default;
};
} // namespace DDC

/**
 * Calculations for the digital down-converter of narrow spans. Usual order: decimation from the
 * span, oscillators from the center and the total decimation, then frequency shift, gain and
 * register values from these two records.
 *
 * Frequencies are in hertz. All functions are pure and callable from any thread; nothing allocates
 * unless a report is made, and nothing throws. Failures are reported once as an error
 * (KWErrorReport.h) and answered with a neutral value. Spans are compared tolerantly (four double
 * epsilons, relative), so a span one representable double beside a limit counts as the limit; a
 * NaN span is out of every range.
 */
class KW_EXPORT CZELDatabaseHelperDDC
{
public:
    CZELDatabaseHelperDDC() = delete;

    /** Computed for spans up to 1473210 Hz, from the table up to 39495000 Hz; {1, 1, 1, 1, −1}
        above, without a report, as wide spans need no decimation. */
    static DDC::DecimationRate CalculateDecimation(double span);

    /** Decimation from the table. Span outside 1473210 … 39495000 Hz: reports "Span is out of
        range, index= -1, no entry in LUT.", answers {1, 1, 1, 1, −1}. */
    static DDC::DecimationRate CalculateDecimationWithLUT(double span);

    /** 5 × CIC1 × 16 with CIC1 by SearchDecimationRateCic1(8.25e8 / span). Span above 1473210 Hz:
        reports "Can not compute decimation for this span."; below 825 Hz: "Span is too small, can
        not proceed."; both answer {1, 1, 1, 1, −1}. */
    static DDC::DecimationRate CalculateDecimationManually(double span);

    /** Row 0 … 9 of the smallest threshold of the table that is not below the span; −1 for spans
        outside the table, without a report. */
    static INT32 SearchRowIndexInLUT(double span);

    /** ⌊rateRatio / 80⌋, at most 12500; 0 for ratios below 80 and NaN. */
    static UINT16 SearchDecimationRateCic1(double rateRatio);

    /**
     * Oscillators that mix `centerFrequency` to zero. The coarse one takes the nearest multiple of
     * 4882812.5 Hz (halves away from zero); from a total decimation of 120 on the fine one takes
     * the nearest multiple of 2.5e8 / 2^32 Hz to what remains. All 0 for a decimation of 1.
     * A fine increment of half a turn or more, or none that is a number (centers that are not
     * finite, or so large that nothing remains exact): reports "DDC value for PINC2 exceeds range."
     * and is set to 0; the fine frequency keeps its value.
     */
    static DDC::NcoFrequency CalculateNcoFrequency(double centerFrequency, UINT32 totalDecimation);

    /** The frequency that is really mixed to zero: coarse + fine. */
    static double CalculateFrequencyShift(const DDC::NcoFrequency& nco);

    /**
     * All factors 1.0 up to a total decimation of 19; else 125000, 0.0625,
     * R1^6 · 2^⌊−6·log2(R1)⌋ · 8 for a CIC1 rate of R1, and the FIR stage's gain. Unknown FIR rate:
     * reports "unknown R_FIR = … detected" and takes the gain of rate 16.
     * `nco` has no influence.
     */
    static DDC::Gain CalculateGain(const DDC::DecimationRate& rate, const DDC::NcoFrequency& nco);

    /** Register values. The CIC1 shift is ⌊82 − 6·log2(CIC1 rate)⌋, at least 0. Phase words are the
        increments rounded to the word's unit and wrapped into its width, so negative centers and
        centers above the clock give the phase that they are an alias of; 0 for increments that are
        not finite. */
    static DDC::HWSettings CalculateHWSettingsDDC(const DDC::DecimationRate& rate,
                                                  const DDC::NcoFrequency& nco);
};
