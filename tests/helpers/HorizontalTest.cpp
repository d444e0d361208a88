// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "Numbers.h"
#include "Reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace
{
using Horizontal = CZELDatabaseHelperHorizontal;

constexpr char kZeroBudget[] =
    "MaxNumOfSamplesAfterDecimation is zero. Decimation factor is set to 1";

TEST(HorizontalSelections, EachModeAndDepthHasItsNumber)
{
    const double rates[] = {1.25e9, 2.5e9, 5e9};
    const UINT64 effective[] = {17179869180, 8589934590, 4294967295};
    const unsigned int traces[] = {100, 1000, 5000};
    CReports reports;
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(Horizontal::GetSampleRate(KW_ZEL_MODE(i)), rates[i]);
        EXPECT_EQ(Horizontal::CalculateDecimationFactorEffective(KW_ZEL_MODE(i), 4294967295),
                  effective[i]);
        EXPECT_EQ(Horizontal::GetNumberOfHistoryTraces(KW_ZEL_HISTORY_DEPTH(i)), traces[i]);
    }
    EXPECT_TRUE(reports.Take().empty());
}

TEST(HorizontalSelections, IllegalOnesAreReportedWithPlaceAndFallBack)
{
    CReports reports;
    EXPECT_EQ(Horizontal::GetSampleRate(KW_ZEL_MODE(3)), 0.0);
    EXPECT_EQ(Horizontal::CalculateDecimationFactorEffective(KW_ZEL_MODE(-1), 7), 7u);
    EXPECT_EQ(Horizontal::GetNumberOfHistoryTraces(KW_ZEL_HISTORY_DEPTH(3)), 1u);
    const auto taken = reports.Take();
    ASSERT_EQ(taken.size(), 3u);
    EXPECT_EQ(taken[0].message, QStringLiteral("illegal ZEL mode: 3"));
    EXPECT_EQ(taken[0].file, QStringLiteral("src/IKWFunctionZELHelpers"));
    EXPECT_EQ(taken[0].function,
              QStringLiteral("static double CZELDatabaseHelperHorizontal::GetSampleRate"
                             "(KW_ZEL_MODE)"));
    EXPECT_EQ(taken[0].type, e_KW_MESSAGE_TYPE_ERROR);
    EXPECT_EQ(taken[1].message, QStringLiteral("Illegal ZEL mode: -1"));
    EXPECT_EQ(taken[1].file, QStringLiteral("src/IKWFunctionZELHelpers"));
    EXPECT_EQ(taken[2].message, QStringLiteral("Invalid history depth: 3"));
    EXPECT_EQ(taken[2].file, QStringLiteral("ifc/IKWFunctionZelHelpers"));
}

struct t_Budget
{
    double rate;
    int acquisitionMode;
    int depth;
    int recordLength;
    unsigned int expected;
    std::string report = {};
};

class HorizontalBudget : public testing::TestWithParam<t_Budget>
{
};

TEST_P(HorizontalBudget, IsSharedHalvedAndCapped)
{
    const t_Budget& row = GetParam();
    CReports reports;
    EXPECT_EQ(Horizontal::GetMaxNumOfSamplesAfterDecimation(
                  row.rate, KW_ZEL_ACQUISITION_MODE(row.acquisitionMode),
                  KW_ZEL_HISTORY_DEPTH(row.depth), KW_ZEL_RECORD_LENGTH(row.recordLength)),
              row.expected);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(row.report));
}

std::string IllegalRate(const std::string& rate)
{
    return "Illegal sample rate of " + rate +
           ". Setting max. number of samples after decimation to 125000";
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HorizontalBudget,
    testing::Values(t_Budget{1.25e9, 0, 0, 0, 125000}, t_Budget{2.5e9, 0, 0, 0, 250000},
                    t_Budget{5e9, 0, 0, 0, 500000}, t_Budget{Above(5e9), 0, 0, 0, 500000},
                    t_Budget{Below(5e9), 0, 0, 0, 500000}, t_Budget{5e9, 4, 1, 0, 25000},
                    t_Budget{5e9, -1, 0, 0, 250000}, t_Budget{1.25e9, 1, 2, 0, 1250},
                    t_Budget{2.5e9, 1, 1, 0, 12500}, t_Budget{2.5e9, 1, 1, 2, 1250},
                    t_Budget{5e9, 0, 0, 1, 12500}, t_Budget{5e9, 0, 0, 3, 500000},
                    t_Budget{1.25e9, 1, 2, 1, 1250},
                    t_Budget{5e9, 0, 9, 0, 50000000, "Invalid history depth: 9"},
                    t_Budget{1e9, 1, 0, 0, 62500, IllegalRate("1e+09")},
                    t_Budget{5e9 * (1 + 1e-14), 0, 0, 0, 125000, IllegalRate("5e+09")},
                    t_Budget{0.0, 0, 0, 2, 1250, IllegalRate("0")},
                    t_Budget{kInf, 0, 0, 0, 125000, IllegalRate("inf")},
                    t_Budget{kNan, 0, 0, 0, 125000, IllegalRate("nan")}));

