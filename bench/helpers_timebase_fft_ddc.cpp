// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "MatConstants.h"

#include <benchmark/benchmark.h>

namespace
{
void Compare_AreEqual(benchmark::State& state)
{
    double value = 1.25e9;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(CMatConstants::AreEqual(value, 1.25e9));
    }
}
BENCHMARK(Compare_AreEqual);

void Compare_AdjustToResolution(benchmark::State& state)
{
    double value = 1.2345;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(CMatConstants::AdjustToResolution(value, 0.01));
    }
}
BENCHMARK(Compare_AdjustToResolution);

/** Decimation, dependent settings, boundaries and pre-trigger samples of one time scale. */
void Timebase_WholeCalculation(benchmark::State& state)
{
    using Horizontal = CZELDatabaseHelperHorizontal;
    double time = 1e-3;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(time);
        unsigned int decimation = 0;
        unsigned int recordLength = 0;
        unsigned int traceLength = 0;
        double length = 0.0;
        double factor = 0.0;
        double resolution = 0.0;
        double left = 0.0;
        double right = 0.0;
        bool hardware = false;
        Horizontal::CalculateDecimationFactorAndRecordLength(
            time, 5e9, eKW_ZEL_ACQUISITION_MODE_SAMPLE, eKW_ZEL_HISTORY_DEPTH_100,
            KW_ZEL_RECORD_LENGTH(0), decimation, length);
        Horizontal::CalculateDependentHorizontalSettings(length, 0, time, 1250.0, recordLength,
                                                         traceLength, factor, hardware, resolution);
        Horizontal::CalculateHorizontalBoundaries(time, 50, 0.0, resolution, left, right);
        benchmark::DoNotOptimize(right);
        benchmark::DoNotOptimize(
            Horizontal::CalculateNbPreTriggerSamples(time, recordLength, left));
    }
}
BENCHMARK(Timebase_WholeCalculation);

/** Window weights; the argument is the window type, the time that of one sample. */
void Fft_WindowSample(benchmark::State& state)
{
    constexpr UINT32 kLength = 8192;
    const auto weight =
        CZELDatabaseHelperFFT::GetWindowFunction(KW_WINDOW_TYPE(state.range(0)), kLength);
    UINT32 index = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(weight(index));
        index = (index + 1) % kLength;
    }
}
BENCHMARK(Fft_WindowSample)->DenseRange(eKW_WINDOW_TYPE_RECT, eKW_WINDOW_TYPE_BLACKMAN);

void Fft_MagnitudeToDecibel(benchmark::State& state)
{
    const auto decibel = CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(
        eKW_FFT_INPUT_UNIT_VOLTAGE, eKW_FFT_MAGN_UNIT_DBM, 50.0, state.range(0) != 0);
    double value = 0.123;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(decibel(value));
    }
}
BENCHMARK(Fft_MagnitudeToDecibel)->ArgName("inverse")->Arg(0)->Arg(1);

void Fft_FrequencyRange(benchmark::State& state)
{
    double rate = 1e8;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(CZELDatabaseHelperFFT::GetFrequencyRange(
            eKW_SCALING_TYPE_LOGARITHMIC, 10.0, rate, 6e7));
    }
}
BENCHMARK(Fft_FrequencyRange);

/** All that follows from one span and center; the argument is the span in hertz. */
void Ddc_WholeCalculation(benchmark::State& state)
{
    using Converter = CZELDatabaseHelperDDC;
    double span = static_cast<double>(state.range(0));
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(span);
        const auto rate = Converter::CalculateDecimation(span);
        const auto nco = Converter::CalculateNcoFrequency(1e7, rate.m_R_DDC);
        benchmark::DoNotOptimize(Converter::CalculateFrequencyShift(nco));
        benchmark::DoNotOptimize(Converter::CalculateGain(rate, nco));
        benchmark::DoNotOptimize(Converter::CalculateHWSettingsDDC(rate, nco));
    }
}
BENCHMARK(Ddc_WholeCalculation)->Arg(100000)->Arg(2000000)->Arg(30000000);
} // namespace
