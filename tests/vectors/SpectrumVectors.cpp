// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "Numbers.h"

namespace NVectors
{
namespace
{
using FFT = CZELDatabaseHelperFFT;

void AddWindows(t_Lines& lines)
{
    const auto table = [](int type)
    {
        const auto window = KW_WINDOW_TYPE(type);
        return std::tuple{FFT::GetWindowCoeff(window), FFT::GetWindowFactor(window),
                          FFT::GetWindowLengthFactor(window),
                          FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(type))};
    };
    const auto weight = [](int type, UINT32 length, UINT32 k)
    { return FFT::GetWindowFunction(KW_WINDOW_TYPE(type), length)(k); };
    for (int type = -1; type <= 5; ++type)
    {
        Add(lines, "FFT.WindowTables", kExact, table, type);
        Add(lines, "FFT.GetWindowFunction", kUnit, weight, type, 1U, 0U);
    }
    Add(lines, "FFT.GetWindowFunction", kUnit, weight, std::vector{-1, 5}, 1024U, 17U);
    for (int type = 0; type < 5; ++type)
    {
        const auto window = FFT::GetWindowFunction(KW_WINDOW_TYPE(type), 1024);
        const auto of = [&window](int, UINT32 k) { return window(k); };
        Add(lines, "FFT.Window", kUnit, of, type,
            std::vector{0U, 1U, 17U, 400U, 511U, 512U, 1000U, 1023U, 1024U});
    }
    Add(lines, "FFT.GetWindowFunction", kUnit, weight, 3, std::vector{0U, 1U, 2U},
        std::vector{1U, 2U, 4294967295U});
}

void AddDecibels(t_Lines& lines)
{
    for (int input = 0; input <= 2; ++input)
    {
        for (const int unit : {0, 1, 2, 7, -1})
        {
            const auto to = FFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT(input),
                                                            KW_FFT_MAGN_UNIT(unit), 50.0, false);
            const auto from = FFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT(input),
                                                              KW_FFT_MAGN_UNIT(unit), 50.0, true);
            const auto forward = [&to](double value, int, int) { return to(value); };
            const auto backward = [&from](double level, int, int) { return from(level); };
            // The offset's rounding weighs more where it cancels the level: no such values here.
            Add(lines, "FFT.ToDecibel", kTwoUlp, forward,
                std::vector{1e-9, 3.7e-6, 0.5, 1.25, 10.0, 987.6, 1e100, 0.0, -1.0, kInf, -kInf,
                            kNan, 5e-324},
                input, unit);
            Add(lines, "FFT.FromDecibel", kOneUlp, backward,
                std::vector{-180.0, -61.7, 0.1, 13.0, 100.0, -7000.0, 7000.0, kInf, -kInf, kNan},
                input, unit);
        }
    }
}

void AddBins(t_Lines& lines)
{
    const auto magnitude = [](float r, float i) { return FFT::Abs({r, i}); };
    const std::vector parts{0.0F,   -3.0F, 4.0F,         0.1F,       1e-45F,
                            1e-30F, 3e38F, float(-kInf), float(kNan)};
    Add(lines, "FFT.Abs", kExact, magnitude, parts, parts);
    const auto range = [](int scaling, double minimum, double rate, double bandwidth)
    { return FFT::GetFrequencyRange(KW_SCALING_TYPE(scaling), minimum, rate, bandwidth); };
    for (int scaling = 0; scaling <= 2; ++scaling)
    {
        Add(lines, "FFT.GetFrequencyRange", kExact, range, scaling, 10.0,
            Joined(Edges(), AndNeighbours({6e3, 2e6, 1.25e9, 5e9})), 5e8);
        // The lower bound is 10 or 100 times the minimum, and may stand above the upper.
        Add(lines, "FFT.GetFrequencyRange", kExact, range, scaling, std::vector{0.0, 1000.0, 2e6},
            std::vector{0.0, 0.0006, 100.0, 7.4e6, 4e8, kInf, kNan}, std::vector{1.0, 6e7, kInf});
    }
}

void AddSources(t_Lines& lines)
{
    const auto unit = [](int probe, int user)
    { return FFT::GetInputUnitFromProbeSettingsScope(KW_PROBE_TYPE(probe), KW_UNIT(user)); };
    const auto source = [](int number)
    {
        const auto channel = KW_ZEL_CHANNEL(number);
        return std::tuple{FFT::GetAnalogSourceChannel(channel), FFT::GetSourceChannel(channel)};
    };
    for (int number = -1; number <= 21; ++number)
    {
        Add(lines, "FFT.GetInputUnitFromProbeSettingsScope", kExact, unit, number,
            std::vector{28, 42, 43});
        Add(lines, "FFT.GetSourceChannel", kExact, source, number);
    }
}

using Down = CZELDatabaseHelperDDC;

auto AsTuple(const DDC::DecimationRate& rate)
{
    return std::tuple(rate.m_R_DDC, rate.m_R_Fixed, rate.m_R_CIC1, rate.R_FIR, rate.m_LUTRow);
}

