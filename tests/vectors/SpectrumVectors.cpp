// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"

#include <limits>

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
        return std::tuple(FFT::GetWindowCoeff(window), FFT::GetWindowFactor(window),
                          FFT::GetWindowLengthFactor(window),
                          FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(type)));
    };
    const auto weight = [](int type, UINT32 length, UINT32 k)
    { return FFT::GetWindowFunction(KW_WINDOW_TYPE(type), length)(k); };
    for (int type = -1; type <= 5; ++type)
    {
        Add(lines, "FFT.WindowTables", kExact, table, type);
        for (const UINT32 k : {0U, 1U, 17U, 400U, 511U, 512U, 1000U, 1023U, 1024U})
            Add(lines, "FFT.GetWindowFunction", kUnit, weight, type, 1024U, k);
        Add(lines, "FFT.GetWindowFunction", kUnit, weight, type, 1U, 0U);
    }
}

void AddDecibels(t_Lines& lines)
{
    const auto convert = [](double value, int input, int unit, bool inverse)
    {
        return FFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT(input), KW_FFT_MAGN_UNIT(unit),
                                               50.0, inverse)(value);
    };
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (int input = 0; input <= 2; ++input)
    {
        for (int unit = 0; unit <= 2; ++unit)
        {
            // The offset's rounding weighs more where it cancels the level: no such values here.
            for (const double value :
                 {1e-9, 3.7e-6, 0.5, 1.25, 10.0, 987.6, 1e100, 0.0, -1.0, inf, -inf, nan, 5e-324})
            {
                Add(lines, "FFT.ToDecibel", kTwoUlp, convert, value, input, unit, false);
            }
            for (const double level : {-180.0, -61.7, 0.1, 13.0, 100.0, -7000.0, 7000.0, inf, nan})
                Add(lines, "FFT.FromDecibel", kOneUlp, convert, level, input, unit, true);
        }
    }
}

void AddBins(t_Lines& lines)
{
    const auto magnitude = [](float r, float i) { return FFT::Abs({r, i}); };
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const float parts[] = {0.0F, -3.0F, 4.0F, 0.1F, 1e-45F, 1e-30F, 3e38F, -kInf, kNan};
    for (const float r : parts)
    {
        for (const float i : parts)
            Add(lines, "FFT.Abs", kExact, magnitude, r, i);
    }
    const auto range = [](int scaling, double minimum, double rate, double bandwidth)
    { return FFT::GetFrequencyRange(KW_SCALING_TYPE(scaling), minimum, rate, bandwidth); };
    for (int scaling = 0; scaling <= 2; ++scaling)
    {
        for (const double rate : Joined(Edges(), AndNeighbours({6e3, 2e6, 1.25e9, 5e9})))
            Add(lines, "FFT.GetFrequencyRange", kExact, range, scaling, 10.0, rate, 5e8);
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
                          std::tuple(nco.m_CoarseFrequency, nco.m_CoarseIncrement,
                                     nco.m_FineFrequency, nco.m_FineIncrement,
                                     Down::CalculateFrequencyShift(nco), gain.m_Gain_DDC,
                                     gain.m_Gain_CIC1, gain.m_Gain_FIR, words.m_CIC1Rate,
                                     words.m_CIC1Shift, words.m_CoarsePhase, words.m_FinePhase));
}
} // namespace

void AddFFT(t_Lines& lines)
{
    AddWindows(lines);
    AddDecibels(lines);
    AddBins(lines);
}

void AddDDC(t_Lines& lines)
{
    const auto decimation = [](double span)
    {
        return std::tuple_cat(AsTuple(Down::CalculateDecimation(span)),
                              AsTuple(Down::CalculateDecimationWithLUT(span)),
                              AsTuple(Down::CalculateDecimationManually(span)),
                              std::tuple(Down::SearchDecimationRateCic1(span)));
    };
    const std::vector<double> thresholds =
        AndNeighbours({825.0, 80.0, 1e6, 1473210.0, 1718750.0, 2291670.0, 3055560.0, 4583330.0,
                       6875000.0, 9911670.0, 14842200.0, 24703300.0, 39495000.0});
    for (const double span : Joined(thresholds, Edges()))
        Add(lines, "DDC.Decimation", kExact, decimation, span);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // The spans lead to rates of the CIC stage from 1 to 12500, powers of two among them.
    for (const double span : {825.0, 1000.0, 2517.7, 10070.8, 80566.4, 644531.25, 2e6, 6e6, 3e7})
    {
        for (const double center :
             {0.0, 1.0, 2441406.25, -2441406.25, 1.23456789e8, 5e8, -1e9, 1e300, nan})
        {
            Add(lines, "DDC.Chain", kExact, Chain, span, center);
        }
    }
}
} // namespace NVectors
