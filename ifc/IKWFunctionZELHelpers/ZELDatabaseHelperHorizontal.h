// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsLogger.h"
#include "KWTypes.h"

/**
 * Timebase calculations: from acquisition time, sample-rate mode, acquisition mode, history depth,
 * record-length selection, reference point, position and zoom to sample rates, decimation factors,
 * record lengths, interpolation, pre-trigger samples and screen boundaries.
 *
 * Times are in seconds, rates in samples per second, lengths in samples. All functions are pure
 * and callable from any thread; nothing allocates unless a report is made, and nothing throws.
 * An illegal argument is reported once as an error (KWErrorReport.h) and answered with the fallback
 * named at the function.
 *
 * "Truncated" means toward zero, and where the result type can not hold the number: its nearest
 * limit, so 0 for negative numbers and for NaN. "Rounded" means halves away from zero. "Equal" and
 * "greater" in quotes are the library's tolerant comparisons (four double epsilons, relative;
 * infinities and NaN equal nothing); all other comparisons are plain.
 */
class KW_EXPORT CZELDatabaseHelperHorizontal
{
public:
    CZELDatabaseHelperHorizontal() = delete;

    /** Sample rate of the A/D converters: 1.25e9, 2.5e9 or 5e9 for modes 0, 1, 2. Any other mode:
        reports "illegal ZEL mode: " and the number, answers 0.0. */
    static double GetSampleRate(KW_ZEL_MODE mode);

    /** The decimation referred to the highest rate of 5e9: 4, 2 or 1 times `decimation` for modes
        0, 1, 2. Any other mode: reports "Illegal ZEL mode: " and the number, answers `decimation`.
     */
    static UINT64 CalculateDecimationFactorEffective(KW_ZEL_MODE mode, UINT32 decimation);

    /** Traces that the history holds: 100, 1000 or 5000 for depths 0, 1, 2. Any other depth:
        reports "Invalid history depth: " and the number, answers 1. */
    static unsigned int GetNumberOfHistoryTraces(KW_ZEL_HISTORY_DEPTH depth);

    /**
     * Sample budget: the most points that one record may have after decimation.
     * 125000, 250000 or 500000 points for a rate "equal" to 1.25e9, 2.5e9 or 5e9; halved when the
     * acquisition mode is not 0, as two values are then stored per point; divided by 1, 10 or 50
     * for history depths 0, 1, 2, as the traces share the memory of 100; at most 12500 or 1250
     * points for record-length selections 1 and 2. Divisions truncate.
     * Any other rate: reports "Illegal sample rate of … . Setting max. number of samples after
     * decimation to 125000" and goes on with 125000 points. An illegal depth is reported by
     * GetNumberOfHistoryTraces and counts as one trace.
     */
    static unsigned int GetMaxNumOfSamplesAfterDecimation(double sampleRate,
                                                          KW_ZEL_ACQUISITION_MODE acquisitionMode,
                                                          KW_ZEL_HISTORY_DEPTH historyDepth,
                                                          KW_ZEL_RECORD_LENGTH recordLength);

    /**
     * ⌊rounded(samples) / maxPoints⌋, a whole number of at least 1, for `samples` > `maxPoints`;
     * else 1.0. Because the quotient is cut, the decimated record is never shorter than maxPoints
     * and may be nearly twice as long. NaN and −∞ give 1.0, +∞ gives +∞.
     * maxPoints 0 with a positive sample count: reports "MaxNumOfSamplesAfterDecimation is zero.
     * Decimation factor is set to 1", answers 1.0.
     */
    static double CalculateDecimationFactor(double samples, UINT32 maxPoints);

    /** The factor truncated; a factor above 2e9, the converter's highest, gives 2000000000 and sets
        `limited`, which is cleared otherwise. */
    static unsigned int LimitDecimationFactor(double factor, bool& limited);