auto Chain(double span, double center)
{
    const auto rate = Down::CalculateDecimation(span);
    const auto nco = Down::CalculateNcoFrequency(center, rate.m_R_DDC);
    const auto gain = Down::CalculateGain(rate, nco);
    const auto words = Down::CalculateHWSettingsDDC(rate, nco);
    return std::tuple_cat(AsTuple(rate),
                          std::tuple{nco.m_CoarseFrequency, nco.m_CoarseIncrement,
                                     nco.m_FineFrequency, nco.m_FineIncrement,
                                     Down::CalculateFrequencyShift(nco), gain.m_Gain_DDC,
                                     gain.m_Gain_CIC1, gain.m_Gain_FIR, words.m_CIC1Rate,
                                     words.m_CIC1Shift, words.m_CoarsePhase, words.m_FinePhase});
}
void AddOscillators(t_Lines& lines)
{
    constexpr double kCoarse = 4882812.5;
    constexpr double kFine = 0.05820766091346741;
    const auto nco = [](double center, UINT32 decimation)
    {
        const auto both = Down::CalculateNcoFrequency(center, decimation);
        return std::tuple(both.m_CoarseFrequency, both.m_CoarseIncrement, both.m_FineFrequency,
                          both.m_FineIncrement);
    };
    // So large a center leaves a residual of rounding errors only; infinity leaves none at all.
    Add(lines, "DDC.CalculateNcoFrequency", kExact, nco,
        std::vector{10e6, kCoarse / 2, -kCoarse / 2, kCoarse - kFine, 8.000000000000001e+23,
                    -8.000000000000001e+23, kInf, kNan},
        std::vector{1U, 20U, 60U, 119U, 120U});
    const auto words = [](UINT32 cic1, double coarse, double fine)
    {
        const auto set = Down::CalculateHWSettingsDDC({560, 5, static_cast<UINT16>(cic1), 16, -1},
                                                      {0.0, coarse, 0.0, fine});
        return std::tuple(set.m_CIC1Rate, set.m_CIC1Shift, set.m_CoarsePhase, set.m_FinePhase);
    };
    const double turns[] = {0.0, 0.5, 1.0, 3.0, -0.25, 1.0 - 0x1p-32, 257.0 / 256, kInf, kNan};
    for (const UINT32 cic1 : {1U, 6U, 7U, 8U, 12500U, 65535U})
    {
        for (const double turn : turns)
            Add(lines, "DDC.CalculateHWSettingsDDC", kExact, words, cic1, turn, 1.0 - turn);
    }
}

void AddGains(t_Lines& lines)
{
    const auto gain = [](UINT32 decimation, UINT32 cic1, UINT32 fir)
    {
        const auto all = Down::CalculateGain(
            {decimation, 5, static_cast<UINT16>(cic1), static_cast<UINT8>(fir), -1}, {});
        return std::tuple(all.m_Gain_DDC, all.m_Gain_CIC1, all.m_Gain_Scale, all.m_Gain_Shift,
                          all.m_Gain_FIR);
    };
    // Nothing is gained up to 19; a power of two needs no rest; 5 and 255 are rates of no filter.
    for (const UINT32 cic1 : {1U, 2U, 6U, 7U, 12500U})
    {
        for (const UINT32 fir : {1U, 4U, 5U, 6U, 9U, 12U, 16U, 255U})
        {
            for (const UINT32 decimation : {1U, 19U, 20U, 5 * cic1 * fir})
                Add(lines, "DDC.CalculateGain", kExact, gain, decimation, cic1, fir);
        }
    }
}
} // namespace

void AddFFT(t_Lines& lines)
{
    AddWindows(lines);
    AddDecibels(lines);
    AddBins(lines);
    AddSources(lines);
}

void AddDDC(t_Lines& lines)
{
    const auto decimation = [](double span)
    {
        return std::tuple{AsTuple(Down::CalculateDecimation(span)),
                          AsTuple(Down::CalculateDecimationWithLUT(span)),
                          AsTuple(Down::CalculateDecimationManually(span)),
                          Down::SearchDecimationRateCic1(span), Down::SearchRowIndexInLUT(span)};
    };
    const std::vector<double> thresholds =
        AndNeighbours({825.0, 80.0, 1e6, 1473210.0, 1718750.0, 2291670.0, 3055560.0, 4583330.0,
                       6875000.0, 9911670.0, 14842200.0, 24703300.0, 39495000.0});
    const std::vector<double> beside = {79.9,      824.9,     8250.0, 100e3, 1000079.0,
                                        1473209.9, 1473211.0, 30e6,   40e6};
    Add(lines, "DDC.Decimation", kExact, decimation, Joined(Joined(thresholds, beside), Edges()));
    for (const double span : thresholds)
        Add(lines, "DDC.Decimation", kExact, decimation, span + 0.001);
    // The spans lead to rates of the CIC stage from 1 to 12500, powers of two among them.
    Add(lines, "DDC.Chain", kExact, Chain,
        std::vector{825.0, 1000.0, 2517.7, 10070.8, 80566.4, 644531.25, 2e6, 6e6, 3e7},
        std::vector{0.0, 1.0, 2441406.25, -2441406.25, 1.23456789e8, 5e8, -1e9, 1e300, kNan});
    AddOscillators(lines);
    AddGains(lines);
}
} // namespace NVectors
