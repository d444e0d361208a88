// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "FixedPoint.h"
#include "KWMath.h"
#include "MatConstants.h"

namespace NVectors
{
namespace
{
void AddConversions(t_Lines& lines)
{
    const auto all = Joined(
        Edges(), AndNeighbours({0x1p7, -0x1p7, 0x1p8, 0x1p15, -0x1p15, 0x1p16, 65535.5, 1e300}));
    for (const double value : all)
    {
        Add(lines, "KWMath::Round", kExact, KWMath::Round, value);
        const auto integers = [](double x)
        {
            return std::tuple{KWMath::ToInteger<INT8>(x),  KWMath::ToInteger<UINT8>(x),
                              KWMath::ToInteger<INT16>(x), KWMath::ToInteger<UINT16>(x),
                              KWMath::ToInteger<INT32>(x), KWMath::ToInteger<UINT32>(x),
                              KWMath::ToInteger<INT64>(x), KWMath::ToInteger<UINT64>(x)};
        };
        Add(lines, "KWMath::ToInteger", kExact, integers, value);
    }
}

void AddDecades(t_Lines& lines)
{
    for (int exponent = -330; exponent <= 310; exponent += (std::abs(exponent) < 26 ? 1 : 19))
    {
        const bool isTable = exponent >= -22 && exponent <= 22;
        Add(lines, "KWMath::Pow10", isTable ? kExact : kOneUlp, KWMath::Pow10, exponent);
    }
    Add(lines, "KWMath::DecimalProduct", kExact, KWMath::DecimalProduct,
        Joined(AndNeighbours({5e-7, 1e-6, 2e-6, 2e-14, 1.25e9}), Scattered(20, -40, 60)),
        std::vector{10.0, 0.02});
    Add(lines, "KWMath::DecimalSum", kExact, KWMath::DecimalSum,
        Joined(AndNeighbours({5e-7, 1e-6, 1.25e9}), Scattered(10, -40, 60)),
        std::vector{-4e-7, 0.02});
    std::vector<double> decades;
    for (const int exponent : Range(-22, 22))
        decades.push_back(KWMath::Pow10(exponent));
    Add(lines, "KWMath::DecimalExponent", kExact, KWMath::DecimalExponent,
        Joined(AndNeighbours(decades), Edges()));
    Add(lines, "KWMath::FloorToDecimalExponent", kExact, KWMath::FloorToDecimalExponent,
        Joined(Joined(AndNeighbours({3e-4, 3.7e6, 7e-9}), Edges()), Scattered(20, -40, 60)),
        std::vector{-6, 0, 5});
}

void AddAxes(t_Lines& lines)
{
    const struct
    {
        double start;
        double stop;
    } axes[] = {{10.0, 1e6}, {1e-3, 250e6}, {5.0, 5.0}, {100.0, 0.1}};
    for (const auto& axis : axes)
    {
        for (const double value : {0.0, -0.0, 1.0, 0.1, 0.3, 3.7, 1e4, 2e6, 1e-300, 1e300})
        {
            Add(lines, "KWMath::LinearPosition", kExact, KWMath::LinearPosition, value, axis.start,
                axis.stop);
            Add(lines, "KWMath::LinearValue", kExact, KWMath::LinearValue, value, axis.start,
                axis.stop);
        }
        // Two logarithms, of up to one unit each, and the quotient.
        Add(lines, "KWMath::LogarithmicPosition", kFourUlp, KWMath::LogarithmicPosition,
            std::vector{0.02, 20.0, 3e3, 1e4, 2e6, 7e7}, axis.start, axis.stop);
        Add(lines, "KWMath::LogarithmicValue", kTwoUlp, KWMath::LogarithmicValue,
            std::vector{0.0, 0.1, 0.5, 0.75, 1.0, 1.2}, axis.start, axis.stop);
    }
}

void AddComparisons(t_Lines& lines)
{
    const auto orders = [](double a, double b)
    {
        return std::tuple{CMatConstants::AreEqual(a, b), CMatConstants::IsLess(a, b),
                          CMatConstants::IsLessOrEqual(a, b), CMatConstants::IsGreater(a, b),
                          CMatConstants::IsGreaterOrEqual(a, b)};
    };
    for (const double a : Joined(Edges(), Scattered(10, -60, 60)))
    {
        for (const double factor : {1.0, 1.0 + 0x1p-50, 1.0 - 0x1p-50, 1.0 + 0x1.8p-50})
            Add(lines, "CMatConstants", kExact, orders, a, a * factor);
    }
    Add(lines, "CMatConstants::AdjustToResolution", kExact, CMatConstants::AdjustToResolution,
        Joined(Edges(), Scattered(30, -20, 40)), std::vector{0.1, 1e-3, 3.0});
}
} // namespace

void AddMath(t_Lines& lines)
{
    AddConversions(lines);
    AddDecades(lines);
    AddAxes(lines);
    AddComparisons(lines);
}

void AddFixedPoint(t_Lines& lines)
{
    const struct
    {
        UINT32 integerWidth;
        UINT32 fractionWidth;
    } words[] = {{8, 8}, {0, 32}, {16, 0}, {64, 0}, {32, 32}, {1, 63}, {0, 0}};
    const auto all = [](double value, UINT32 integer, UINT32 fraction)
    {
        const auto word = [=](auto sign, auto rounding, auto overflow)
        { return CFixedPoint(value, integer, fraction, sign, rounding, overflow).LSB(); };
        using t = CFixedPoint;
        constexpr auto kNearest = t::eROUNDING::Nearest;
        constexpr auto kTruncate = t::eROUNDING::Truncate;
        return std::tuple{word(t::eSIGN::Unsigned, kNearest, t::eOVERFLOW::Saturate),
                          word(t::eSIGN::Unsigned, kTruncate, t::eOVERFLOW::Wrap),
                          word(t::eSIGN::Signed, kNearest, t::eOVERFLOW::Wrap),
                          word(t::eSIGN::Signed, kTruncate, t::eOVERFLOW::Saturate)};
    };
    for (const double value : Joined(Edges(), Scattered(12, -40, 70)))
    {
        for (const auto& word : words)
            Add(lines, "CFixedPoint", kExact, all, value, word.integerWidth, word.fractionWidth);
    }
}
} // namespace NVectors
