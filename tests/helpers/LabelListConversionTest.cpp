// SPDX-License-Identifier: MIT
#include "LabelList/LabelListConversion.h"
#include "Numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <boost/numeric/conversion/cast.hpp>
#include <clocale>
#include <cmath>
#include <locale>
#include <stdexcept>
#include <string>

namespace
{
enum e_Type : INT32
{
    Unsigned,
    Enum,
    Signed,
    Float,
    Double,
    Illegal
};

KW_SIGNAL_TRANSLATION_VALUE_TYPE As(INT32 type)
{
    return static_cast<KW_SIGNAL_TRANSLATION_VALUE_TYPE>(type);
}

std::string Raw(double physical, int bitLength, INT32 type, double factor = 1.0,
                double offset = 0.0)
{
    return getRawValue(physical, static_cast<UINT16>(bitLength), As(type), factor, offset);
}

std::string Repeat(std::size_t count, char digit)
{
    return std::string(count, digit);
}

TEST(LabelListRaw, HasWrongBits)
{
    const struct
    {
        double physical;
        int bitLength;
        INT32 type;
        double factor, offset;
        std::string bits;
    } rows[] = {{5.0, 8, Unsigned, 1.0, 0.0, "00000101"},
                {5.0, 8, Enum, 1.0, 0.0, "00000101"},
                {5.0, 8, Unsigned, 0.0, 0.0, "XXXXXXXX"},
                {5.0, 8, Unsigned, -0.0, 0.0, "XXXXXXXX"},
                {5.0, 3, Illegal, 1.0, 0.0, "XXX"},
                {5.0, 3, -1, 1.0, 0.0, "XXX"},
                {30.0, 4, Unsigned, 2.0, 10.0, "1010"},
                {2.5, 4, Unsigned, 1.0, 0.0, "0011"}, // halves away from zero
                {2.4999999, 4, Unsigned, 1.0, 0.0, "0010"},
                {-2.5, 4, Signed, 1.0, 0.0, "1101"},
                {-0.4, 4, Unsigned, 1.0, 0.0, "0000"},
                {65535.4, 20, Unsigned, 1.0, 0.0, "00001111111111111111"},
                {0x1235, 8, Unsigned, 1.0, 0.0, "00110101"}, // the low digits
                {5.0, 0, Unsigned, 1.0, 0.0, "0000000000000101"},
                {5.0, 0, Signed, 1.0, 0.0, ""},
                {-1.0, 8, Signed, 1.0, 0.0, "11111111"},
                {-2147483648.0, 33, Signed, 1.0, 0.0, "11" + Repeat(31, '0')},
                {2147483647.4, 32, Signed, 1.0, 0.0, "0" + Repeat(31, '1')},
                {-1.0, 64, Signed, 1.0, 0.0, Repeat(64, '1')},
                {1.0, 16, Float, 1.0, 0.0, Repeat(16, 'X')},
                {1.0, 64, Float, 1.0, 0.0, Repeat(64, 'X')},
                {1.0, 32, Float, 1.0, 0.0, "001111111" + Repeat(23, '0')},
                {-5.0, 32, Float, 2.0, 0.0, "110000000010" + Repeat(20, '0')}, // −2.5, not rounded
                {3.4028234663852886e38, 32, Float, 1.0, 0.0,
                 "01111111"
                 "0" +
                     Repeat(23, '1')},
                {1.0, 32, Double, 1.0, 0.0, Repeat(32, 'X')},
                {1.0, 64, Double, 1.0, 0.0, Repeat(64, '0')}, // all of 1.0 is in the high half
                {std::bit_cast<double>(UINT64{0x3FF0000000000005}), 64, Double, 1.0, 0.0,
                 Repeat(61, '0') + "101"},
                {std::bit_cast<double>(UINT64{0x3FF0000080000000}), 64, Double, 1.0, 0.0,
                 Repeat(33, '1') + Repeat(31, '0')},
                {kInf, 64, Double, 1.0, 0.0, Repeat(64, '0')}};
    for (const auto& [physical, bitLength, type, factor, offset, bits] : rows)
        EXPECT_EQ(Raw(physical, bitLength, type, factor, offset), bits)
            << physical << " in " << bitLength << " bits of type " << type;
}

TEST(LabelListRaw, WrapsInsteadOfThrowing)
{
    using positive = boost::numeric::positive_overflow;
    using negative = boost::numeric::negative_overflow;
    for (const INT32 type : {Unsigned, Enum})
    {
        EXPECT_EQ(Raw(65535.49, 16, type), Repeat(16, '1'));
        EXPECT_THROW(Raw(65535.5, 16, type), positive);
        EXPECT_THROW(Raw(70000.0, 32, type), positive);
        EXPECT_EQ(Raw(-0.49, 16, type), Repeat(16, '0'));
        EXPECT_THROW(Raw(-0.5, 16, type), negative);
        EXPECT_THROW(Raw(kNan, 16, type), positive);
    }
    EXPECT_THROW(Raw(2147483647.5, 32, Signed), positive);
    EXPECT_EQ(Raw(-2147483648.4, 32, Signed), "1" + Repeat(31, '0'));
    EXPECT_THROW(Raw(-2147483648.5, 32, Signed), negative);
    EXPECT_THROW(Raw(1.0, 16, Signed, 1e-320), positive);
    EXPECT_THROW(Raw(kNan, 16, Signed), positive);
    EXPECT_THROW(Raw(std::nextafter(3.4028234663852886e38, kInf), 32, Float), positive);
    EXPECT_THROW(Raw(-3.5e38, 32, Float), negative);
    EXPECT_THROW(Raw(-kInf, 32, Float), negative);
    EXPECT_THROW(Raw(kNan, 32, Float), positive);
    EXPECT_THROW(Raw(70000.0, 16, Unsigned, 1.0, kInf), negative);
    // The range comes before the length.
    EXPECT_THROW(Raw(1e10, 65, Signed), positive);
    try
    {
        Raw(1.0, 65, Signed);
        ADD_FAILURE() << "65 bits of a signed integer are taken";
    }
    catch (const std::out_of_range& error)
    {
        EXPECT_EQ(std::string(error.what()).rfind("basic_string::substr", 0), 0U);
    }
}

TEST(LabelListPhysical, HasWrongText)
{
    const std::string one = "001111111" + Repeat(23, '0');
    const struct
    {
        std::string bits;
        INT32 type;
        double factor, offset;
        std::string text;
    } rows[] = {
        {"00000101", Unsigned, 2.0, 10.0, "20"},
        {"101", Enum, 1.0, 0.0, "5"},
        {"101", Illegal, 1.0, 0.0, "???"},
        {"101", -1, 1.0, 0.0, "???"},
        {"", Unsigned, 2.0, 10.0, "10"},
        {"", Signed, 2.0, 10.0, "10"},
        {"11X1", Unsigned, 1.0, 0.0, "3"},
        {"-1", Unsigned, 1.0, 0.0, "0"},
        {" 1", Unsigned, 1.0, 0.0, "0"},
        {"0b1", Unsigned, 1.0, 0.0, "0"},
        {"1X", Signed, 1.0, 0.0, "-1"}, // anything but "0" complements to "0"
        {"12", Signed, 1.0, 0.0, "-1"},
        {Repeat(31, '1'), Unsigned, 1e-9, 0.0, "2.14748"},
        {Repeat(32, '1'), Unsigned, 1.0, -2147483646.0, "1"}, // saturates at 2147483647
        {"1" + Repeat(31, '0'), Unsigned, 1.0, -2147483646.0, "1"},
        {Repeat(40, '0') + "111", Unsigned, 1.0, 0.0, "7"}, // leading zeros are not significant
        {"1" + Repeat(63, '0'), Enum, 1.0, -2147483646.0, "1"},
        {"11111111", Signed, 2.0, 10.0, "-12"}, // the sign takes the offset with it
        {"01111111", Signed, 2.0, 10.0, "264"},
        {"10000000", Signed, 1.0, 0.0, "-128"},
        {"1" + Repeat(31, '0'), Signed, 1.0, -2147483640.0, "-8"}, // 2147483647 + 1, unsigned
        {"1" + Repeat(40, '0'), Signed, 1.0, -2147483640.0, "-8"},
        {one, Float, 1.0, 0.0, "1"},
        {one, Float, 2.0, 10.0, "12"},
        {one.substr(1), Float, 1.0, 0.0, "???"},
        {one + "0", Float, 1.0, 0.0, "???"},
        {"1"
         "10000000"
         "01" +
             Repeat(21, '0'),
         Float, 1.0, 0.0, "-2.5"},
        {Repeat(32, '0'), Float, 1.0, 0.0, "5.87747e-39"}, // 2^−127: there is no zero
        {"1" + Repeat(31, '0'), Float, 1.0, 0.0, "-5.87747e-39"},
        {"011111110" + Repeat(23, '1'), Float, 1.0, 0.0, "3.40282e+38"},
        {Repeat(31, '0') + "1", Float, 0x1p127, -1.0, "0"}, // 24 digits do not fit a denormal
        {"0"
         "01111111111" +
             Repeat(52, '0'),
         Double, 3.0, 1.0, "4"},
        {"1"
         "10000000000" +
             Repeat(52, '0'),
         Double, 1.0, 0.0, "-2"},
        {Repeat(63, '0'), Double, 1.0, 0.0, "???"},
        {"0"
         "01111111111"
         "1" +
             Repeat(51, '0'),
         Double, 0x1p52, -0x1p52, "2.14748e+09"},
        {"0"
         "01111111111" +
             Repeat(50, '0') + "11",
         Double, 0x1p52, -0x1p52, "3"},
        {Repeat(64, '0'), Double, 0x1p1000, 0.0, "1.19209e-07"},
        {"0" + Repeat(11, '1') + Repeat(52, '0'), Double, 1.0, 0.0, "inf"},
        {"1" + Repeat(11, '1') + Repeat(52, '0'), Double, 0.0, 0.0, "nan"},
        {"1", Unsigned, 123456.5, 0.0, "123456"},
        {"1", Unsigned, 1234567.0, 0.0, "1.23457e+06"},
        {"1", Unsigned, 0.0001, 0.0, "0.0001"},
        {"1", Unsigned, 0.00001, 0.0, "1e-05"}};
    for (const auto& [bits, type, factor, offset, text] : rows)
        EXPECT_EQ(getPhysicalValue(bits, As(type), factor, offset), text)
            << bits << " of type " << type;
}

TEST(LabelListPhysical, TakesFloatBeyondSinglePrecision)
{
    for (const std::string sign : {"0", "1"})
    {
        const std::string bits = sign + Repeat(8, '1') + Repeat(23, '0');
        EXPECT_THROW(getPhysicalValue(bits, As(Float), 1.0, 0.0),
                     boost::numeric::positive_overflow);
    }
}

class CCommaDecimals : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
};

