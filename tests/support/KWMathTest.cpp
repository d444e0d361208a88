// SPDX-License-Identifier: MIT
#include "KWMath.h"
#include "FixedPoint.h"
#include "Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
template <typename T>
class ToInteger : public testing::Test
{
};
using IntegerTypes = testing::Types<INT32, UINT32, INT64, UINT64, UINT16>;
TYPED_TEST_SUITE(ToInteger, IntegerTypes);

TYPED_TEST(ToInteger, SaturatesWhereACastIsUndefined)
{
    using Limits = std::numeric_limits<TypeParam>;
    const double beyond = std::ldexp(1.0, Limits::digits);
    EXPECT_EQ(KWMath::ToInteger<TypeParam>(beyond), Limits::max());
    EXPECT_LE(KWMath::ToInteger<TypeParam>(Below(beyond)), Limits::max());
    EXPECT_GT(KWMath::ToInteger<TypeParam>(Below(beyond)), Limits::max() / 2);
    for (const double huge : {1e300, kInf})
    {
        EXPECT_EQ(KWMath::ToInteger<TypeParam>(huge), Limits::max());
        EXPECT_EQ(KWMath::ToInteger<TypeParam>(-huge), Limits::min());
    }
    EXPECT_EQ(KWMath::ToInteger<TypeParam>(kNan), 0);
    EXPECT_EQ(KWMath::ToInteger<TypeParam>(2.9), 2);
    EXPECT_EQ(KWMath::ToInteger<TypeParam>(-0.9), 0);
    EXPECT_EQ(KWMath::ToInteger<TypeParam>(-2.9), Limits::is_signed ? TypeParam(-2) : 0);
}

TEST(KWMath, RoundTakesHalvesAwayFromZero)
{
    EXPECT_EQ(KWMath::Round(0.5), 1.0);
    EXPECT_EQ(KWMath::Round(-2.5), -3.0);
    EXPECT_EQ(KWMath::Round(Below(0.5)), 0.0); // adding a half and cutting would give 1
    EXPECT_EQ(KWMath::Round(4503599627370497.0), 4503599627370497.0);
}

TEST(KWMath, TheLowerBoundIsComparedFirst)
{
    EXPECT_EQ(KWMath::Bound(1, 0, 5), 1);
    EXPECT_EQ(KWMath::Bound(1, 9, 5), 5);
    EXPECT_EQ(KWMath::Bound(5.0, 3.0, 1.0), 5.0);
    EXPECT_EQ(KWMath::Bound(5.0, 6.0, 1.0), 1.0);
}

TEST(KWMath, ADecadeStartsExactlyAtItsPowerOfTen)
{
    for (int exponent = -22; exponent <= 22; ++exponent)
    {
        const double decade = std::stod("1e" + std::to_string(exponent));
        EXPECT_EQ(KWMath::Pow10(exponent), decade);
        EXPECT_EQ(KWMath::DecimalExponent(decade), exponent);
        EXPECT_EQ(KWMath::DecimalExponent(-Below(decade)), exponent - 1) << decade;
    }
    for (int exponent = -307; exponent <= 308; ++exponent) // most of them not exact
        EXPECT_DOUBLE_EQ(KWMath::Pow10(exponent), std::stod("1e" + std::to_string(exponent)));
    for (const double value : {0.0, kInf, kNan})
        EXPECT_EQ(KWMath::DecimalExponent(value), 0);
}

TEST(KWMath, DecimalProductIsBesideTheDecimal)
{
    for (const char* const digit : {"1", "2", "5", "-3", "1.25"})
    {
        for (int exponent = -15; exponent <= 12; ++exponent)
        {
            const auto decimal = [digit](int e)
            { return std::stod(std::string(digit) + "e" + std::to_string(e)); };
            EXPECT_EQ(KWMath::DecimalProduct(decimal(exponent), 10.0), decimal(exponent + 1));
            EXPECT_EQ(KWMath::DecimalProduct(decimal(exponent), 1e-4), decimal(exponent - 4));
        }
    }
    for (const double plain : {Below(0.1), 1.0 / 3.0, 1e-30, 1e300, kInf})
        EXPECT_EQ(KWMath::DecimalProduct(plain, 10.0), plain * 10.0);
}

TEST(KWMath, DecimalSumIsBesideTheDecimal)
{
    EXPECT_EQ(KWMath::DecimalSum(5e-7, -4e-7), 1e-7);
    EXPECT_EQ(KWMath::DecimalSum(0.1, 0.2), 0.3);
    EXPECT_EQ(KWMath::DecimalSum(6.25e8, -1e-3), 624999999.999);
    EXPECT_EQ(KWMath::DecimalSum(-2e-22, 3e-22), 1e-22);
    for (const double plain : {Below(0.1), 1.0 / 3.0, 1e-30, 1e300, kInf})
        EXPECT_EQ(KWMath::DecimalSum(plain, -0.1), plain - 0.1);
}