struct t_Factor
{
    double samples;
    UINT32 maxPoints;
    double expected;
    std::string report = {};
};

class HorizontalFactor : public testing::TestWithParam<t_Factor>
{
};

TEST_P(HorizontalFactor, IsTheFlooredQuotientOfTheRoundedCount)
{
    const t_Factor& row = GetParam();
    CReports reports;
    EXPECT_EQ(Horizontal::CalculateDecimationFactor(row.samples, row.maxPoints), row.expected);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(row.report));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HorizontalFactor,
    testing::Values(t_Factor{125000, 125000, 1.0}, t_Factor{125000.4, 125000, 1.0},
                    t_Factor{250001, 125000, 2.0}, t_Factor{249999.5, 125000, 2.0},
                    t_Factor{249999.4, 125000, 1.0}, t_Factor{1e16, 1000, 1e13},
                    t_Factor{0, 0, 1.0}, t_Factor{-kInf, 0, 1.0}, t_Factor{kNan, 1, 1.0},
                    t_Factor{kInf, 1, kInf}, t_Factor{0.1, 0, 1.0, kZeroBudget}));

TEST(HorizontalFactor, OnlyFactorsAboveTwoBillionAreLimited)
{
    struct t_Limit
    {
        double factor;
        unsigned int expected;
        bool limited;
    };
    for (const auto& [factor, expected, limited] :
         {t_Limit{2e9, 2000000000, false}, t_Limit{Above(2e9), 2000000000, true},
          t_Limit{Below(2e9), 1999999999, false}, t_Limit{2.9, 2, false}, t_Limit{-1.0, 0, false},
          t_Limit{kNan, 0, false}, t_Limit{kInf, 2000000000, true}})
    {
        bool result = !limited;
        EXPECT_EQ(Horizontal::LimitDecimationFactor(factor, result), expected) << factor;
        EXPECT_EQ(result, limited) << factor;
    }
}

struct t_Record
{
    double time;
    int recordLength;
    unsigned int decimation;
    double length;
    std::string report = {};
};

class HorizontalRecord : public testing::TestWithParam<t_Record>
{
};

TEST_P(HorizontalRecord, FitsTheDecimationUnderItsCeiling)
{
    const t_Record& row = GetParam();
    CReports reports;
    unsigned int decimation = 0;
    double length = 0.0;
    EXPECT_EQ(Horizontal::CalculateDecimationFactorAndRecordLength(
                  row.time, 5e9, eKW_ZEL_ACQUISITION_MODE_SAMPLE, eKW_ZEL_HISTORY_DEPTH_100,
                  KW_ZEL_RECORD_LENGTH(row.recordLength), decimation, length),
              row.decimation);
    EXPECT_EQ(decimation, row.decimation);
    EXPECT_DOUBLE_EQ(length, row.length);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(row.report));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HorizontalRecord,
    testing::Values(t_Record{10.0, 0, 100000, 500000.0}, t_Record{1e-4, 0, 1, 500000.0},
                    t_Record{1.999e-4, 0, 1, 999500.0}, t_Record{1e-9, 0, 1, 5.0},
                    t_Record{750.0, 2, 1500000000, 2500.0}, t_Record{2e6, 2, 2000000000, 5e6},
                    t_Record{1.7e9, 0, 2000000000, 4.25e9},
                    // No 32-bit budget serves these: the search must end, and say so once.
                    t_Record{1e10, 0, 1, 5e19, kZeroBudget},
                    t_Record{1e30, 2, 1, 5e39, kZeroBudget},
                    t_Record{kInf, 0, 1, kInf, kZeroBudget}));

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

