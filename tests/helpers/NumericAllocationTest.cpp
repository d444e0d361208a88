// SPDX-License-Identifier: MIT
#include "AllocationCount.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "MatConstants.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
using Horizontal = CZELDatabaseHelperHorizontal;
using FFT = CZELDatabaseHelperFFT;
using Converter = CZELDatabaseHelperDDC;

volatile double s_sink = 0.0; // keeps the calls from being dropped

void RunHorizontal()
{
    unsigned int decimation = 0;
    unsigned int digital = 0;
    double length = 0.0;
    double digitalLength = 0.0;
    bool flag = false;
    const auto sample = eKW_ZEL_ACQUISITION_MODE_SAMPLE;
    const auto depth = eKW_ZEL_HISTORY_DEPTH_100;
    const auto unlimited = KW_ZEL_RECORD_LENGTH(0);
    const double rate = Horizontal::GetSampleRate(eKW_ZEL_MODE_ZEL_C);
    Horizontal::CalculateDecimationFactorAndRecordLength(10.0, rate, sample, depth, unlimited,
                                                         decimation, length);
    Horizontal::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
        10.0, rate, rate, sample, depth, unlimited, decimation, digital, length, digitalLength);
    double factor = 0.0;
    double resolution = 0.0;
    Horizontal::CalculateDependentHorizontalSettings(length, 0, 10.0, 1000.0, decimation, digital,
                                                     factor, flag, resolution);
    Horizontal::CalculateHorizontalBoundaries(10.0, 50, 0.0, resolution, length, factor);
    Horizontal::CalculateZoomParameter(1000, 4.0, 1.0, 10, decimation, factor);
    s_sink = factor + length + Horizontal::CalculateNbPreTriggerSamples(10.0, 1000, length);
}

void RunSpectrum()
{
    s_sink = FFT::GetWindowCoeff(eKW_WINDOW_TYPE_FLATTOP)[1];
    s_sink = FFT::GetWindowFactor(eKW_WINDOW_TYPE_HANN);
    s_sink = FFT::GetFrequencyRange(eKW_SCALING_TYPE_LINEAR, 10.0, 1e8, 6e7)[1];
    s_sink = FFT::Abs({3.0f, 4.0f});
    s_sink = FFT::GetSourceChannel(eKW_ZEL_CHANNEL_FFT2);
    const auto rate = Converter::CalculateDecimation(2e6);
    const auto nco = Converter::CalculateNcoFrequency(1e7, rate.m_R_DDC);
    s_sink = Converter::CalculateGain(rate, nco).m_Gain_DDC;
    s_sink = Converter::CalculateHWSettingsDDC(rate, nco).m_FinePhase;
    s_sink = CMatConstants::AdjustToResolution(1.23, 0.1);
}

TEST(NumericFunctions, TheNormalPathDoesNotAllocate)
{
    const auto before = AllocationCount();
    RunHorizontal();
    RunSpectrum();
    EXPECT_EQ(AllocationCount(), before);
}

TEST(NumericFunctions, ACallableDoesNotAllocateWhenItIsCalled)
{
    const auto weight = FFT::GetWindowFunction(eKW_WINDOW_TYPE_BLACKMAN, 1024);
    const auto decibel = FFT::ConvertMagnitudeDBFunction(eKW_FFT_INPUT_UNIT_VOLTAGE,
                                                         eKW_FFT_MAGN_UNIT_DBM, 50.0, false);
    const auto before = AllocationCount();
    s_sink = weight(17) + decibel(0.5);
    EXPECT_EQ(AllocationCount(), before);
}

TEST(NumericFunctions, TheCounterSeesAllocations)
{
    const auto before = AllocationCount();
    const std::string text(100, 'x');
    s_sink = static_cast<double>(text.size());
    EXPECT_GT(AllocationCount(), before);
}
} // namespace
