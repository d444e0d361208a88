// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSpectrum.h"
#include "Spectrum/PgSpectrumBase.h"
#include "Spectrum/SpectrumScreen.h"

#include <functional>

enum KW_RATIO : INT32;
enum KW_SCALING_TYPE : INT32;
enum KW_UNIT : INT32;
enum KW_ZEL_CHANNEL : INT32;

namespace NNames
{
struct Channel;
struct ZEL;
} // namespace NNames

/**
 * The spectrum function: frequency axis, resolution bandwidth and its coupling to the span, window,
 * magnitude axis; it keeps the FFT and the down-converter in step.
 *
 * Answers: a write is taken as it is asked for (0), or something of it could not be kept (1): a
 * center of the logarithmic axis whose surroundings were cut off, a resolution bandwidth that the
 * basic FFT does not have, center and span while the basic FFT runs.
 *
 * Formulas: CSpectrumAxis, CZELDatabaseHelperFFT, CZELDatabaseHelperDDC. Figures:
 * SpectrumHardware.h.
 */
class CPgSpectrum : public CPgSpectrumBase
{
public:
    t_Couplings Rules() const override;

    /** Span divided by resolution bandwidth. Any other value: reports "unknown ratio detected",
        answers 100. */
    static double GetRatio(KW_RATIO ratio);

    struct t_FFTNeed
    {
        double adcRate;            ///< Sa/s
        UINT32 decimation;         ///< by the down-converter, 1 without
        bool isDownConverterOn;    ///< switched on, decimating or not
        double bandwidth;          ///< Hz
        double windowLengthFactor; ///< see CZELDatabaseHelperFFT::GetWindowLengthFactor
    };
    /** The smallest FFT with length factor × rate / bandwidth samples or more. Where even the
        largest has less, it is taken and the fact reported, with all the numbers. */
    static UINT32 GetFFTSize(const t_FFTNeed& need);

    struct t_MagnitudeAxis
    {
        KW_SCALING_TYPE scaling;
        double refPoint; ///< height of the reference level, percent
        double refLevel; ///< dB
    };
    struct t_MagnitudeRange
    {
        double start;
        double stop;
    };
    /**
     * The ends of the magnitude axis, not yet bounded. Logarithmic: 80 dB, the reference level at
     * its height. Linear: from 0 V or A, with the reference level, taken back to volts or amperes
     * with `toLinear`, at its height; infinite when that is 0. Any other scaling: reports "invalid
     * vertical scale detected: vscale = " and its number, answers the logarithmic axis.
     */
    static t_MagnitudeRange GetMagnitudeRange(const t_MagnitudeAxis& axis,
                                              const std::function<double(double)>& toLinear);

private:
    // Frequency axis, in PgSpectrumAxis.cpp.
    CSpectrumAxis AxisRules() const;
    /** As it stands, consistent or not. */
    t_SpectrumAxis Axis() const;
    /** Numbers that are `held` keep the wish that the limits hold back; of all others it ends: what
        a start or stop made of the span must not be undone by the center. */
    void SetAxis(const t_SpectrumAxis& axis, std::initializer_list<CDbPropBase*> held = {});
    CSpectrumScreen Screen() const;
    /** The moved number leads; the others of the axis follow by CSpectrumAxis. */
    void OnStart();
    void OnStop();
    void OnSpan();
    /** On a linear axis the wish for a span counts, which may be wider than what fits now. */
    void OnCenter();
    void OnScaling();
    /** Repairs an axis whose numbers do not belong together, as from a file that lacks some. */
    void UpdateAxis();
    /** Along the 1-2-5 ladder, as a client's write: what follows the span, follows. */
    KW_ACCEPTANCE StepSpan(INT32 steps);
    KW_ACCEPTANCE WidenSpan();
    KW_ACCEPTANCE NarrowSpan();
    /** By a share of the span; eKW_ACC_WARNING at the end of the range. */
    KW_ACCEPTANCE ShiftAxis(double share);
    KW_ACCEPTANCE ShiftLeft();
    KW_ACCEPTANCE ShiftRight();
    /** Each writes start and stop for good: no wish comes back later on. */
    void ShowFullSpan();
    /** As far as the filter of the input lets signals through. */
    void ShowInputBandwidth();
    void ChangeScaling();

    // Resolution bandwidth, FFT and down-converter, in PgSpectrumBandwidth.cpp.
    /** Ends what is automatic; in the basic FFT it chooses between the two sizes there are. */
    void OnBandwidth();
    void UpdateBandwidth();
    /** Within the span by the ratios that are allowed; coupled, it follows the span by the selected
        ratio. */
    void UpdateBandwidthOfAnalysis();
    /** The wider or the narrower of the two that FFT states. */
    void UpdateBandwidthOfBasicFFT();
    void UpdateWindow();
    /** Sets the down-converter up for the axis, in the basic FFT for all frequencies, and switches
        it on where the analysis needs it. */
    void UpdateDownConverter();
    void KeepDownConverter();
    /** Whether spectra are computed now. */
    bool IsComputed() const;
    /** Whether the spectrum analysis needs decimated samples for its span. */
    bool IsSpanNarrow() const;
    /** Size and rate; reports a converter rate that the down-converter can not use. */
    void UpdateFFT();

    // Source and magnitude axis, in PgSpectrumMagnitude.cpp.
    /** Those that are on; the FFT and the down-converter name the same channel in their own ways.
     */
    void OfferSources();
    /** Makes an analog channel the source; reports one that can not be triggered on. */
    void SelectSource(KW_ZEL_CHANNEL channel);
    /** Clients may choose the source in any of three groups: the other two follow. */
    void FollowSourceOfFFT();
    void FollowSourceOfDownConverter();
    /** Only reports: what the source means is settled once, at the end (UpdateInput). */
    void OnSource();
    /** The channel that is the source. */
    NNames::t_Way<NNames::ZEL, NNames::Channel> Input() const;
    /** Sources of FFT and down-converter, and the quantity that the probe measures. A file may name
        a channel that no input has: then nothing. */
    void UpdateInput();
    /** Of an amplitude as far as it fits the quantity, else of the other one; the user's returns.
     */
    void UpdateMagnitudeUnits();
    /** In decibels, as the reference level and the threshold of the markers. */
    KW_UNIT LevelUnit() const;
    /** Of the axis, and of what stands on it. */
    KW_UNIT AxisUnit() const;
    /** Levels that were set stay the same ones in the unit that was selected: the properties still
        have the former one. Those of another quantity keep their numbers. */
    void ConvertLevels();
    void ConvertLevel(CDbPropNumDouble& level, KW_UNIT to);
    /** Units first, as the ends are converted into them. */
    void UpdateMagnitudeAxis();
    /** Full scale of a sine, rounded up to a division, at the top of the screen. */
    void ShowInputRange();

    /** Center and span have no effect there: eKW_ACC_WARNING. */
    KW_ACCEPTANCE ReportAxisOfBasicFFT();
    /** Cursors and markers follow the screen. */
    void UpdateLines();
    /** Brings the instrument into the mode in which spectra are acquired, scope YT. */
    void EnterFunction();
    bool IsAnalysis() const { return m_pMode->Get() == eKW_SPECTRUM_MODE_SPA; }
    /** Traces and averages begin anew. */
    void ResetTraces();
    /** With what was read of them; markers alone where the traces stay. */
    void DropSpectra();
    void DropMarkers();
    void DropOfProbe(const CDbPropBase* probe);
    /** As many as the average is to have, or more. */
    void UpdateAverageComplete();
};