TEST(KWMath, WholeDigitsSurviveTheFloorToAnExponent)
{
    for (int exponent = -9; exponent <= 12; ++exponent)
    {
        for (int digit = 1; digit <= 9; ++digit)
        {
            const double value = std::stod(std::to_string(digit) + "e" + std::to_string(exponent));
            EXPECT_EQ(KWMath::FloorToDecimalExponent(value, exponent), value);
            EXPECT_EQ(KWMath::FloorToDecimalExponent(value * 1.01, exponent), value);
            EXPECT_LT(KWMath::FloorToDecimalExponent(Below(value), exponent), value);
        }
    }
    EXPECT_EQ(KWMath::FloorToDecimalExponent(1e-310, -310), 1e-310);
    EXPECT_EQ(KWMath::FloorToDecimalExponent(kInf, 0), kInf);
}

TEST(KWMath, AxisTransformsUndoEachOtherAndHitTheEnds)
{
    EXPECT_DOUBLE_EQ(KWMath::LinearPosition(-5.0, -10.0, 10.0), 0.25);
    EXPECT_DOUBLE_EQ(KWMath::LogarithmicPosition(1e3, 10.0, 1e7), 1.0 / 3.0);
    for (const double position : {0.0, 0.1, 0.5, 1.0, 1.5})
    {
        const double linear = KWMath::LinearValue(position, 0.1, 0.3);
        const double logarithmic = KWMath::LogarithmicValue(position, 20.0, 3e4);
        EXPECT_NEAR(KWMath::LinearPosition(linear, 0.1, 0.3), position, 1e-14);
        EXPECT_NEAR(KWMath::LogarithmicPosition(logarithmic, 20.0, 3e4), position, 1e-14);
    }
    EXPECT_EQ(KWMath::LinearValue(1.0, 0.1, 0.7), 0.7);
    EXPECT_EQ(KWMath::LogarithmicValue(1.0, 0.3, 0.7), 0.7);
    EXPECT_EQ(KWMath::LinearPosition(3.0, 2.0, 2.0), 0.0);
    EXPECT_EQ(KWMath::LogarithmicPosition(3.0, 2.0, 2.0), 0.0);
}

using Fixed = CFixedPoint;

struct t_Word
{
    double value;
    UINT32 integerWidth;
    UINT32 fractionWidth;
    Fixed::eSIGN sign;
    Fixed::eROUNDING rounding;
    Fixed::eOVERFLOW overflow;
    UINT64 expected;
};

class FixedPoint : public testing::TestWithParam<t_Word>
{
};

TEST_P(FixedPoint, GivesTheWord)
{
    const t_Word& row = GetParam();
    EXPECT_EQ(
        Fixed(row.value, row.integerWidth, row.fractionWidth, row.sign, row.rounding, row.overflow)
            .LSB(),
        row.expected);
}

constexpr auto kU = Fixed::eSIGN::Unsigned;
constexpr auto kS = Fixed::eSIGN::Signed;
constexpr auto kNear = Fixed::eROUNDING::Nearest;
constexpr auto kCut = Fixed::eROUNDING::Truncate;
constexpr auto kSat = Fixed::eOVERFLOW::Saturate;
constexpr auto kWrap = Fixed::eOVERFLOW::Wrap;

INSTANTIATE_TEST_SUITE_P(
    Words, FixedPoint,
    testing::Values(
        t_Word{0.0078125, 0, 8, kU, kNear, kSat, 2}, t_Word{1.5 / 256, 0, 8, kU, kNear, kSat, 2},
        t_Word{1.5 / 256, 0, 8, kU, kCut, kSat, 1}, t_Word{1.0, 0, 8, kU, kNear, kSat, 255},
        t_Word{-0.1, 0, 8, kU, kNear, kSat, 0}, t_Word{1.0, 0, 8, kU, kNear, kWrap, 0},
        t_Word{255.5 / 256, 0, 8, kU, kNear, kWrap, 0},
        t_Word{-1.0 / 256, 0, 8, kU, kNear, kWrap, 255}, t_Word{-3.25, 0, 8, kU, kNear, kWrap, 192},
        t_Word{0.75, 0, 32, kU, kNear, kSat, 0xC0000000}, t_Word{-1.5, 4, 4, kS, kNear, kSat, 0xE8},
        t_Word{-1.53125, 4, 4, kS, kNear, kSat, 0xE7}, t_Word{-1.53125, 4, 4, kS, kCut, kSat, 0xE8},
        t_Word{100.0, 4, 4, kS, kNear, kSat, 0x7F}, t_Word{-100.0, 4, 4, kS, kNear, kSat, 0x80},
        t_Word{8.0, 4, 4, kS, kNear, kWrap, 0x80}, t_Word{1e30, 64, 0, kU, kNear, kSat, ~UINT64{0}},
        t_Word{-1e30, 64, 0, kS, kNear, kSat, UINT64{1} << 63},
        t_Word{-1.0, 64, 64, kU, kNear, kWrap, 0}, t_Word{kNan, 8, 8, kU, kNear, kSat, 0},
        t_Word{kInf, 8, 8, kU, kNear, kSat, 0xFFFF}, t_Word{kInf, 8, 8, kU, kNear, kWrap, 0},
        t_Word{1.0, 0, 0, kS, kNear, kSat, 0}));
} // namespace