    /**
     * Decimation of an acquisition and its record length time × rate / decimation (not rounded).
     * The sample budget is enlarged until the decimation fits under 2e9. It is a 32-bit number
     * whose product wraps; for times that no budget can serve (some 54 years at 5e9) it ends at 0,
     * which is reported as by CalculateDecimationFactor and gives decimation 1.
     * @return the decimation, as written to `decimation`
     */
    static unsigned int CalculateDecimationFactorAndRecordLength(
        double acquisitionTime, double sampleRate, KW_ZEL_ACQUISITION_MODE acquisitionMode,
        KW_ZEL_HISTORY_DEPTH historyDepth, KW_ZEL_RECORD_LENGTH recordLengthSelection,
        unsigned int& decimation, double& recordLength);

    /** The same for analog and digital channels in slow and roll mode, where both share one budget:
        the smaller of the analog one and the digital one, whose acquisition mode is always 0. */
    static void CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
        double acquisitionTime, double analogSampleRate, double digitalSampleRate,
        KW_ZEL_ACQUISITION_MODE acquisitionMode, KW_ZEL_HISTORY_DEPTH historyDepth,
        KW_ZEL_RECORD_LENGTH recordLengthSelection, unsigned int& analogDecimation,
        unsigned int& digitalDecimation, double& analogRecordLength, double& digitalRecordLength);

    /** The sample count truncated, except that counts within 2^−23 of 12.5 give 13 and counts
        within 2^−23 of 62.5 give 63. */
    static unsigned int AdjustRecordLength(double samples);

    /** requiredPoints / recordLength for a record shorter than required, else 1.0. A record of 0
        gives +∞. */
    static double CalculateInterpolationFactor(double recordLength, double requiredPoints);

    /**
     * What follows from the length of a record before interpolation.
     * @param samples             the record before interpolation; 0 gives no finite results
     * @param selector            1 asks for interpolation by hardware in any case
     * @param acquisitionTime     s
     * @param requiredPoints      points that the display needs
     * @param recordLength        `samples` by AdjustRecordLength
     * @param traceLength         samples × interpolation factor, truncated
     * @param interpolationFactor by CalculateInterpolationFactor
     * @param hardwareInterpolation the factor is "greater" than 1, or the selector is 1
     * @param resolution          seconds per displayed point
     */
    static void CalculateDependentHorizontalSettings(
        double samples, unsigned int selector, double acquisitionTime, double requiredPoints,
        unsigned int& recordLength, unsigned int& traceLength, double& interpolationFactor,
        bool& hardwareInterpolation, double& resolution);

    /** The left boundary (s, relative to the trigger) in sample intervals, positive when the screen
        starts before the trigger: −(left × length) / time, not rounded. 0.0 for a time "equal" 0.
     */
    static double CalculateNbPreTriggerSamples(double acquisitionTime, unsigned int recordLength,
                                               double leftBoundary);

    /**
     * Screen boundaries in seconds relative to the trigger: left = position − offset and
     * right = time + left. The offset from the left edge to the reference point is
     * percent × time / 100, moved to the nearest whole sample interval (halves upward) when the
     * resolution is not 0; it is 0 when half the resolution exceeds its magnitude by more than
     * 2^−52 s. The sign of the resolution does not matter.
     */
    static void CalculateHorizontalBoundaries(double acquisitionTime,
                                              unsigned short referencePointPercent, double position,
                                              double resolution, double& left, double& right);

    /** Boundaries of a zoom window: left = centre − width / 2 and right = width + left. */
    static void CalculateHorizontalBoundariesZoom(double width, double centre, double& left,
                                                  double& right);

    /** left + width. The spelling of the name is part of the interface. */
    static double GetRightHorizontalBoudary(const double& left, const double& width);

    /**
     * Points in the zoom window: rounded(length / zoomFactor), at least `minimumPoints`, truncated;
     * and the interpolation zoomFactor / (length / points) × interpolationFactor that they need.
     * @return false when the points "equal" 0: reports "Liz is zero" and gives 0 points, factor 1.0
     */
    static bool CalculateZoomParameter(unsigned int recordLength, double zoomFactor,
                                       double interpolationFactor, unsigned int minimumPoints,
                                       unsigned int& points, double& zoomInterpolationFactor);
};
