// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumBase.h"
#include "Spectrum/SpectrumAxis.h"

#include <functional>

class CPgZEL;

/**
 * The spectrum function: frequency axis, resolution bandwidth and its coupling to the span, window,
 * magnitude axis; it keeps the FFT and the down-converter in step.
 *
 * A client's write runs the steps of its row in the dispatch (OnPropertySet), which settle this
 * group. What follows in other groups, or from them, are dependencies (OnTreeCreated): first what
 * the probe and the source mean, then the down-converter, then the FFT, so that each runs once for
 * a write, on settled numbers. All of it is idempotent.
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
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    std::vector<t_Twins> GetTwins() const override;
    void OnTreeCreated() override;

    /** Brings the instrument into the mode in which spectra are acquired, scope YT. */
    void EnterFunction();
    /** Makes an analog channel the source; reports one that can not be triggered on. */
    void SelectSource(KW_ZEL_CHANNEL channel);
    /** Sets the down-converter up for the axis, in the basic FFT for all frequencies, and switches
        it on where the analysis needs it. */
    void UpdateDownConverter();
    /** Whether the spectrum analysis needs decimated samples for its span. */
    bool NeedsDownConverter() const;
    /** The frequency at a place of the axis, 0 at its left end and 1 at its right end. */
    double FrequencyAt(double place) const;
    /** Gives a line the steps of the screen: a fiftieth of a division where it stands. `level` may
        be null. */
    void UpdateSteps(CDbPropNumDouble& frequency, CDbPropNumDouble* level) const;

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
    using t_Step = void (CPgSpectrum::*)();

    // Frequency axis, in PgSpectrumAxis.cpp.
    CSpectrumAxis AxisRules() const;
    t_SpectrumAxis Axis() const;
    /** Numbers that are `held` keep the wish that the limits hold back; of all others it ends: what
        a start or stop made of the span must not be undone by the center. */
    void SetAxis(const t_SpectrumAxis& axis, std::initializer_list<CDbPropBase*> held = {});
    void OnStart();
    void OnStop();
    void OnSpan();
    void OnCenter();
    void OnScaling();
    /** Repairs an axis whose numbers do not belong together, as from a file that lacks some. */
    void UpdateAxis();
    KW_ACCEPTANCE StepSpan(INT32 steps);
    KW_ACCEPTANCE ShiftAxis(double share);
    void ShowFullSpan();
    void ShowInputBandwidth();
    void ChangeScaling();

    // Resolution bandwidth, FFT and down-converter, in PgSpectrumBandwidth.cpp.
    void OnBandwidth();
    void UpdateBandwidth();
    void UpdateBandwidthOfAnalysis();
    void UpdateBandwidthOfBasicFFT();
    void UpdateWindow();
    void UpdateFFT();

    // Source and magnitude axis, in PgSpectrumMagnitude.cpp.
    void OnSource();
    void UpdateInput();
    void UpdateMagnitudeUnits();
    void UpdateMagnitudeAxis();
    double LevelStep() const;
    void ShowInputRange();

    void RegisterDependencies(CPgZEL& root);
    bool IsAnalysis() const { return m_pMode->Get() == eKW_SPECTRUM_MODE_SPA; }
    /** Traces and averages begin anew. */
    void ResetTraces();
    void UpdateAverageComplete();
};
