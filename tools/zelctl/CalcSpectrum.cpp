// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

namespace
{
using FFTHelper = CZELDatabaseHelperFFT;

void FFTSize(const CArguments& in, CFigures& out)
{
    out.Add("points", FFTHelper::GetFFTSize(in.Enum<KW_FFT_FREQUENCY_SPAN>("span")));
}

KW_UNIT GetLevelUnit(KW_FFT_MAGN_UNIT unit)
{
    switch (unit)
    {
    case eKW_FFT_MAGN_UNIT_DBM:
        return eKW_UNIT_LEVEL_DBM;
    case eKW_FFT_MAGN_UNIT_DBV:
        return eKW_UNIT_LEVEL_DBV;
    default:
        return eKW_UNIT_LEVEL_DBA;
    }
}

void Magnitude(const CArguments& in, CFigures& out)
{
    const auto unit = in.Enum<KW_FFT_MAGN_UNIT>("unit");
    const auto input = in.Enum<KW_FFT_INPUT_UNIT>("--input");
    const bool inverse = in.IsSet("--inverse");
    const KW_UNIT level = GetLevelUnit(unit);
    const KW_UNIT linear =
        input == eKW_FFT_INPUT_UNIT_CURRENT ? eKW_UNIT_LEVEL_A : eKW_UNIT_LEVEL_V;
    const auto convert = FFTHelper::ConvertMagnitudeDBFunction(
        input, unit, in.Number("--impedance", eKW_UNIT_IMPEDANCE_OHM), inverse);
    out.Add(inverse ? "magnitude" : "level", convert(in.Number("value", inverse ? level : linear)),
            inverse ? linear : level);
}

void Absolute(const CArguments& in, CFigures& out)
{
    const ne10_fft_cpx_float32_t sample{static_cast<float>(in.Number("real")),
                                        static_cast<float>(in.Number("imaginary"))};
    out.Add("magnitude", FFTHelper::Abs(sample));
}

void FrequencyRange(const CArguments& in, CFigures& out)
{
    const auto range = FFTHelper::GetFrequencyRange(
        in.Enum<KW_SCALING_TYPE>("--scaling"), in.Number("--minimum", eKW_UNIT_FREQ_HZ),
        in.Number("rate", eKW_UNIT_SAMPLES_S), in.Number("bandwidth", eKW_UNIT_FREQ_HZ));
    out.Add("start", range[0], eKW_UNIT_FREQ_HZ)
        .Add("stop", range[1], eKW_UNIT_FREQ_HZ)
        .Add("span", range[2], eKW_UNIT_FREQ_HZ)
        .Add("center", range[3], eKW_UNIT_FREQ_HZ);
}

void Source(const CArguments& in, CFigures& out)
{
    const auto channel = in.Enum<KW_ZEL_CHANNEL>("channel");
    out.Add("source", GetEnumText(FFTHelper::GetSourceChannel(channel)))
        .Add("analog channel", GetEnumText(FFTHelper::GetAnalogSourceChannel(channel)));
}

void InputUnit(const CArguments& in, CFigures& out)
{
    out.Add("input unit", GetEnumText(FFTHelper::GetInputUnitFromProbeSettingsScope(
                              in.Enum<KW_PROBE_TYPE>("probe"), in.Enum<KW_UNIT>("--unit"))));
}
} // namespace

t_CalculationGroup GetSpectrumCalculations()
{
    return {
        "Spectrum",
        {{"fftsize",
          "Points of the FFT",
          {"GetFFTSize"},
          {{"span", "KW_FFT_FREQUENCY_SPAN"}},
          &FFTSize,
          {"NARROW"}},
         GetWindowCalculation(),
         {"magnitude",
          "Level in dB of a magnitude, and back",
          {"ConvertMagnitudeDBFunction"},
          {{"value", "RMS magnitude in V or A; with --inverse a level in dB"},
           {"unit", "KW_FFT_MAGN_UNIT of the level"},
           {"--input", "KW_FFT_INPUT_UNIT", "VOLTAGE"},
           {"--impedance", "Reference impedance of dBm in Ω", "50"},
           {"--inverse", "From the level back to the magnitude", "", t_Argument::eTAKES::Flag}},
          &Magnitude,
          {"223.6mV DBM", "--inverse 0dBm DBM"}},
         {"abs",
          "Magnitude of a bin",
          {"Abs"},
          {{"real", "Real part"}, {"imaginary", "Imaginary part"}},
          &Absolute,
          {"3 -4"}},
         {"frequencyrange",
          "Frequencies that the display should cover",
          {"GetFrequencyRange"},
          {{"rate", "Sample rate in Sa/s"},
           {"bandwidth", "Bandwidth in Hz"},
           {"--minimum", "Lowest frequency in Hz", "0.1"},
           {"--scaling", "KW_SCALING_TYPE", "LINEAR"}},
          &FrequencyRange,
          {"1.25GSa/s 200MHz"}},
         {"fftsource",
          "Channel that an FFT channel analyses",
          {"GetSourceChannel", "GetAnalogSourceChannel"},
          {{"channel", "KW_ZEL_CHANNEL of the FFT channel"}},
          &Source,
          {"\"FFT 1\""}},
         {"inputunit",
          "Quantity that a probe delivers to the FFT",
          {"GetInputUnitFromProbeSettingsScope"},
          {{"probe", "KW_PROBE_TYPE"}, {"--unit", "KW_UNIT of a user-defined probe", "LEVEL_V"}},
          &InputUnit,
          {"CURRENT_1_V_PER_A"}}}};
}
