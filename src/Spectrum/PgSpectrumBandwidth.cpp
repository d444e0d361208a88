// SPDX-License-Identifier: MIT
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSpectrum.h"
#include "MatConstants.h"
#include "Names/FFT.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"
#include "Spectrum/PgDDC.h"
#include "Spectrum/PgFFT.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/SpectrumHardware.h"
#include "Spectrum/SpectrumRange.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace NNames;
using namespace NSpectrumHardware;

namespace
{
constexpr double kHighestRatio = 1000.0;
constexpr double kLowestRatio = 10.0;

QString ForcedSizeText(const CPgSpectrum::t_FFTNeed& need, double required)
{
    const bool isDecimated = need.isDownConverterOn && need.decimation > 1;
    const QString rate = QLatin1String(isDecimated ? "fs_ddc" : "fs_adc");
    QString text =
        QStringLiteral("force fft size to %1 Sa, but minimum required is %2 Sa (DDC is ")
            .arg(KW_ReportText(kLargestFFTSize), KW_ReportText(KWMath::ToInteger<INT64>(required)));
    text += QLatin1String(isDecimated              ? "on):"
                          : need.isDownConverterOn ? "forced to off):"
                                                   : "off):");
    if (isDecimated)
    {
        text += QStringLiteral(" fs_ddc = ") + KW_ReportText(need.adcRate / need.decimation) +
                QLatin1Char(',');
    }
    text += QStringLiteral(" fs_adc = ") + KW_ReportText(need.adcRate);
    if (isDecimated)
    {
        text += QStringLiteral(", r_ddc = ") + KW_ReportText(need.decimation);
    }
    return text + QStringLiteral(", rbw = ") + KW_ReportText(need.bandwidth) +
           QStringLiteral(", wlf = ") + KW_ReportText(need.windowLengthFactor) +
           QStringLiteral(", fftsize >= wlf * %1 / rbw").arg(rate);
}
} // namespace

double CPgSpectrum::GetRatio(KW_RATIO ratio)
{
    constexpr std::array<double, 7> kRatios{10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1000.0};
    const auto index = static_cast<INT32>(ratio);
    if (index < 0 || index >= static_cast<INT32>(kRatios.size()))
    {
        KW_REPORT_ERROR(QStringLiteral("unknown ratio detected"), __FILE__);
        return kRatios[eKW_RATIO_1_TO_100];
    }
    return kRatios[static_cast<std::size_t>(index)];
}

void CPgSpectrum::UpdateWindow()
{
    const KW_WINDOW_TYPE type = m_pWindowType->Get();
    KW_CHECKED(m_pWindowFactor->DbSet(CZELDatabaseHelperFFT::GetWindowFactor(type)));
    KW_CHECKED(m_pWindowLengthFactor->DbSet(CZELDatabaseHelperFFT::GetWindowLengthFactor(type)));
}

void CPgSpectrum::OnBandwidth()
{
    if (IsAnalysis())
    {
        // A bandwidth of one's own, like a ratio of one's own, ends what is automatic.
        KW_CHECKED(m_pAutoRBW->DbSet(eKW_ONOFF_OFF));
    }
    else
    {
        const bool isWide = CMatConstants::IsGreaterOrEqual(m_pRBW->Get(), m_pRBW->GetMax());
        KW_CHECKED(m_pFFTFrequencySpan->DbSet(isWide ? eKW_FFT_FREQUENCY_SPAN_NARROW
                                                     : eKW_FFT_FREQUENCY_SPAN_MEDIUM));
    }
    UpdateBandwidth();
}

void CPgSpectrum::UpdateBandwidth()
{
    if (IsAnalysis())
    {
        UpdateBandwidthOfAnalysis();
    }
    else
    {
        UpdateBandwidthOfBasicFFT();
    }
}

void CPgSpectrum::UpdateBandwidthOfAnalysis()
{
    const double span = m_pHorizontalSpan->Get();
    const double min = std::max(span / kHighestRatio, kResolutionBandwidthFloor);
    const double max = std::min(span / kLowestRatio, kResolutionBandwidthCeiling);
    if (m_pAutoRBW->Get() == eKW_ONOFF_ON)
    {
        const double rbw = KWMath::Bound(min, span / GetRatio(m_pRBWRatio->Get()), max);
        OpenLimits(*m_pRBW, min, rbw, max);
        KW_CHECKED(m_pRBW->DbSet(KWMath::Bound(m_pRBW->GetMin(), rbw, m_pRBW->GetMax())));
        KW_CHECKED(m_pRBW->SetMinAndMax(min, max));
        return;
    }
    HoldInRange(*m_pRBW, min,
                KWMath::Bound(span / kHighestRatio, m_pRBW->Get(), span / kLowestRatio), max);
}