TEST(HorizontalRecord, SlowAndRollModeShareTheSmallerBudget)
{
    struct t_Shared
    {
        double time;
        double analogRate;
        double digitalRate;
        int acquisitionMode;
        int recordLength;
        unsigned int analogDecimation;
        unsigned int digitalDecimation;
        double length;
    };
    for (const auto& row : {t_Shared{1.0, 1.25e9, 5e9, 0, 0, 10000, 40000, 125000.0},
                            t_Shared{1.0, 5e9, 1.25e9, 0, 0, 40000, 10000, 125000.0},
                            t_Shared{1.0, 1.25e9, 1.25e9, 1, 0, 20000, 20000, 62500.0},
                            t_Shared{1.0, 5e9, 1.25e9, 1, 0, 40000, 10000, 125000.0},
                            t_Shared{2e6, 1.25e9, 5e9, 0, 2, 500000000, 2000000000, 5e6},
                            t_Shared{2e6, 5e9, 1.25e9, 0, 2, 2000000000, 500000000, 5e6}})
    {
        unsigned int analog = 0;
        unsigned int digital = 0;
        double analogLength = 0.0;
        double digitalLength = 0.0;
        Horizontal::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
            row.time, row.analogRate, row.digitalRate, KW_ZEL_ACQUISITION_MODE(row.acquisitionMode),
            eKW_ZEL_HISTORY_DEPTH_100, KW_ZEL_RECORD_LENGTH(row.recordLength), analog, digital,
            analogLength, digitalLength);
        EXPECT_EQ(analog, row.analogDecimation);
        EXPECT_EQ(digital, row.digitalDecimation);
        EXPECT_EQ(analogLength, row.length);
        EXPECT_EQ(digitalLength, row.length);
    }
}

TEST(HorizontalRecord, OnlyTwoHalfValuesAreRoundedUp)
{
    const double window = 1.1920928955078125e-07;
    for (const auto& [samples, expected] : {std::pair{12.5, 13u},
                                            {62.5, 63u},
                                            {37.5, 37u},
                                            {12.6, 12u},
                                            {12.5 - window, 12u},
                                            {12.5 + window, 12u},
                                            {Above(12.5 - window), 13u},
                                            {Below(12.5 + window), 13u},
                                            {62.5 - window, 62u},
                                            {62.5 + window, 62u},
                                            {Below(62.5 + window), 63u},
                                            {0.9, 0u},
                                            {-3.0, 0u},
                                            {kNan, 0u},
                                            {1e300, 4294967295u}})
        EXPECT_EQ(Horizontal::AdjustRecordLength(samples), expected) << samples;
}

struct t_Dependent
{
    double samples;
    unsigned int selector;
    double required;
    unsigned int recordLength;
    unsigned int traceLength;
    double factor;
    bool hardware;
    double resolution;
};

class HorizontalDependent : public testing::TestWithParam<t_Dependent>
{
};

TEST_P(HorizontalDependent, FollowFromTheRecord)
{
    const t_Dependent& row = GetParam();
    unsigned int recordLength = 0;
    unsigned int traceLength = 0;
    double factor = 0.0;
    bool hardware = !row.hardware;
    double resolution = 0.0;
    Horizontal::CalculateDependentHorizontalSettings(row.samples, row.selector, 1e-3, row.required,
                                                     recordLength, traceLength, factor, hardware,
                                                     resolution);
    EXPECT_EQ(recordLength, row.recordLength);
    EXPECT_EQ(traceLength, row.traceLength);
    EXPECT_DOUBLE_EQ(factor, row.factor);
    EXPECT_EQ(hardware, row.hardware);
    EXPECT_THAT(resolution, testing::NanSensitiveDoubleEq(row.resolution));
}

