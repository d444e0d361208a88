// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include <QRegularExpression>
#include <algorithm>
#include <bit>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>
#include <sstream>

namespace NVectors
{
const std::vector<double>& Edges()
{
    using t_Double = std::numeric_limits<double>;
    static const std::vector<double> edges = Joined(
        AndNeighbours(
            {0.0, 0.5, 1.0, -1.0, 2.5, 0x1p31, -0x1p31, 0x1p32, 0x1p53, 0x1p63, -0x1p63, 0x1p64}),
        {-0.0, t_Double::denorm_min() * 3, t_Double::min(), t_Double::max(), t_Double::lowest(),
         t_Double::infinity(), -t_Double::infinity(), t_Double::quiet_NaN()});
    return edges;
}

std::vector<double> AndNeighbours(const std::vector<double>& values)
{
    const double infinity = std::numeric_limits<double>::infinity();
    std::vector<double> all;
    for (const double value : values)
    {
        all.insert(all.end(),
                   {std::nextafter(value, -infinity), value, std::nextafter(value, infinity)});
    }
    return all;
}

std::vector<double> Joined(std::vector<double> first, const std::vector<double>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::vector<int> Range(int first, int last)
{
    std::vector<int> numbers(static_cast<std::size_t>(last - first + 1));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

std::vector<double> Scattered(int count, int lowest, int highest)
{
    // The standard prescribes the generator's numbers, but not those of its distributions.
    std::mt19937_64 generator(count);
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
    {
        const UINT64 bits = generator();
        const double mantissa = 1.0 + static_cast<double>(bits >> 12) * 0x1p-52;
        const double value = std::ldexp(mantissa, lowest + (highest - lowest) * i / count);
        values.push_back((bits & 1) != 0 ? -value : value);
    }
    return values;
}

std::set<std::string>& Allocating()
{
    static std::set<std::string> names;
    return names;
}

std::string Told(const CReports& reports)
{
    // Compilers spell signatures differently.
    static const QRegularExpression kFunction(
        QStringLiteral("C\\w+::(operator\\(\\)|\\w+)(?=\\()"));
    std::string told;
    for (const KW_ErrorReport& report : reports.All())
    {
        const QString function = kFunction.match(report.function).captured();
        told += report.type == e_KW_MESSAGE_TYPE_ERROR ? " ! " : " ? ";
        told +=
            (report.message + QStringLiteral(" @ ") + report.file + u' ' + function).toStdString();
    }
    return told;
}

namespace
{
t_Lines AllLines()
{
    t_Lines lines;
    for (const auto add : {AddMath, AddFixedPoint, AddTimebase, AddVertical, AddFFT, AddDDC,
                           AddProbesAndMeter, AddApplication, AddUnits, AddHarmonics, AddLabels,
                           AddNumberTexts, AddLimitsAndSteps, AddCurves})
    {
        add(lines);
    }
    return lines;
}

t_Lines Read(const std::string& path)
{
    std::ifstream file(path);
    t_Lines lines;
    for (std::string line; std::getline(file, line);)
    {
        if (!line.starts_with('#'))
            lines.push_back(line);
    }
    return lines;
}

void Write(const std::string& path, const t_Lines& lines)
{
    std::ofstream file(path);
    file << "# SPDX-License-Identifier: MIT\n"
            "# function, slack, arguments, \"=\", results: see tests/vectors/Vectors.h\n";
    for (const std::string& line : lines)
        file << line << '\n';
}

/** Whole numbers that are in the order of the doubles and have no gaps. */
INT64 Place(double value)
{
    const auto bits = std::bit_cast<INT64>(value);
    return bits < 0 ? std::numeric_limits<INT64>::min() - bits : bits;
}

bool AreClose(const std::string& slack, const std::string& a, const std::string& b)
{
    const auto read = [](const std::string& text, double& value)
    {
        const char* const end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, value, std::chars_format::hex);
        return result.ec == std::errc{} && result.ptr == end && std::isfinite(value);
    };
    double first = 0.0;
    double second = 0.0;
    if (a == b || slack == kExact || !read(a, first) || !read(b, second))
        return a == b;
    if (slack == kUnit)
        return std::fabs(first - second) <= 0x1p-50;
    const INT64 low = std::min(Place(first), Place(second));
    const INT64 high = std::max(Place(first), Place(second));
    return static_cast<UINT64>(high) - static_cast<UINT64>(low) <= std::stoull(slack);
}

/** Function, slack and arguments must be the same text, results within the slack. */
bool Agree(const std::string& expected, const std::string& present)
{
    std::istringstream left(expected);
    std::istringstream right(present);
    std::string a;
    std::string b;
    std::string slack;
    for (int field = 0; left >> a; ++field)
    {
        const bool isResult = expected.find(" = ") < static_cast<std::size_t>(left.tellg());
        if (!(right >> b) || !(isResult ? AreClose(slack, a, b) : a == b))
            return false;
        slack = field == 1 ? a : slack;
    }
    return !(right >> b);
}

TEST(Vectors, APlatformComputesSomethingElse)
{
    const t_Lines present = AllLines();
    const t_Lines expected = Read(KWI_VECTORS);
    if (const char* const path = std::getenv("KWI_WRITE_VECTORS"))
        Write(path, present);
    ASSERT_GT(expected.size(), 1000u) << KWI_VECTORS;
    for (std::size_t i = 0; i < std::min(present.size(), expected.size()); ++i)
        EXPECT_TRUE(Agree(expected[i], present[i])) << expected[i] << "\nhere: " << present[i];
    EXPECT_EQ(present.size(), expected.size());
}

TEST(Vectors, TheNormalPathAllocates)
{
    AllLines();
    std::set<std::string> allocating = Allocating();
    EXPECT_EQ(allocating.erase("Label.getPhysicalValue"), 1U) << "what answers texts allocates";
    for (const char* const mayDo :
         {"FFT.GetWindowFunction", "Harmonic.OfStandard", "Label.getRawValue", "Unit.OfQuantity",
          "Unit.OfTime", "Unit.ProductAndQuotient", "Meter.Block", "Meter.Path", "Text.Real",
          "Text.Read", "Limit.Integer", "Limit.Real"})
        allocating.erase(mayDo);
    EXPECT_EQ(allocating, std::set<std::string>());
}

TEST(Vectors, TheComparisonPassesWhatItMustNot)
{
    EXPECT_TRUE(Agree("f 1 2p+0 = 1p+0 x", "f 1 2p+0 = 1.0000000000001p+0 x"));
    EXPECT_TRUE(Agree("f 1 2p+0 = 0p+0", "f 1 2p+0 = -0p+0"));
    EXPECT_TRUE(Agree("f unit 2p+0 = 1p-60", "f unit 2p+0 = -1p-60"));
    for (const char* const wrong :
         {"f 1 2p+0 = 1.0000000000002p+0 x", "f 0 2p+0 = 1p+0 x", "f 1 2p+0 = 1p+0 y",
          "f 1 2p+0 = 1p+0", "f 1 2p+0 = 1p+0 x x", "f 1 2.0000000000001p+0 = 1p+0 x", "",
          "f 1 2p+0 = inf x", "f 1 2p+0 = nan x"})
        EXPECT_FALSE(Agree("f 1 2p+0 = 1p+0 x", wrong)) << wrong;
    EXPECT_FALSE(Agree("f 0 2p+0 = 1p+0", "f 0 2p+0 = 1.0000000000001p+0"));
    EXPECT_FALSE(Agree("f unit 2p+0 = 1p-40", "f unit 2p+0 = -1p-40"));
}
} // namespace
} // namespace NVectors
