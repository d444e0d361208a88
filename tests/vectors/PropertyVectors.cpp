// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Values/DbStepping.h"
#include "CommonDatabase/Values/NumberText.h"

#include <limits>

namespace NVectors
{
namespace
{
std::string Shown(const QString& text)
{
    return text.toStdString();
}

/** Whether the text is a T, and the text of what it was read as. */
template <typename T>
auto ReadAs(const std::string& text)
{
    T value{};
    const bool isRead = KW_TextToNumber(QString::fromStdString(text), value);
    return std::tuple{isRead, Shown(KW_NumberToText(value))};
}

template <typename T>
void AddIntegerSteps(t_Lines& lines)
{
    constexpr T kLow = std::numeric_limits<T>::lowest();
    constexpr T kHigh = std::numeric_limits<T>::max();
    const auto steps = [](T value, INT32 count)
    {
        bool linear = false;
        bool factor = false;
        bool ladder = false;
        const T a = NStepping::Linear<T>(value, 3, count, linear);
        const T b = NStepping::Factor<T>(value, 2.0, count, factor);
        const T c = NStepping::Ladder<T>(NStepping::kLadder125, value, count, ladder);
        return std::tuple(a, linear, b, factor, c, ladder);
    };
    const auto legal = [](T value, T resolution)
    {
        CDbPropNum<T> number;
        number.DeclareResolution(resolution);
        return number.GetNearestLegal(value);
    };
    for (const T value : {T{0}, T{1}, T{2}, T{5}, T{9}, T{99}, T{1000}, T{32000}, kLow, kHigh,
                          static_cast<T>(kHigh - 1), static_cast<T>(kHigh / 2), T(kLow / 2)})
    {
        Add(lines, "Step.Integer", kExact, steps, value, std::vector{1, -1, 3, -40});
        Add(lines, "Limit.Integer", kExact, legal, value, std::vector{T{1}, T{7}, T{1000}});
    }
}

void AddRealSteps(t_Lines& lines)
{
    const auto withOverflow = [](const auto& step)
    {
        return [&step](double value, auto... more)
        {
            bool overflow = false;
            const double next = step(value, more..., overflow);
            return std::tuple(next, overflow);
        };
    };
    const auto linear = withOverflow(NStepping::Linear<double>);
    const auto factor = withOverflow(NStepping::Factor<double>);
    const auto stepOnLadder = [](double value, INT32 count, bool& overflow)
    { return NStepping::Ladder(NStepping::kLadder125, value, count, overflow); };
    const auto ladder = withOverflow(stepOnLadder);
    const std::vector<double> values =
        AndNeighbours({1e-12, 1e-3, 2e-3, 5e-3, 0.1, 1.0, 2.5, 7.0, 10.0, 5e5, 1e9, 2e15});
    for (const double value : values)
    {
        for (const INT32 count : {1, -1, 4, -4})
        {
            Add(lines, "Step.Ladder", kExact, ladder, value, count);
            Add(lines, "Step.Linear", kExact, linear, value, 0.1, count);
            Add(lines, "Step.Factor", kTwoUlp, factor, -value, 1.25, count);
        }
    }
    for (const double value : {0.0, -3.0, 1e308, -1e308, 5e-324})
    {
        Add(lines, "Step.Linear", kExact, linear, value, 1e308, 1);
        Add(lines, "Step.Factor", kTwoUlp, factor, value, 1e3, 40);
        Add(lines, "Step.Factor", kTwoUlp, factor, value, 1e3, -2);
    }
}

void AddRealLimits(t_Lines& lines)
{
    const auto legal = [](double value, double resolution, double min, double max)
    {
        CDbPropNum<double> number;
        number.DeclareMinAndMax(min, max);
        number.DeclareResolution(resolution);
        return number.GetNearestLegal(value);
    };
    const auto numbers =
        Joined(AndNeighbours({0.05, 0.31, 2.675, -7.5, 1e-9}), Scattered(20, -20, 50));
    Add(lines, "Limit.Real", kExact, legal, Joined(Edges(), numbers),
        std::vector{0.0, 0.1, 1e-3, 0.25, 3.0}, -1.7, 1e6);
}
} // namespace

void AddNumberTexts(t_Lines& lines)
{
    const auto shown = [](double value) { return Shown(KW_NumberToText(value)); };
    const auto numbers = AndNeighbours({0.1, 1e-3, 1e21, 1e22, 1e23, 123456789.0, 5e-7});
    for (const double value : Joined(Joined(Edges(), numbers), Scattered(60, -1070, 1020)))
    {
        if (!std::isnan(value)) // is no value of a property
            Add(lines, "Text.Real", kExact, shown, value);
    }
    const auto read = [](const std::string& text)
    {
        return std::tuple_cat(ReadAs<INT16>(text), ReadAs<UINT16>(text), ReadAs<INT32>(text),
                              ReadAs<UINT32>(text), ReadAs<INT64>(text), ReadAs<UINT64>(text),
                              ReadAs<double>(text));
    };
    const QString texts =
        QStringLiteral("0 -0 +7 +-7 1.5 1e3 .5 5. 1e400 1e-400 -1 32767 32768 -32769 65535 65536 "
                       "2147483648 4294967295 4294967296 9223372036854775808 18446744073709551615 "
                       "18446744073709551616 0x10 inf  9007199254740993 2.2250738585072011e-308 "
                       "4.9e-324 2.4e-324 1e23 8.5e-45 0.1 1.7976931348623159e308");
    for (const QString& text : texts.split(u' '))
        Add(lines, "Text.Read", kExact, read, text.toStdString());
}

void AddLimitsAndSteps(t_Lines& lines)
{
    AddIntegerSteps<INT16>(lines);
    AddIntegerSteps<UINT16>(lines);
    AddIntegerSteps<INT32>(lines);
    AddIntegerSteps<UINT32>(lines);
    AddIntegerSteps<INT64>(lines);
    AddIntegerSteps<UINT64>(lines);
    AddRealSteps(lines);
    AddRealLimits(lines);
}
} // namespace NVectors