INSTANTIATE_TEST_SUITE_P(Rows, HorizontalDependent,
                         testing::Values(t_Dependent{1000, 0, 1000, 1000, 1000, 1.0, false, 1e-6},
                                         t_Dependent{1000, 1, 1000, 1000, 1000, 1.0, true, 1e-6},
                                         t_Dependent{1000, 2, 999, 1000, 1000, 1.0, false, 1e-6},
                                         t_Dependent{500, 0, 1000, 500, 1000, 2.0, true, 1e-6},
                                         t_Dependent{12.5, 0, 1250, 13, 1250, 100.0, true, 8e-7},
                                         t_Dependent{Below(1000), 0, 1000, 999, 1000, 1.0, false,
                                                     1e-6},
                                         t_Dependent{0.0, 0, 1000, 0, 0, kInf, true, kNan}));

TEST(HorizontalPosition, PreTriggerSamplesArePositiveBeforeTheTrigger)
{
    EXPECT_DOUBLE_EQ(Horizontal::CalculateNbPreTriggerSamples(1e-3, 1000, -2.5e-4), 250.0);
    EXPECT_DOUBLE_EQ(Horizontal::CalculateNbPreTriggerSamples(1e-9, 5, 1e-9), -5.0);
    EXPECT_EQ(Horizontal::CalculateNbPreTriggerSamples(0.0, 1000, -1.0), 0.0);
    EXPECT_EQ(Horizontal::CalculateNbPreTriggerSamples(5e-324, 1000, -1.0), 0.0);
}

struct t_Boundary
{
    unsigned short percent;
    double position;
    double resolution;
    double left;
};

class HorizontalBoundaries : public testing::TestWithParam<t_Boundary>
{
};

TEST_P(HorizontalBoundaries, SnapTheOffsetToWholeIntervals)
{
    const t_Boundary& row = GetParam();
    double left = kNan;
    double right = kNan;
    Horizontal::CalculateHorizontalBoundaries(1e-3, row.percent, row.position, row.resolution, left,
                                              right);
    EXPECT_DOUBLE_EQ(left, row.left);
    EXPECT_EQ(right, 1e-3 + left);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HorizontalBoundaries,
    testing::Values(t_Boundary{50, 0.0, 0.0, -5e-4}, t_Boundary{50, 0.0, 3e-4, -6e-4},
                    t_Boundary{50, 0.0, -3e-4, -6e-4}, t_Boundary{50, 0.0, 2e-3, 0.0},
                    t_Boundary{50, 0.0, 1e-3, -1e-3}, t_Boundary{50, 2e-3, 4e-4, 1.6e-3},
                    t_Boundary{0, 7e-4, 3e-4, 7e-4}, t_Boundary{0, 7e-4, 0.0, 7e-4},
                    t_Boundary{100, 0.0, kNan, -1e-3}, t_Boundary{100, 0.0, kInf, 0.0}));

TEST(HorizontalZoom, BoundariesLieAroundTheCentre)
{
    double left = 0.0;
    double right = 0.0;
    Horizontal::CalculateHorizontalBoundariesZoom(4.0, 1.0, left, right);
    EXPECT_EQ(left, -1.0);
    EXPECT_EQ(right, 3.0);
    EXPECT_EQ(Horizontal::GetRightHorizontalBoudary(-1.0, 4.0), 3.0);
}

struct t_Zoom
{
    unsigned int length;
    double zoomFactor;
    unsigned int minimum;
    unsigned int points;
    double factor;
};

class HorizontalZoom : public testing::TestWithParam<t_Zoom>
{
};

TEST_P(HorizontalZoom, ShowsAtLeastTheMinimumAndRefusesNothing)
{
    const t_Zoom& row = GetParam();
    CReports reports;
    unsigned int points = 77;
    double factor = kNan;
    const bool success = Horizontal::CalculateZoomParameter(row.length, row.zoomFactor, 2.0,
                                                            row.minimum, points, factor);
    EXPECT_EQ(success, row.points != 0);
    EXPECT_EQ(points, row.points);
    EXPECT_DOUBLE_EQ(factor, row.factor);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(success ? "" : "Liz is zero"));
}

INSTANTIATE_TEST_SUITE_P(Rows, HorizontalZoom,
                         testing::Values(t_Zoom{1000, 4.0, 10, 250, 2.0},
                                         t_Zoom{1000, 1000.0, 50, 50, 100.0},
                                         t_Zoom{5, 2.0, 0, 3, 2.4}, t_Zoom{1000, -4.0, 0, 0, 1.0},
                                         t_Zoom{10, 100.0, 0, 0, 1.0}, t_Zoom{0, 1.0, 0, 0, 1.0}));
} // namespace
