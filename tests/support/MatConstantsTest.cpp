// SPDX-License-Identifier: MIT
#include "MatConstants.h"
#include "Numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace
{
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kStep = std::numeric_limits<double>::denorm_min();

struct t_Pair
{
    double a;
    double b;
    bool equal;
    bool less;
};

class Comparisons : public testing::TestWithParam<t_Pair>
{
};

TEST_P(Comparisons, EqualLessAndGreaterAgree)
{
    const auto [a, b, equal, less] = GetParam();
    const bool greater = !equal && !less && !std::isnan(a) && !std::isnan(b) && a != b;
    EXPECT_EQ(CMatConstants::AreEqual(a, b), equal);
    EXPECT_EQ(CMatConstants::AreEqual(b, a), equal);
    EXPECT_EQ(CMatConstants::IsLess(a, b), less);
    EXPECT_EQ(CMatConstants::IsGreater(b, a), less);
    EXPECT_EQ(CMatConstants::IsLess(b, a), greater);
    EXPECT_EQ(CMatConstants::IsLessOrEqual(a, b), less || equal);
    EXPECT_EQ(CMatConstants::IsGreaterOrEqual(b, a), less || equal);
    EXPECT_EQ(CMatConstants::IsGreaterOrEqual(a, b), greater || equal);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Comparisons,
    testing::Values(t_Pair{1.0, 1.0, true, false}, t_Pair{1.0, Above(1.0), true, false},
                    t_Pair{1e12, Above(1e12), true, false},
                    t_Pair{1e-12, Above(1e-12), true, false}, t_Pair{0.1 + 0.2, 0.3, true, false},
                    t_Pair{1.0, 1.0 + 8e-16, true, false}, t_Pair{1.0, 1.0 + 2e-15, false, true},
                    t_Pair{1e-12, 1e-12 * (1.0 + 2e-15), false, true},
                    t_Pair{1e12, 1e12 + 0.01, false, true}, t_Pair{-2.0, -1.0, false, true},
                    t_Pair{-1e-300, 1e-300, false, true}, t_Pair{kStep, 2 * kStep, true, false},
                    t_Pair{-kMax, kMax, false, true}, t_Pair{kMax, kMax, true, false},
                    // Zero has no scale: differences of computed numbers count as zero.
                    t_Pair{0.0, -0.0, true, false}, t_Pair{0.0, kStep, true, false},
                    t_Pair{0.0, 0.1 + 0.2 - 0.3, true, false}, t_Pair{0.0, 1e-15, false, true},
                    t_Pair{0.0, 1e-12, false, true},
                    // Infinities have an order but equal nothing.
                    t_Pair{kInf, kInf, false, false}, t_Pair{kMax, kInf, false, true},
                    t_Pair{-kInf, kInf, false, true}, t_Pair{kNan, kNan, false, false},
                    t_Pair{kNan, 0.0, false, false}, t_Pair{kNan, kInf, false, false}));

RC_GTEST_PROP(CMatConstants, AnyTwoFiniteNumbersHaveExactlyOneOrder, (double a))
{
    const double b = a * *rc::gen::element(1.0, 1.0 + 4e-16, 1.0 - 9e-16, 1.0 + 3e-15, -1.0);
    const int orders = CMatConstants::AreEqual(a, b) + CMatConstants::IsLess(a, b) +
                       CMatConstants::IsGreater(a, b);
    RC_ASSERT(orders == 1);
}

TEST(AdjustToResolution, MissesTheNearestMultiple)
{
    const struct
    {
        double value, resolution, expected;
    } rows[] = {
        {2.5, 1.0, 3.0},   {-2.5, 1.0, -3.0},  {2.4, 1.0, 2.0},     {7.0, 5.0, 5.0},
        {7.5, 5.0, 10.0},  {0.15, 0.1, 0.2},   {0.31, 0.1, 0.3},    {1.23456e-9, 1e-12, 1.235e-9},
        {0.7, 0.3, 0.6},   {-0.2, 1.0, 0.0},   {1.7, 0.0, 1.7},     {1.7, -1.0, 1.7},
        {1.7, kInf, 1.7},  {1.7, kNan, 1.7},   {kInf, 1.0, kInf},   {-kInf, 1.0, -kInf},
        {kNan, 1.0, kNan}, {kMax, 1e-3, kMax}, {kMax, 1e308, kMax}, {1e20, 0.3, 1e20},
        {1.0, kStep, 1.0}};
    for (const auto& [value, resolution, expected] : rows)
    {
        SCOPED_TRACE(testing::Message() << value << " to " << resolution);
        const double adjusted = CMatConstants::AdjustToResolution(value, resolution);
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(adjusted) : adjusted == expected) << adjusted;
        EXPECT_EQ(std::signbit(adjusted), std::signbit(expected));
    }
}

RC_GTEST_PROP(CMatConstants, ASecondAdjustmentChangesNothing, ())
{
    const double value = *rc::gen::inRange(-1000000, 1000000) * 0.37;
    const double resolution = *rc::gen::element(1e-12, 1e-3, 0.1, 0.25, 0.3, 1.0, 7.0, 1e6);
    const double once = CMatConstants::AdjustToResolution(value, resolution);
    RC_ASSERT(CMatConstants::AdjustToResolution(once, resolution) == once);
    RC_ASSERT(std::fabs(once - value) <= resolution * 0.5000001);
}
} // namespace
