// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "Numbers.h"
#include "Reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace
{
using FFT = CZELDatabaseHelperFFT;

TEST(FFTSize, FollowsTheSpanAndIsSilentlyZeroElse)
{
    CReports reports;
    EXPECT_EQ(FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(0)), 8192);
    EXPECT_EQ(FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(1)), 65536);
    EXPECT_EQ(FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(2)), 0);
    EXPECT_EQ(FFT::GetFFTSize(KW_FFT_FREQUENCY_SPAN(-1)), 0);
    EXPECT_TRUE(reports.Take().empty());
}

struct t_WindowRow
{
    int type;
    std::array<double, 5> coefficients;
    double factor;
    double lengthFactor;
    double center; ///< weight in the middle: the plain sum of the coefficients
};

class FFTWindow : public testing::TestWithParam<t_WindowRow>
{
};

TEST_P(FFTWindow, HasItsCoefficientsAndFactors)
{
    const t_WindowRow& row = GetParam();
    const auto type = KW_WINDOW_TYPE(row.type);
    EXPECT_EQ(FFT::GetWindowCoeff(type), row.coefficients);
    EXPECT_EQ(FFT::GetWindowFactor(type), row.factor);
    EXPECT_EQ(FFT::GetWindowLengthFactor(type), row.lengthFactor);
}

TEST_P(FFTWindow, EndsAtTheAlternatingSumAndPeaksAtThePlainSum)
{
    const t_WindowRow& row = GetParam();
    const auto weight = FFT::GetWindowFunction(KW_WINDOW_TYPE(row.type), 1025);
    const auto& a = row.coefficients;
    EXPECT_NEAR(weight(0), a[0] - a[1] + a[2] - a[3] + a[4], 1e-15);
    EXPECT_NEAR(weight(1024), weight(0), 1e-12);
    EXPECT_NEAR(weight(512), row.center, 1e-12);
    // A quarter of the way every odd term vanishes, so a sign or order mistake shows.
    EXPECT_NEAR(weight(256), a[0] - a[2] + a[4], 1e-12);
}

INSTANTIATE_TEST_SUITE_P(
    Types, FFTWindow,
    testing::Values(t_WindowRow{0, {1.0, 0, 0, 0, 0}, 0.89, 7.5, 1.0},
                    t_WindowRow{
                        1, {0.209671, 0.407331, 0.281225, 0.092669, 0.009104}, 3.84, 3.84, 1.0},
                    t_WindowRow{2, {0.54, 0.46, 0, 0, 0}, 1.3, 7.66, 1.0},
                    t_WindowRow{3, {0.5, 0.5, 0, 0, 0}, 1.44, 7.64, 1.0},
                    t_WindowRow{4, {0.42, 0.5, 0.08, 0, 0}, 1.65, 7.45, 1.0}));

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

TEST(FFTWindow, UnknownTypesFallBackToTheRectangularOne)
{
    for (const int type : {-1, 5})
    {
        CReports reports;
        const auto unknown = KW_WINDOW_TYPE(type);
        EXPECT_EQ(FFT::GetWindowCoeff(unknown), (std::array<double, 5>{1.0, 0, 0, 0, 0}));
        EXPECT_EQ(FFT::GetWindowFactor(unknown), 0.89);
        EXPECT_EQ(FFT::GetWindowLengthFactor(unknown), 7.5);
        EXPECT_EQ(FFT::GetWindowFunction(unknown, 9)(4), 1.0);
        const std::string coefficients = "unknown window function, cannot get window coefficients";
        const std::string factor = "unknown window function, cannot get window factor";
        const auto taken = reports.Take();
        ASSERT_EQ(taken.size(), 4u);
        EXPECT_EQ(taken[0].message.toStdString(), coefficients);
        EXPECT_EQ(taken[1].message.toStdString(), factor);
        EXPECT_EQ(taken[2].message.toStdString(), factor);
        EXPECT_EQ(taken[3].message.toStdString(), coefficients);
        EXPECT_EQ(taken[0].file, QStringLiteral("src/IKWFunctionZELHelperFFT"));
        EXPECT_TRUE(taken[1].function.contains(QStringLiteral(
            "static double CZELDatabaseHelperFFT::GetWindowFactor(KW_WINDOW_TYPE)")));
    }
}

