// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsVertical.h"

#include <cmath>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

// What each function answers stands in tests/vectors, what is published of windows in zelctl's
// test; these are laws that do not know the formulas.

namespace
{
using FFT = CZELDatabaseHelperFFT;
using Horizontal = CZELDatabaseHelperHorizontal;

RC_GTEST_PROP(HorizontalRecord, DecimationTimesLengthIsTheSampleCount, ())
{
    const double time = *rc::gen::inRange(1, 500000000) * 1e-6; // s, below the ceiling
    const auto mode = KW_ZEL_MODE(*rc::gen::inRange(0, 3));
    const auto acquisition = KW_ZEL_ACQUISITION_MODE(*rc::gen::inRange(0, 5));
    const auto depth = KW_ZEL_HISTORY_DEPTH(*rc::gen::inRange(0, 3));
    const auto selection = KW_ZEL_RECORD_LENGTH(*rc::gen::inRange(0, 3));
    const double rate = Horizontal::GetSampleRate(mode);
    unsigned int decimation = 0;
    double length = 0.0;
    Horizontal::CalculateDecimationFactorAndRecordLength(time, rate, acquisition, depth, selection,
                                                         decimation, length);
    const double samples = time * rate;
    const double budget =
        Horizontal::GetMaxNumOfSamplesAfterDecimation(rate, acquisition, depth, selection);
    RC_ASSERT(std::fabs(decimation * length - samples) <= samples * 1e-15);
    RC_ASSERT(length < 2.0 * budget);
    RC_ASSERT(decimation == 1 || length >= budget * (1 - 1e-6));
}

TEST(FFTMagnitude, TheForwardSumIsRoundedOnce)
{
    const auto forward = FFT::ConvertMagnitudeDBFunction(eKW_FFT_INPUT_UNIT_VOLTAGE,
                                                         eKW_FFT_MAGN_UNIT_DBM, 50.0, false);
    EXPECT_EQ(forward(0.012), -25.40607512240769); // rounded twice: -25.406075122407692
}

RC_GTEST_PROP(FFTMagnitude, DecibelsReadBackAsTheMagnitude, ())
{
    const auto input = KW_FFT_INPUT_UNIT(*rc::gen::inRange(0, 2));
    const auto unit = KW_FFT_MAGN_UNIT(*rc::gen::inRange(0, 3));
    const double impedance = *rc::gen::element(1.0, 50.0, 75.0, 600.0, 1e6);
    const double magnitude = std::pow(10.0, *rc::gen::inRange(-9000, 4000) * 0.001);
    const auto forward = FFT::ConvertMagnitudeDBFunction(input, unit, impedance, false);
    const auto inverse = FFT::ConvertMagnitudeDBFunction(input, unit, impedance, true);
    RC_ASSERT(std::fabs(inverse(forward(magnitude)) / magnitude - 1.0) < 1e-13);
}

} // namespace
