// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "Numbers.h"
#include "Reports.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <ostream>

namespace DDC
{
void PrintTo(const DecimationRate& rate, std::ostream* out)
{
    *out << "{" << rate.m_R_DDC << ", " << int{rate.m_R_Fixed} << ", " << rate.m_R_CIC1 << ", "
         << int{rate.R_FIR} << ", " << int{rate.m_LUTRow} << "}";
}
} // namespace DDC

namespace
{
using Converter = CZELDatabaseHelperDDC;

constexpr double kCoarseStep = 4882812.5;
constexpr double kFineStep = 0.05820766091346741;
constexpr DDC::DecimationRate kNone{1, 1, 1, 1, -1};
constexpr DDC::NcoFrequency kZero{0.0, 0.0, 0.0, 0.0};

struct t_Row
{
    double threshold;
    DDC::DecimationRate rate;
};

const t_Row kTable[] = {{39495000, {20, 5, 1, 4, 0}},  {24703300, {30, 5, 1, 6, 1}},
                        {14842200, {45, 5, 1, 9, 2}},  {9911670, {60, 5, 1, 12, 3}},
                        {6875000, {120, 5, 6, 4, 4}},  {4583330, {180, 5, 6, 6, 5}},
                        {3055560, {270, 5, 6, 9, 6}},  {2291670, {360, 5, 6, 12, 7}},
                        {1718750, {480, 5, 6, 16, 8}}, {1473210, {560, 5, 7, 16, 9}}};

TEST(DDCTable, AThresholdBelongsToItsOwnRow)
{
    CReports reports;
    for (const auto& [threshold, rate] : kTable)
    {
        EXPECT_EQ(Converter::CalculateDecimationWithLUT(threshold), rate);
        EXPECT_EQ(Converter::SearchRowIndexInLUT(std::nextafter(threshold, 0)), rate.m_LUTRow);
        EXPECT_EQ(Converter::SearchRowIndexInLUT(std::nextafter(threshold, kInf)), rate.m_LUTRow);
        EXPECT_EQ(Converter::SearchRowIndexInLUT(threshold + 0.001), rate.m_LUTRow - 1);
        EXPECT_EQ(rate.m_R_DDC, UINT32{rate.m_R_Fixed} * rate.m_R_CIC1 * rate.R_FIR);
    }
    EXPECT_TRUE(reports.Take().empty());
}

TEST(DDCTable, SpansOutsideAreReported)
{
    for (const double span : {39495001.0, 1473209.9, 0.0, -1.0, kInf, -kInf, kNan})
    {
        CReports reports;
        EXPECT_EQ(Converter::SearchRowIndexInLUT(span), -1);
        EXPECT_TRUE(reports.Take().empty());
        EXPECT_EQ(Converter::CalculateDecimationWithLUT(span), kNone);
        const auto taken = reports.Take();
        ASSERT_EQ(taken.size(), 1u);
        EXPECT_EQ(taken[0].message,
                  QStringLiteral("Span is out of range, index= -1, no entry in LUT."));
        EXPECT_EQ(taken[0].file, QStringLiteral("src/IKWFunctionZELHelperDDC"));
        EXPECT_TRUE(taken[0].function.contains(
            QStringLiteral("static DDC::DecimationRate "
                           "CZELDatabaseHelperDDC::CalculateDecimationWithLUT(double)")));
    }
}

struct t_Decimation
{
    double span;
    DDC::DecimationRate expected;
    std::string report = {};
};

class DDCDecimation : public testing::TestWithParam<t_Decimation>
{
};

TEST_P(DDCDecimation, TakesTheTableTheFormulaOrNone)
{
    const t_Decimation& row = GetParam();
    CReports reports;
    EXPECT_EQ(Converter::CalculateDecimation(row.span), row.expected);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(row.report));
}

constexpr char kTooSmall[] = "Span is too small, can not proceed.";