TEST(FFTWindow, TooShortWindowsAndLateSamplesYieldOneWithAReport)
{
    CReports reports;
    for (const UINT32 length : {0u, 1u})
    {
        const auto weight = FFT::GetWindowFunction(eKW_WINDOW_TYPE_HANN, length);
        EXPECT_EQ(weight(0), 1.0);
        EXPECT_EQ(weight(4294967295), 1.0);
        EXPECT_EQ(reports.TakeMessages(), OneMessage("size of window function too small"));
    }
    const auto weight = FFT::GetWindowFunction(eKW_WINDOW_TYPE_HANN, 2);
    EXPECT_EQ(weight(0), 0.0);
    EXPECT_EQ(weight(1), 0.0);
    EXPECT_TRUE(reports.Take().empty());
    EXPECT_EQ(weight(2), 1.0);
    EXPECT_EQ(reports.TakeMessages(), OneMessage("invalid parameter - n is too big"));
}

TEST(FFTMagnitude, OffsetsFollowUnitAndInput)
{
    const struct
    {
        int input;
        int unit;
        double decibelOfOne;
    } rows[] = {{0, 0, 13.010299956639813},
                {1, 0, 46.98970004336019},
                {2, 0, 30.0},
                {0, 1, 0.0},
                {1, 2, 0.0},
                {1, 7, 0.0},
                {0, -1, 0.0}};
    for (const auto& [input, unit, decibelOfOne] : rows)
    {
        const auto forward = FFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT(input),
                                                             KW_FFT_MAGN_UNIT(unit), 50.0, false);
        const auto inverse = FFT::ConvertMagnitudeDBFunction(KW_FFT_INPUT_UNIT(input),
                                                             KW_FFT_MAGN_UNIT(unit), 50.0, true);
        EXPECT_DOUBLE_EQ(forward(1.0), decibelOfOne);
        EXPECT_DOUBLE_EQ(forward(0.001), decibelOfOne - 60.0);
        EXPECT_DOUBLE_EQ(inverse(decibelOfOne), 1.0);
        EXPECT_DOUBLE_EQ(inverse(decibelOfOne + 20.0), 10.0);
        EXPECT_EQ(forward(0.0), -kInf);
        EXPECT_EQ(forward(-1.0), -kInf);
        EXPECT_EQ(forward(kInf), kInf);
        EXPECT_EQ(inverse(-kInf), 0.0);
        EXPECT_EQ(inverse(kInf), kInf);
        EXPECT_TRUE(std::isnan(forward(kNan)));
        EXPECT_TRUE(std::isnan(inverse(kNan)));
    }
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

TEST(FFTMagnitude, BinsOnAnAxisKeepTheirSign)
{
    EXPECT_EQ(FFT::Abs({-3.0f, 0.0f}), -3.0);
    EXPECT_EQ(FFT::Abs({0.0f, -4.0f}), -4.0);
    EXPECT_EQ(FFT::Abs({-3.0f, -4.0f}), 5.0);
    EXPECT_EQ(FFT::Abs({0x3p100f, 0x4p100f}), 0x5p100) << "the squares overflow a float";
    EXPECT_NEAR(FFT::Abs({0.1f, 1.0f}), std::hypot(double{0.1f}, 1.0), 1e-15);
}

struct t_Range
{
    int scaling;
    double minimum;
    double rate;
    double bandwidth;
    std::array<double, 4> expected;
};

class FFTRange : public testing::TestWithParam<t_Range>
{
};

TEST_P(FFTRange, IsBoundedAndCutToOneDigit)
{
    const t_Range& row = GetParam();
    CReports reports;
    const auto range =
        FFT::GetFrequencyRange(KW_SCALING_TYPE(row.scaling), row.minimum, row.rate, row.bandwidth);
    EXPECT_THAT(range, testing::Pointwise(testing::NanSensitiveDoubleEq(), row.expected));
    const bool known = row.scaling == 0 || row.scaling == 1;
    EXPECT_EQ(reports.TakeMessages(), OneMessage(known ? "" : "unknown x-scaling detected"));
}

const double kBelowTwoMega = std::nextafter(2e6, 0.0);

