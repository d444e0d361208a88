// SPDX-License-Identifier: MIT
#include "LabelList/LabelListConversion.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <locale>
#include <string>

namespace
{
enum e_Type : INT32
{
    Unsigned,
    Enum,
    Signed,
    Float
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