void CPgSpectrum::UpdateBandwidthOfBasicFFT()
{
    const double min = At(ZEL::FFT / FFT::MinimumRBW)->Get();
    const double max = At(ZEL::FFT / FFT::MaximumRBW)->Get();
    const bool isWide = m_pFFTFrequencySpan->Get() == eKW_FFT_FREQUENCY_SPAN_NARROW;
    HoldInRange(*m_pRBW, min, isWide ? max : min, max);
}

/** Stays on where the analysis of a narrow span has no other samples to work on. */
void CPgSpectrum::KeepDownConverter()
{
    if (At(ZEL::DDC)->GetPrState()->Get() == eKW_ONOFF_OFF)
    {
        UpdateDownConverter();
    }
}

bool CPgSpectrum::IsComputed() const
{
    return At(ZEL::FFT / FFT::State)->Get() == eKW_ONOFF_ON;
}

bool CPgSpectrum::IsSpanNarrow() const
{
    const double span = m_pHorizontalSpan->Get();
    return IsAnalysis() && CZELDatabaseHelperDDC::CalculateDecimation(span).m_R_DDC > 1;
}

void CPgSpectrum::UpdateDownConverter()
{
    CPgDDC* const ddc = At(ZEL::DDC);
    if (IsAnalysis())
    {
        // What is cut out must lie about its arithmetic middle, whatever the axis calls center.
        const double span = m_pHorizontalSpan->Get();
        const double center = AxisRules().IsLogarithmic() ? m_pHorizontalStart->Get() + span / 2.0
                                                          : m_pHorizontalCenter->Get();
        ddc->Init(center, span);
    }
    else
    {
        // Files do not hold what an earlier analysis or a debugging has left there.
        ddc->Init(ddc->GetPrCenter()->GetDefault(), ddc->GetPrSpan()->GetDefault());
    }
    // An idle spectrum leaves the sample rate to the scope.
    ddc->Switch(IsComputed() && IsSpanNarrow());
}

UINT32 CPgSpectrum::GetFFTSize(const t_FFTNeed& need)
{
    const double samples =
        need.windowLengthFactor * (need.adcRate / need.decimation) / need.bandwidth;
    // A size that fits exactly must not be missed by a rounding error.
    const bool isWhole = CMatConstants::AreEqual(samples, KWMath::Round(samples));
    const double required = isWhole ? KWMath::Round(samples) : std::ceil(samples);
    UINT32 size = kSmallestFFTSize;
    while (size < required && size < kLargestFFTSize)
    {
        size *= 2;
    }
    if (size < required)
    {
        KW_REPORT_ERROR(ForcedSizeText(need, required), __FILE__);
    }
    return size;
}

void CPgSpectrum::UpdateFFT()
{
    const CPgDDC* const ddc = At(ZEL::DDC);
    // Idle, the numbers are those of the spectrum that would be computed.
    const bool isAwaited = !IsComputed() && IsSpanNarrow();
    const bool isOn = isAwaited || (IsAnalysis() && ddc->GetPrState()->Get() == eKW_ONOFF_ON);
    const UINT32 decimation = isOn ? ddc->GetPrSampleDezimationFactor()->Get() : 1;
    const double adcRate =
        isAwaited ? kDownConverterSampleRate : At(ZEL::Horizontal / Horizontal::SampleRate)->Get();
    if (decimation > 1 && !CMatConstants::AreEqual(adcRate, kDownConverterSampleRate))
    {
        KW_REPORT_ERROR(QStringLiteral("when DDC is used, adc sample rate must be %1 Hz and not %2")
                            .arg(KW_ReportText(kDownConverterSampleRate), KW_ReportText(adcRate)),
                        __FILE__);
    }
    const UINT32 size =
        IsAnalysis()
            ? GetFFTSize({adcRate, decimation, isOn, m_pRBW->Get(), m_pWindowLengthFactor->Get()})
            : static_cast<UINT32>(CZELDatabaseHelperFFT::GetFFTSize(m_pFFTFrequencySpan->Get()));
    CPgFFT* const fft = At(ZEL::FFT);
    fft->Configure(size, adcRate / decimation, decimation > 1);
    KW_CHECKED(m_pFFTSampleFrequency->DbSet(fft->GetPrSampleFrequency()->Get()));
}