INSTANTIATE_TEST_SUITE_P(
    Rows, FFTRange,
    testing::Values(t_Range{0, 10, 100e6, 60e6, {0, 5e7, 5e7, 2.5e7}},
                    t_Range{0, 10, 100e6, 20e6, {0, 2e7, 2e7, 1e7}},
                    t_Range{0, 10, 100e6, 8e6, {0, 1e7, 1e7, 5e6}},
                    t_Range{0, 10, 25e3, 60e6, {0, 1e4, 1e4, 5e3}},
                    t_Range{1, 10, 7.4e6, 60e6, {10, 3e6, 2999990, 1500005}},
                    // The lower bound is 10 or 100 times the minimum, and stands above the upper.
                    t_Range{0, 1000, 100, 60e6, {0, 1e4, 1e4, 5e3}},
                    t_Range{1, 1000, 100, 60e6, {1000, 1e5, 99000, 50500}},
                    t_Range{2, 1000, 100, 60e6, {1000, 1e4, 9000, 5500}},
                    t_Range{0, 1e6, 100, 1e3, {0, 1e7, 1e7, 5e6}},
                    t_Range{1, 2e6, 4e8, 1e6, {2e6, 1e6, 1e6, 2.5e6}},
                    // The logarithm of the last double below a decade rounds up to the decade.
                    t_Range{0, 1, 2e6, 60e6, {0, 1e6, 1e6, 5e5}},
                    t_Range{0, 1, kBelowTwoMega, 60e6, {0, 9e5, 9e5, 4.5e5}},
                    t_Range{0, 0, 0.0006, 1, {0, 0.0003, 0.0003, 0.00015}},
                    t_Range{0, 0, 0, 1, {0, 0, 0, 0}},
                    t_Range{0, 1, kInf, kInf, {0, kInf, kInf, kInf}},
                    t_Range{0, 1, kNan, 1e6, {0, kNan, kNan, kNan}}));

struct t_Probe
{
    int probe;
    int unit;
    KW_FFT_INPUT_UNIT expected;
    std::string report = {};
};

class FFTProbe : public testing::TestWithParam<t_Probe>
{
};

TEST_P(FFTProbe, DeliversItsQuantity)
{
    const t_Probe& row = GetParam();
    CReports reports;
    EXPECT_EQ(FFT::GetInputUnitFromProbeSettingsScope(KW_PROBE_TYPE(row.probe), KW_UNIT(row.unit)),
              row.expected);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(row.report));
}

constexpr auto kVolt = eKW_FFT_INPUT_UNIT_VOLTAGE;
constexpr auto kAmpere = eKW_FFT_INPUT_UNIT_CURRENT;

INSTANTIATE_TEST_SUITE_P(
    Rows, FFTProbe,
    testing::Values(t_Probe{0, 42, kVolt}, t_Probe{5, 42, kVolt}, t_Probe{7, 28, kAmpere},
                    t_Probe{12, 28, kAmpere}, t_Probe{18, 28, kVolt}, t_Probe{18, 42, kAmpere},
                    t_Probe{18, 43, kVolt, "Unsupported user probe unit = 43"},
                    t_Probe{6, 28, kVolt, "Unsupported temperature probe type = 6"},
                    t_Probe{13, 42, kVolt, "Unsupported temperature probe type = 13"},
                    t_Probe{17, 28, kVolt, "Unsupported temperature probe type = 17"},
                    t_Probe{19, 42, kVolt, "Unknown probe type = 19"},
                    t_Probe{-1, 42, kVolt, "Unknown probe type = -1"}));

TEST(FFTChannel, MapsTheFourFFTChannelsAndReportsAllOthers)
{
    for (int channel = -1; channel <= 21; ++channel)
    {
        CReports reports;
        const auto fftChannel = KW_ZEL_CHANNEL(channel);
        const bool valid = channel >= 16 && channel <= 19;
        const int expected = valid ? channel - 16 : 0;
        const auto report = OneMessage(
            valid ? "" : "invalid fft channel '" + std::to_string(channel) + "' detected");
        EXPECT_EQ(FFT::GetAnalogSourceChannel(fftChannel), expected);
        EXPECT_EQ(reports.TakeMessages(), report);
        EXPECT_EQ(FFT::GetSourceChannel(fftChannel), expected);
        EXPECT_EQ(reports.TakeMessages(), report);
    }
}
} // namespace
