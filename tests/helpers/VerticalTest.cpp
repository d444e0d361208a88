// SPDX-License-Identifier: MIT
#include "HelperCases.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "Numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace
{
using Vertical = CZELDatabaseHelperVertical;

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

struct t_ScaleRow
{
    double scale;
    double higher;
    double lower;
};

TEST(VerticalScale, TakesWrongStepAtOrBesideThreshold)
{
    const t_ScaleRow rows[] = {
        {0.3, 0.4, 0.2},
        {0.45, 0.5, 0.4},
        {0.6, 1.0, 0.5},
        {0.7, 1.0, 0.5},
        {0.2, 0.2, 0.2},
        {1.0, 1.0, 1.0},
        {1.001, 2.0, 1.0},
        {4.0, 4.0, 4.0},
        {5.5, 10.0, 5.0},
        {9.99, 10.0, 5.0},
        {10.0, 10.0, 10.0},
        {1e-3, 1e-3, 1e-3},
        {3e-9, 4e-9, 2e-9},
        {7e22, 1e23, 5e22},
        // One representable number beside a step is that step.
        {Above(1.0), Above(1.0), 1.0},
        {Above(2.0), 2.0, 2.0},
        {Below(2.0), 2.0, 2.0},
        {Above(4.0), 4.0, 4.0},
        {Below(4.0), 4.0, 4.0},
        {Above(5.0), 5.0, 5.0},
        {Below(5.0), 5.0, 5.0},
        {Below(10.0), 10.0, 10.0},
        {Below(1e-3), 1e-3, 1e-3},
        // The allowance is a relative 1e-8 upward; it passes only the decade on unchanged.
        {1.0 + 0.9e-8, 1.0 + 0.9e-8, 1.0},
        {1.0 + 1.1e-8, 2.0, 1.0},
        {2.0 + 2e-8, 2.0, 2.0},
        {2.0 + 5e-8, 4.0, 2.0},
        {4.0 + 15e-8, 4.0, 4.0},
        {4.0 + 17e-8, 5.0, 4.0},
        {5.0 + 24e-8, 5.0, 5.0},
        {5.0 + 26e-8, 10.0, 5.0},
        {2.0 - 2e-8, 2.0, 1.0},
        {10.0 - 1e-8, 10.0, 5.0}};
    CReports reports;
    for (const auto& [scale, higher, lower] : rows)
    {
        EXPECT_DOUBLE_EQ(Vertical::GetNextHighestScale(scale), higher)
            << "next higher of " << scale;
        EXPECT_DOUBLE_EQ(Vertical::GetNextLowestScale(scale), lower) << "next lower of " << scale;
    }
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
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

RC_GTEST_PROP(VerticalScale, IsNotMonotonic, ())
{
    const double a = std::pow(10.0, *rc::gen::inRange(-12000, 12000) * 1e-3);
    const double b = a * (1.0 + *rc::gen::inRange(0, 100000) * 1e-4);
    RC_ASSERT(Vertical::GetNextHighestScale(a) <= Vertical::GetNextHighestScale(b) * (1.0 + 1e-8));
    RC_ASSERT(Vertical::GetNextLowestScale(a) <= Vertical::GetNextLowestScale(b) * (1.0 + 1e-14));
}

TEST(VerticalScale, HidesThatScaleHasNoLowerStep)
{
    const struct
    {
        double scale;
        std::string numbers;
    } rows[] = {{0.0, "Scale = 0, scale from exponent = 0, ratio = nan"},
                {-0.25, "Scale = -0.25, scale from exponent = nan, ratio = nan"},
                {kNan, "Scale = nan, scale from exponent = nan, ratio = nan"},
                {kInf, "Scale = inf, scale from exponent = inf, ratio = nan"},
                {5e-324, "Scale = 4.94066e-324, scale from exponent = 0, ratio = inf"}};
    for (const auto& [scale, numbers] : rows)
    {
        CReports reports;
        EXPECT_EQ(Vertical::GetNextLowestScale(scale), 0.0);
        ExpectReport(reports, "Next lowest scale could not be calculated. " + numbers, kHelpers,
                     "CZELDatabaseHelperVertical::GetNextLowestScale");
    }
}

TEST(VerticalScale, InventsHigherStepForWhatHasNoLogarithm)
{
    CReports reports;
    EXPECT_EQ(Vertical::GetNextHighestScale(0.0), 0.0);
    EXPECT_EQ(Vertical::GetNextHighestScale(kInf), kInf);
    EXPECT_TRUE(std::isnan(Vertical::GetNextHighestScale(-1.0)));
    EXPECT_TRUE(std::isnan(Vertical::GetNextHighestScale(kNan)));
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

TEST(VerticalScale, DividesByZeroDivisions)
{
    CReports reports;
    EXPECT_DOUBLE_EQ(Vertical::GetNextHighestScale(2.4, 8), 0.4);
    EXPECT_DOUBLE_EQ(Vertical::GetNextHighestScale(8e9, 4000000000U), 2.0);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
    EXPECT_EQ(Vertical::GetNextHighestScale(2.4, 0), 0.0);
    ExpectReport(reports, "The number of vertical divisions is zero.", kHelpers,
                 "CZELDatabaseHelperVertical::GetNextHighestScale(const double&,");
}

TEST(VerticalScreen, SwapsArgumentsOrSigns)
{
    EXPECT_EQ(Vertical::GetPhysicalValueRange(0.25, 8.0), 2.0);
    EXPECT_EQ(Vertical::GetPhysicalValueOffset(10.0, 3.0, 0.5), 8.5);
    EXPECT_EQ(Vertical::GetRangeFromTopBottom(3.0, -1.0), 4.0);
    EXPECT_EQ(Vertical::GetOffsetFromTopBottom(3.0, -1.0), 1.0);
}
} // namespace
