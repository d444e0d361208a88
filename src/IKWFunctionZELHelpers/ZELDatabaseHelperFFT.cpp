// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"

#include "ErrorReport.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "KWMath.h"

#include <cmath>
#include <limits>

namespace
{
constexpr char kFFTSource[] = "src/IKWFunctionZELHelperFFT";
constexpr double kTwoPi = 6.283185307179586;
constexpr double kDecibelFactor = 20.0;

struct t_Window
{
    std::array<double, 5> coefficients;
    double factor;
    double lengthFactor;
};

constexpr t_Window kWindows[] = {
    {{1.0, 0.0, 0.0, 0.0, 0.0}, 0.89, 7.5},
    // Wanted: the length factor equals the bandwidth factor, where the other windows keep a
    // reserve.
    {{0.209671, 0.407331, 0.281225, 0.092669, 0.009104}, 3.84, 3.84},
    {{0.54, 0.46, 0.0, 0.0, 0.0}, 1.3, 7.66},
    {{0.5, 0.5, 0.0, 0.0, 0.0}, 1.44, 7.64},
    {{0.42, 0.5, 0.08, 0.0, 0.0}, 1.65, 7.45},
};
static_assert(std::size(kWindows) == eKW_WINDOW_TYPE_BLACKMAN + 1);
constexpr const t_Window& kRectangular = kWindows[eKW_WINDOW_TYPE_RECT];

/** Null for an unknown type. */
const t_Window* FindWindow(KW_WINDOW_TYPE type)
{
    const bool known = type >= eKW_WINDOW_TYPE_RECT && type <= eKW_WINDOW_TYPE_BLACKMAN;
    return known ? &kWindows[type] : nullptr;
}

class CWindowFunction
{
public:
    CWindowFunction(const std::array<double, 5>& coefficients, UINT32 length)
        : m_coefficients(coefficients), m_step(kTwoPi / (length - 1)), m_length(length)
    {
        while (m_terms > 1 && m_coefficients[m_terms - 1] == 0.0)
            --m_terms;
    }

    double operator()(UINT32 index) const
    {
        if (index >= m_length)
        {
            KW_REPORT_ERROR(QStringLiteral("invalid parameter - n is too big"), kFFTSource);
            return 1.0;
        }
        const double x = index * m_step;
        double weight = m_coefficients[0];
        double sign = -1.0;
        for (UINT32 term = 1; term < m_terms; ++term, sign = -sign)
            weight += sign * (m_coefficients[term] * std::cos(term * x));
        return weight;
    }

private:
    std::array<double, 5> m_coefficients;
    double m_step;
    UINT32 m_length;
    UINT32 m_terms = 5; ///< terms up to the last coefficient that is not 0: a cosine saved each
};

double MagnitudeToDecibel(double magnitude, double offset)
{
    if (magnitude <= 0.0)
        return -std::numeric_limits<double>::infinity();
    return std::fma(std::log10(magnitude), kDecibelFactor, offset);
}

double DecibelToMagnitude(double decibel, double offset)
{
    if (std::isinf(decibel))
        return decibel > 0.0 ? decibel : 0.0;
    return std::pow(10.0, (decibel - offset) / kDecibelFactor);
}

double DecibelOffset(KW_FFT_INPUT_UNIT input, KW_FFT_MAGN_UNIT unit, double impedance)
{
    if (unit != eKW_FFT_MAGN_UNIT_DBM)
        return 0.0;
    switch (input)
    {
    case eKW_FFT_INPUT_UNIT_VOLTAGE:
        return 30.0 - 10.0 * std::log10(impedance);
    case eKW_FFT_INPUT_UNIT_CURRENT:
        return 30.0 + 10.0 * std::log10(impedance);
    }
    return 30.0;
}

double StopFrequency(double lower, double value, double upper)
{
    const double stop = KWMath::Bound(lower, value, upper);
    if (!(stop > 0.0))
        return stop;
    return KWMath::FloorToDecimalExponent(stop, KWMath::DecimalExponent(stop));
}

bool IsFftChannel(KW_ZEL_CHANNEL channel)
{
    return channel >= eKW_ZEL_CHANNEL_FFT1 && channel <= eKW_ZEL_CHANNEL_FFT4;
}

QString InvalidChannelText(KW_ZEL_CHANNEL channel)
{
    return QStringLiteral("invalid fft channel '%1' detected").arg(KW_ReportText(channel));
}
} // namespace

INT32 CZELDatabaseHelperFFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN span)
{
    switch (span)
    {
    case eKW_FFT_FREQUENCY_SPAN_NARROW:
        return 8192;
    case eKW_FFT_FREQUENCY_SPAN_MEDIUM:
        return 65536;
    }
    return 0;
}

std::array<double, 5> CZELDatabaseHelperFFT::GetWindowCoeff(KW_WINDOW_TYPE type)
{
    if (const t_Window* window = FindWindow(type))
        return window->coefficients;
    KW_REPORT_ERROR(QStringLiteral("unknown window function, cannot get window coefficients"),
                    kFFTSource);
    return kRectangular.coefficients;
}

std::function<double(UINT32)> CZELDatabaseHelperFFT::GetWindowFunction(KW_WINDOW_TYPE type,
                                                                       UINT32 length)
{
    if (length < 2)
    {
        KW_REPORT_ERROR(QStringLiteral("size of window function too small"), kFFTSource);
        return [](UINT32) { return 1.0; };
    }
    return CWindowFunction(GetWindowCoeff(type), length);
}

