// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "KWEnumerationsVertical.h"

#include <cmath>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <string>
#include <vector>

// What each function answers stands in tests/vectors; these are laws that do not know the formulas.

namespace
{
using Common = CZELDatabaseHelperCommon;
using Converter = CZELDatabaseHelperDDC;
using FFT = CZELDatabaseHelperFFT;
using Horizontal = CZELDatabaseHelperHorizontal;
using Vertical = CZELDatabaseHelperVertical;

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

/** The ladder as decimal texts read by the C library: what computed scales are checked against. */
const std::vector<double>& Ladder()
{
    static const std::vector<double> ladder = []
    {
        std::vector<double> values;
        for (int e = -20; e <= 20; ++e)
        {
            for (const char* step : {"1e", "2e", "4e", "5e"})
                values.push_back(std::stod(step + std::to_string(e)));
        }
        return values;
    }();
    return ladder;
}

bool Same(double a, double b)
{
    return std::fabs(a - b) <= 1e-14 * std::fabs(b);
}

RC_GTEST_PROP(VerticalScale, LeavesLadderOrDisagreesBetweenDirections, ())
{
    const auto index = *rc::gen::inRange<std::size_t>(1, Ladder().size() - 1);
    const double fraction = *rc::gen::inRange(1, 1000) * 1e-3;
    const double step = Ladder()[index];
    const double between = step + (Ladder()[index + 1] - step) * fraction * 0.999;

    RC_ASSERT(Same(Vertical::GetNextHighestScale(step), step));
    RC_ASSERT(Same(Vertical::GetNextLowestScale(step), step));
    RC_ASSERT(Same(Vertical::GetNextHighestScale(between), Ladder()[index + 1]));
    RC_ASSERT(Same(Vertical::GetNextLowestScale(between), step));
}

RC_GTEST_PROP(FFTWindow, IsSymmetricAndItsMeanIsTheCoherentGain, ())
{
    const auto type = KW_WINDOW_TYPE(*rc::gen::inRange(0, 5));
    const auto length = *rc::gen::inRange<UINT32>(7, 3000);
    const auto weight = FFT::GetWindowFunction(type, length);
    double sum = 0.0;
    for (UINT32 k = 0; k + 1 < length; ++k)
    {
        sum += weight(k);
        RC_ASSERT(std::fabs(weight(k) - weight(length - 1 - k)) < 1e-12);
    }
    RC_ASSERT(std::fabs(sum / (length - 1) - FFT::GetWindowCoeff(type)[0]) < 1e-12);
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

constexpr double kCoarseStep = 4882812.5;
constexpr double kFineStep = 0.05820766091346741;

RC_GTEST_PROP(DDCNco, IsWithinHalfAStepOfTheRequestAndItsWordsAreTheSamePhase, ())
{
    const double center = *rc::gen::inRange(-2000000000, 2000000000) * 0.999;
    const auto decimation = *rc::gen::element<UINT32>(20, 60, 119, 120, 560, 1000000);
    const auto nco = Converter::CalculateNcoFrequency(center, decimation);
    const double shift = Converter::CalculateFrequencyShift(nco);
    const double halfStep = (decimation < 120 ? kCoarseStep : kFineStep) / 2;
    RC_ASSERT(std::fabs(shift - center) <= halfStep + 1e-6);
    RC_ASSERT(nco.m_FineIncrement >= 0.0 && nco.m_FineIncrement < 1.0);
    const auto words = Converter::CalculateHWSettingsDDC({560, 5, 7, 16, 9}, nco);
    const double coarseTurns = words.m_CoarsePhase * kCoarseStep - nco.m_CoarseFrequency;
    const double fineTurns = words.m_FinePhase * kFineStep - nco.m_FineFrequency;
    RC_ASSERT(words.m_CoarsePhase < 256u);
    RC_ASSERT(std::fmod(coarseTurns, 1.25e9) == 0.0);
    RC_ASSERT(std::fmod(fineTurns, 2.5e8) == 0.0);
}

// Below 0 °C the 500 and 1000 Ω sensors do not come back: their third-order term is not the
// standard's, which the polynomial of the way back is.
TEST(CommonTemperature, DoesNotComeBackFromResistance)
{
    for (const INT32 type : {15, 16, 17})
    {
        for (int tenths = type == 15 ? -2000 : 0; tenths <= 8500; ++tenths)
        {
            const double celsius = tenths * 0.1;
            const double ohm = Common::ConvertTemperature2Resistance(KW_PROBE_TYPE(type), celsius);
            ASSERT_NEAR(Common::ConvertResistance2Temperature(KW_PROBE_TYPE(type), ohm), celsius,
                        0.01)
                << "type " << type;
        }
    }
}
} // namespace
