// SPDX-License-Identifier: MIT
#include "SpectrumTree.h"

#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"

#include <cmath>

namespace
{
bool IsInside(const std::shared_ptr<IKWNumericProperty<double>>& p)
{
    return p->GetMin() <= p->Get() && p->Get() <= p->GetMax();
}

void CheckAxis(const IKWFunctionSpectrum& s, CFindings& f)
{
    const double start = s.GetPrHorizontalStart()->Get();
    const double stop = s.GetPrHorizontalStop()->Get();
    const double span = s.GetPrHorizontalSpan()->Get();
    const double center = s.GetPrHorizontalCenter()->Get();
    const bool isLog = s.GetPrHorizontalScaling()->GetAsInt() == 1;
    const double middle = isLog ? std::sqrt(start * stop) : start + (stop - start) / 2.0;
    f.Check(std::fabs(stop - start - span) <= 1e-12 * stop, "span is the width of the axis");
    f.Check(std::fabs(middle - center) <= 1e-12 * stop, "center is the middle of the axis");
    f.Check(start >= (isLog ? 100.0 : 0.0) && stop <= 6.25e8, "axis lies in the range");
    f.Check(span >= 825.0, "span is not too narrow");
    f.Check(!isLog || stop >= 10.0 * start * (1.0 - 1e-12), "a decade at least");
    f.Check(IsInside(s.GetPrHorizontalStart()) && IsInside(s.GetPrHorizontalStop()) &&
                IsInside(s.GetPrHorizontalSpan()) && IsInside(s.GetPrHorizontalCenter()),
            "axis is inside its limits");
    const double room = isLog ? center * std::min(center / 100.0, 6.25e8 / center) -
                                    center / std::min(center / 100.0, 6.25e8 / center)
                              : 2.0 * std::min(center, 6.25e8 - center);
    f.Check(std::fabs(s.GetPrHorizontalSpan()->GetMax() - std::max(room, span)) <= 1e-6 * span,
            "limit of the span follows the center");
}

void CheckBandwidth(const t_SpectrumTree& t, CFindings& f)
{
    const double rbw = t.s->GetPrRBW()->Get();
    const double span = t.s->GetPrHorizontalSpan()->Get();
    f.Check(IsInside(t.s->GetPrRBW()), "RBW is inside its limits");
    if (t.s->GetPrMode()->GetAsInt() == 1)
    {
        f.Check(rbw >= span / 1000.0 * (1.0 - 1e-15) && rbw <= span / 10.0 * (1.0 + 1e-15),
                "RBW is 1/1000 to 1/10 of the span");
        const double ratios[] = {10, 20, 50, 100, 200, 500, 1000};
        f.Check(t.s->GetPrAutoRBW()->GetAsInt() == 0 ||
                    std::fabs(rbw * ratios[t.s->GetPrRBWRatio()->GetAsInt()] - span) <=
                        1e-12 * span,
                "automatic RBW has its ratio to the span");
        return;
    }
    const double samples = t.fft->GetPrFFTSize()->Get();
    const double factor = t.s->GetPrWindowLengthFactor()->Get();
    f.Check(std::fabs(rbw * samples - factor * t.s->GetPrFFTSampleFrequency()->Get()) <=
                1e-12 * rbw * samples,
            "RBW of the basic FFT is that of its size");
    f.Check(t.s->GetPrRBW()->GetMin() == t.fft->GetPrMinimumRBW()->Get() &&
                t.s->GetPrRBW()->GetMax() == t.fft->GetPrMaximumRBW()->Get(),
            "RBW limits are those of the FFT");
}

void CheckSamples(const t_SpectrumTree& t, CFindings& f)
{
    const double fs = t.fft->GetPrSampleFrequency()->Get();
    const double size = t.fft->GetPrFFTSize()->Get();
    const bool isAnalysis = t.s->GetPrMode()->GetAsInt() == 1;
    // An idle spectrum has the numbers that it would run with, and the scope its rate.
    const bool isIdle = isAnalysis && t.fft->GetPrState()->GetAsInt() == 0;
    const bool isAwaited = isIdle && t.ddc->GetPrSampleDezimationFactor()->Get() > 1;
    const bool isOn = isAwaited || (isAnalysis && t.ddc->GetPrState()->GetAsInt() == 1);
    const double decimation = isOn ? t.ddc->GetPrSampleDezimationFactor()->Get() : 1.0;
    const double adc = isAwaited ? 1.25e9 : t.root->GetPgHorizontal()->GetPrSampleRate()->Get();
    f.Check(!isAnalysis || isOn || t.s->GetPrHorizontalSpan()->Get() > 39.495e6,
            "narrow spans are down-converted");
    f.Check(decimation == 1.0 || adc == 1.25e9, "down-converter has its sample rate");
    f.Check(std::fabs(fs * decimation - adc) <= 1e-6, "rate of the FFT is the decimated one");
    f.Check(t.s->GetPrFFTSampleFrequency()->Get() == fs, "rate is published");
    const double need = t.s->GetPrWindowLengthFactor()->Get() * fs / t.s->GetPrRBW()->Get();
    f.Check(size >= need * (1.0 - 1e-12) || size == 65536.0, "FFT is large enough");
    f.Check(!isAnalysis || size == 128.0 || size / 2.0 < need * (1.0 + 1e-12),
            "FFT is no larger than it must be");
    f.Check(std::fabs(t.fft->GetPrFrequencyResolution()->Get() * size - fs) <= 1e-9 * fs &&
                std::fabs(t.fft->GetPrRecordTime()->Get() * fs - size) <= 1e-9 * size,
            "resolution and record time follow size and rate");
    f.Check(
        t.ddc->GetPrGainCorrection()->Get() ==
            (t.ddc->GetPrState()->GetAsInt() == 1 && t.ddc->GetPrSampleDezimationFactor()->Get() > 1
                 ? 2.0
                 : 1.0),
        "gain is corrected while mixing");
}

/** The settings of the down-converter are those that the helpers have for the axis. */
void CheckConverter(const t_SpectrumTree& t, CFindings& f)
{
    const auto rate = CZELDatabaseHelperDDC::CalculateDecimation(t.ddc->GetPrSpan()->Get());
    const auto nco =
        CZELDatabaseHelperDDC::CalculateNcoFrequency(t.ddc->GetPrCenter()->Get(), rate.m_R_DDC);
    f.Check(t.ddc->GetPrSpan()->Get() == t.s->GetPrHorizontalSpan()->Get() &&
                t.ddc->GetPrState()->GetAsInt() ==
                    (rate.m_R_DDC > 1 ? t.fft->GetPrState()->GetAsInt() : 0),
            "down-converter has the span");
    f.Check(
        t.ddc->GetPrSampleDezimationFactor()->Get() == rate.m_R_DDC &&
            t.ddc->GetPrFrequencyShift()->Get() == nco.m_CoarseFrequency + nco.m_FineFrequency &&
            t.ddc->GetPrGain()->Get() == CZELDatabaseHelperDDC::CalculateGain(rate, nco).m_Gain_DDC,
        "down-converter has the figures of its span");
}
} // namespace

std::string SpectrumViolations(const t_SpectrumTree& t)
{
    CFindings f;
    CheckAxis(*t.s, f);
    CheckBandwidth(t, f);
    CheckSamples(t, f);
    if (t.s->GetPrMode()->GetAsInt() == 1)
    {
        CheckConverter(t, f);
    }
    f.Check(t.fft->GetPrWindowType()->Get() == t.s->GetPrWindowType()->Get(), "one window");
    const INT32 source = t.s->GetPrSource()->GetAsInt();
    f.Check(t.fft->GetPrSource()->GetAsInt() == 16 + source &&
                t.ddc->GetPrSource()->GetAsInt() == source,
            "one source");
    const INT32 unit = t.s->GetPrMagnitudeUnit()->GetAsInt();
    f.Check(unit == 0 || unit == 1 + t.s->GetPrInputUnit()->GetAsInt(),
            "unit of an amplitude fits the quantity");
    return f.Text();
}