TEST(LabelListPhysical, FollowsLocale)
{
    const std::locale previous =
        std::locale::global(std::locale(std::locale::classic(), new CCommaDecimals));
    EXPECT_EQ(getPhysicalValue("1", As(Unsigned), 0.5, 0.0), "0.5");
    std::locale::global(previous);
}

RC_GTEST_PROP(LabelListRoundTrip, LosesInteger, (UINT16 value, bool enumeration))
{
    const INT32 type = enumeration ? Enum : Unsigned;
    const int length = *rc::gen::inRange(16, 200);
    const std::string bits = Raw(value * 0.5 - 3.0, length, type, 0.5, -3.0);
    RC_ASSERT(bits.size() == static_cast<std::size_t>(length));
    RC_ASSERT(getPhysicalValue(bits, As(type), 1.0, 0.0) ==
              getPhysicalValue(Raw(value, 16, type), As(type), 1.0, 0.0));
    RC_ASSERT(std::stoul(bits, nullptr, 2) == value);
}

RC_GTEST_PROP(LabelListRoundTrip, LosesSignedInteger, ())
{
    const int length = *rc::gen::inRange(21, 65);
    const int value = *rc::gen::inRange(-999999, 1000000); // six digits survive as text
    const std::string bits = Raw(value, length, Signed);
    RC_ASSERT(bits.size() == static_cast<std::size_t>(length));
    RC_ASSERT(getPhysicalValue(bits, As(Signed), 1.0, 0.0) == std::to_string(value));
}

RC_GTEST_PROP(LabelListRoundTrip, LosesFloat, (bool negative))
{
    const int value = *rc::gen::inRange(1, 100000);
    const double physical = (negative ? -1.0 : 1.0) * value * 0.25;
    const std::string bits = Raw(physical, 32, Float);
    const auto pattern = static_cast<UINT32>(std::stoul(bits, nullptr, 2));
    RC_ASSERT(std::bit_cast<float>(pattern) == static_cast<float>(physical));
    RC_ASSERT(std::stod(getPhysicalValue(bits, As(Float), 4.0, 0.0)) ==
              (negative ? -value : value));
}
} // namespace