double CZELDatabaseHelperFFT::GetWindowFactor(KW_WINDOW_TYPE type)
{
    if (const t_Window* window = FindWindow(type))
        return window->factor;
    KW_REPORT_ERROR(QStringLiteral("unknown window function, cannot get window factor"),
                    kFFTSource);
    return kRectangular.factor;
}

double CZELDatabaseHelperFFT::GetWindowLengthFactor(KW_WINDOW_TYPE type)
{
    if (const t_Window* window = FindWindow(type))
        return window->lengthFactor;
    KW_REPORT_ERROR(QStringLiteral("unknown window function, cannot get window factor"),
                    kFFTSource);
    return kRectangular.lengthFactor;
}

std::function<double(double)>
CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT input, KW_FFT_MAGN_UNIT unit,
                                                  double impedance, bool inverse)
{
    const double offset = DecibelOffset(input, unit, impedance);
    if (inverse)
        return [offset](double decibel) { return DecibelToMagnitude(decibel, offset); };
    return [offset](double magnitude) { return MagnitudeToDecibel(magnitude, offset); };
}

double CZELDatabaseHelperFFT::Abs(const ne10_fft_cpx_float32_t& sample)
{
    // Wanted: a bin on an axis keeps its sign, as real-valued transforms deliver signed amplitudes.
    if (sample.i == 0.0f)
        return sample.r;
    if (sample.r == 0.0f)
        return sample.i;
    const double real = sample.r;
    const double imaginary = sample.i;
    return std::sqrt(real * real + imaginary * imaginary); // both squares are exact in double
}

std::array<double, 4> CZELDatabaseHelperFFT::GetFrequencyRange(KW_SCALING_TYPE scaling,
                                                               double minimumFrequency,
                                                               double sampleRate, double bandwidth)
{
    const double lowest = scaling == eKW_SCALING_TYPE_LOGARITHMIC ? 100.0 : 10.0;
    const double stop = StopFrequency(minimumFrequency * lowest, sampleRate * 0.5, bandwidth * 1.3);
    if (scaling == eKW_SCALING_TYPE_LINEAR)
        return {0.0, stop, stop, stop * 0.5};
    if (scaling != eKW_SCALING_TYPE_LOGARITHMIC)
        KW_REPORT_ERROR(QStringLiteral("unknown x-scaling detected"), kFFTSource);
    const double span = std::fabs(stop - minimumFrequency);
    return {minimumFrequency, stop, span, minimumFrequency + span * 0.5};
}

KW_FFT_INPUT_UNIT
CZELDatabaseHelperFFT::GetInputUnitFromProbeSettingsScope(KW_PROBE_TYPE probe, KW_UNIT userUnit)
{
    if (probe >= eKW_PROBE_TYPE_VOLTAGE_1_TO_1 && probe <= eKW_PROBE_TYPE_VOLTAGE_1000_TO_1)
        return eKW_FFT_INPUT_UNIT_VOLTAGE;
    if (probe >= eKW_PROBE_TYPE_CURRENT_100_V_PER_A && probe <= eKW_PROBE_TYPE_CURRENT_1_MV_PER_A)
        return eKW_FFT_INPUT_UNIT_CURRENT;
    if (probe == eKW_PROBE_TYPE_USER && userUnit == eKW_UNIT_LEVEL_V)
        return eKW_FFT_INPUT_UNIT_VOLTAGE;
    if (probe == eKW_PROBE_TYPE_USER && userUnit == eKW_UNIT_LEVEL_A)
        return eKW_FFT_INPUT_UNIT_CURRENT;

    if (probe == eKW_PROBE_TYPE_USER)
        KW_REPORT_ERROR(QStringLiteral("Unsupported user probe unit = ") + KW_ReportText(userUnit),
                        kFFTSource);
    else if (probe >= eKW_PROBE_TYPE_6 && probe <= eKW_PROBE_TYPE_PT1000)
        KW_REPORT_ERROR(QStringLiteral("Unsupported temperature probe type = ") +
                            KW_ReportText(probe),
                        kFFTSource);
    else
        KW_REPORT_ERROR(QStringLiteral("Unknown probe type = ") + KW_ReportText(probe), kFFTSource);
    return eKW_FFT_INPUT_UNIT_VOLTAGE;
}

KW_ZEL_ANALOG_CHANNEL
CZELDatabaseHelperFFT::GetAnalogSourceChannel(const KW_ZEL_CHANNEL& fftChannel)
{
    if (IsFftChannel(fftChannel))
        return static_cast<KW_ZEL_ANALOG_CHANNEL>(fftChannel - eKW_ZEL_CHANNEL_FFT1);
    KW_REPORT_ERROR(InvalidChannelText(fftChannel), kFFTSource);
    return eKW_ZEL_ANALOG_CHANNEL_C1;
}

KW_ZEL_CHANNEL CZELDatabaseHelperFFT::GetSourceChannel(const KW_ZEL_CHANNEL& fftChannel)
{
    if (IsFftChannel(fftChannel))
        return static_cast<KW_ZEL_CHANNEL>(fftChannel - eKW_ZEL_CHANNEL_FFT1);
    KW_REPORT_ERROR(InvalidChannelText(fftChannel), kFFTSource);
    return eKW_ZEL_CHANNEL_C1;
}