INSTANTIATE_TEST_SUITE_P(
    Rows, DDCDecimation,
    testing::Values(t_Decimation{40e6, kNone}, t_Decimation{kInf, kNone}, t_Decimation{kNan, kNone},
                    t_Decimation{39495000, {20, 5, 1, 4, 0}}, t_Decimation{30e6, {20, 5, 1, 4, 0}},
                    t_Decimation{24703300, {30, 5, 1, 6, 1}},
                    t_Decimation{1473210.1, {480, 5, 6, 16, 8}},
                    t_Decimation{1473210, {560, 5, 7, 16, -1}},
                    t_Decimation{std::nextafter(1473210, kInf), {560, 5, 7, 16, -1}},
                    t_Decimation{100e3, {8240, 5, 103, 16, -1}},
                    t_Decimation{825, {1000000, 5, 12500, 16, -1}},
                    t_Decimation{std::nextafter(825, 0), {1000000, 5, 12500, 16, -1}},
                    t_Decimation{824.9, kNone, kTooSmall}, t_Decimation{0, kNone, kTooSmall},
                    t_Decimation{-kInf, kNone, kTooSmall}));

TEST(DDCDecimation, TheFormulaRefusesSpansOfTheTable)
{
    CReports reports;
    EXPECT_EQ(Converter::CalculateDecimationManually(1473211.0), kNone);
    EXPECT_EQ(reports.TakeMessages(), OneMessage("Can not compute decimation for this span."));
    EXPECT_EQ(Converter::CalculateDecimationManually(kNan), kNone);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(kTooSmall));
}

TEST(DDCDecimation, TheCic1RateIsCutAndClamped)
{
    for (const auto& [ratio, expected] : {std::pair{8250.0, 103},
                                          {79.9, 0},
                                          {80.0, 1},
                                          {1e6, 12500},
                                          {1000079.0, 12500},
                                          {1e30, 12500},
                                          {-1e9, 0},
                                          {kNan, 0}})
        EXPECT_EQ(Converter::SearchDecimationRateCic1(ratio), expected) << ratio;
}

TEST(DDCNco, UsesTheFineOscillatorFromADecimationOf120)
{
    EXPECT_EQ(Converter::CalculateNcoFrequency(10e6, 1), kZero);
    const DDC::NcoFrequency coarse{9765625.0, 0.0078125, 0.0, 0.0};
    EXPECT_EQ(Converter::CalculateNcoFrequency(10e6, 60), coarse);
    EXPECT_EQ(Converter::CalculateNcoFrequency(10e6, 119), coarse);
    const auto fine = Converter::CalculateNcoFrequency(10e6, 120);
    EXPECT_EQ(fine.m_CoarseFrequency, 9765625.0);
    EXPECT_EQ(fine.m_FineFrequency, 4026532.0 * kFineStep);
    EXPECT_EQ(fine.m_FineIncrement, 4026532.0 / 4294967296.0);
}

TEST(DDCNco, TiesGoAwayFromZeroAndNegativeResidualsWrap)
{
    EXPECT_EQ(Converter::CalculateNcoFrequency(kCoarseStep / 2, 20).m_CoarseIncrement, 1.0 / 256);
    EXPECT_EQ(Converter::CalculateNcoFrequency(-kCoarseStep / 2, 20).m_CoarseIncrement, -1.0 / 256);
    const auto nco = Converter::CalculateNcoFrequency(kCoarseStep - kFineStep, 120);
    EXPECT_EQ(nco.m_FineFrequency, -kFineStep);
    EXPECT_EQ(nco.m_FineIncrement, 1.0 - 1.0 / 4294967296.0);
}

TEST(DDCNco, AFineIncrementOutOfRangeIsReportedAndDropped)
{
    // So large a center leaves a residual of rounding errors only; infinity leaves none at all.
    for (const double center : {8.000000000000001e+23, -8.000000000000001e+23, kInf, kNan})
    {
        CReports reports;
        const auto nco = Converter::CalculateNcoFrequency(center, 120);
        EXPECT_EQ(nco.m_FineIncrement, 0.0);
        EXPECT_NE(nco.m_FineFrequency, 0.0);
        EXPECT_EQ(reports.TakeMessages(), OneMessage("DDC value for PINC2 exceeds range."));
        Converter::CalculateNcoFrequency(center, 119);
        EXPECT_TRUE(reports.Take().empty());
    }
}

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

