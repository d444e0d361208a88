// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "KWTypes.h"

#include <array>
#include <functional>

// Ne10's own header defines the type as well: include it before this one where both are needed.
#ifndef NE10_TYPES_H
/** One complex FFT bin, laid out as the FFT library delivers it. */
struct ne10_fft_cpx_float32_t
{
    float r; ///< real part
    float i; ///< imaginary part
};
#endif

/**
 * FFT calculations: sizes, window functions and their factors, magnitudes in decibels, display
 * ranges, and what an FFT channel analyses.
 *
 * All functions are pure and callable from any thread; nothing throws, and nothing allocates but
 * reports and the two functions that return a callable. An argument outside its enumeration is
 * reported once as an error (KWErrorReport.h) and answered with the fallback named at the function.
 * The callables own copies of their parameters: they may be copied, outlive the call that made
 * them, and run on any thread, on several at once.
 */
class KW_EXPORT CZELDatabaseHelperFFT
{
public:
    CZELDatabaseHelperFFT() = delete;

    /** Points of the FFT: 8192 for span 0, 65536 for span 1. Any other span: 0, without a report;
        callers treat 0 as invalid. */
    static INT32 GetFFTSize(KW_FFT_FREQUENCY_SPAN span);

    /** Coefficients a0 … a4 of the generalized cosine window. Unknown type: reports "unknown window
        function, cannot get window coefficients", answers the rectangular {1, 0, 0, 0, 0}. */
    static std::array<double, 5> GetWindowCoeff(KW_WINDOW_TYPE type);

    /**
     * The weight of sample k of a window of `length` samples:
     * a0 − a1·cos(x) + a2·cos(2x) − a3·cos(3x) + a4·cos(4x) with x = k · 2π / (length − 1), so the
     * last sample repeats the first. Weights are computed on demand.
     * k ≥ length: the callable reports "invalid parameter - n is too big" and yields 1.0.
     * length < 2: reports "size of window function too small"; the callable yields 1.0 for every k.
     * Unknown type: as GetWindowCoeff.
     */
    static std::function<double(UINT32)> GetWindowFunction(KW_WINDOW_TYPE type, UINT32 length);

    /** Bandwidth of the window in FFT bins. Unknown type: reports "unknown window function, cannot
        get window factor", answers 0.89. */
    static double GetWindowFactor(KW_WINDOW_TYPE type);

    /** The factor f in FFT size ≥ f · sample rate / resolution bandwidth. Unknown type: reports
        "unknown window function, cannot get window factor", answers 7.5. */
    static double GetWindowLengthFactor(KW_WINDOW_TYPE type);

    /**
     * Conversion between a linear RMS magnitude (V or A) and decibels.
     * Forward: 20·log10(x) + offset, rounded once, and −∞ for x ≤ 0. Inverse:
     * 10^((y − offset) / 20), +∞ for +∞ and 0.0 for −∞. NaN stays NaN.
     * The offset refers dBm to 1 mW in `impedance` (ohms, positive): 30 − 10·log10(R) for volts,
     * 30 + 10·log10(R) for amperes, 30 for any other input. It is 0 for every other unit, and the
     * impedance is not used. Nothing is reported.
     */
    static std::function<double(double)> ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT input,
                                                                    KW_FFT_MAGN_UNIT unit,
                                                                    double impedance, bool inverse);

    /** √(r² + i²) in double precision; on the axes the other part as it stands, so with its sign:
        {−3, 0} gives −3. */
    static double Abs(const ne10_fft_cpx_float32_t& sample);

    /**
     * {start, stop, span, center} in Hz that the display should cover.
     * Half the sample rate, bounded into [minimum × 10, bandwidth × 1.3] ([minimum × 100, …] for
     * the logarithmic axis; the lower bound wins) and rounded down to one significant decimal
     * digit, is the stop. Linear: the start is 0. Logarithmic: it is the minimum frequency, and the
     * center is the arithmetic one. A stop that is not positive and finite is not rounded.
     * Any other scaling: reports "unknown x-scaling detected" and answers the logarithmic range
     * with the lower bound minimum × 10.
     */
    static std::array<double, 4> GetFrequencyRange(KW_SCALING_TYPE scaling, double minimumFrequency,
                                                   double sampleRate, double bandwidth);

    /**
     * The quantity that a probe delivers: volts for probe types 0 to 5, amperes for 7 to 12, and
     * for the user's probe (18) what its unit says, 28 volts or 42 amperes. All else is reported
     * with its number and answered with volts: "Unsupported temperature probe type = " (6 and
     * 13 to 17), "Unsupported user probe unit = ", "Unknown probe type = ".
     */
    static KW_FFT_INPUT_UNIT GetInputUnitFromProbeSettingsScope(KW_PROBE_TYPE probe,
                                                                KW_UNIT userUnit);

    /** The analog channel that FFT channel 16 … 19 analyses: 0 … 3. Any other channel: reports
        "invalid fft channel '…' detected" with the number, answers 0. */
    static KW_ZEL_ANALOG_CHANNEL GetAnalogSourceChannel(const KW_ZEL_CHANNEL& fftChannel);

    /** The same as a channel selector. */
    static KW_ZEL_CHANNEL GetSourceChannel(const KW_ZEL_CHANNEL& fftChannel);
};