TEST(DDCGain, IsTheProductOfItsFourFactors)
{
    const struct
    {
        DDC::DecimationRate rate;
        double cic1;
        double fir;
    } rows[] = {{{20, 5, 1, 4, 0}, 8.0, 540.7875671386719},
                {{30, 5, 1, 6, 1}, 8.0, 409.76424407958984},
                {{45, 5, 1, 9, 2}, 8.0, 308.710262298584},
                {{60, 5, 1, 12, 3}, 8.0, 412.25387954711914},
                {{80, 5, 1, 16, -1}, 8.0, 550.1438941955566},
                {{120, 5, 6, 4, 4}, 5.6953125, 562.2326965332031},
                {{180, 5, 6, 6, 5}, 5.6953125, 426.40540313720703},
                {{270, 5, 6, 9, 6}, 5.6953125, 321.3106002807617},
                {{360, 5, 6, 12, 7}, 5.6953125, 429.0809097290039},
                {{560, 5, 7, 16, 9}, 7.18072509765625, 572.5791473388672},
                {{160, 5, 2, 16, -1}, 8.0, 572.5791473388672}, // a power of two needs no rest
                {{1000000, 5, 12500, 16, -1}, 6.3108872417680944, 572.5791473388672}};
    for (const auto& [rate, cic1, fir] : rows)
    {
        const auto gain = Converter::CalculateGain(rate, kZero);
        EXPECT_EQ(gain.m_Gain_Scale, 125000.0);
        EXPECT_EQ(gain.m_Gain_Shift, 0.0625);
        EXPECT_EQ(gain.m_Gain_CIC1, cic1) << rate.m_R_CIC1;
        EXPECT_EQ(gain.m_Gain_FIR, fir) << rate.m_R_CIC1 << " " << int{rate.R_FIR};
        EXPECT_EQ(gain.m_Gain_DDC, cic1 * 7812.5 * fir);
    }
}

TEST(DDCGain, IsOneUpTo19AndFallsBackToTheLastFirRate)
{
    CReports reports;
    const DDC::Gain unity{1.0, 1.0, 1.0, 1.0, 1.0};
    EXPECT_EQ(Converter::CalculateGain(kNone, kZero), unity);
    EXPECT_EQ(Converter::CalculateGain({19, 5, 6, 99, -1}, kZero), unity);
    EXPECT_TRUE(reports.Take().empty());
    EXPECT_EQ(Converter::CalculateGain({25, 5, 1, 5, -1}, kZero).m_Gain_FIR, 550.1438941955566);
    EXPECT_EQ(reports.TakeMessages(), OneMessage("unknown R_FIR = 5 detected"));
    EXPECT_EQ(Converter::CalculateGain({150, 5, 6, 255, -1}, kZero).m_Gain_FIR, 572.5791473388672);
    EXPECT_EQ(reports.TakeMessages(), OneMessage("unknown R_FIR = 255 detected"));
}

TEST(DDCHardware, RegistersHoldRateShiftAndWrappedPhases)
{
    const struct
    {
        UINT16 cic1;
        double coarse;
        double fine;
        DDC::HWSettings expected;
    } rows[] = {{1, 0.0, 0.0, {0, 82, 0, 0}},
                {6, 0.0078125, 0.5, {5, 66, 2, 0x80000000}},
                {7, -1.0 / 256, 1.0 - 1.0 / 4294967296.0, {6, 65, 255, 0xFFFFFFFF}},
                {8, 3.0, 1.0, {7, 64, 0, 0}},
                {12500, 257.0 / 256, -0.25, {12499, 0, 1, 0xC0000000}},
                {65535, kNan, kInf, {65534, 0, 0, 0}}};
    for (const auto& [cic1, coarse, fine, expected] : rows)
    {
        const auto settings =
            Converter::CalculateHWSettingsDDC({560, 5, cic1, 16, -1}, {0.0, coarse, 0.0, fine});
        EXPECT_EQ(settings, expected) << cic1;
    }
}
} // namespace
