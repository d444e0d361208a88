// SPDX-License-Identifier: MIT
// Columns against a naive search of each, on random records of all formats.
#include "streams/TestStream.h"

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace
{
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/** A point as numbers; NaN where it is invalid. */
struct t_Point
{
    double low;
    double high;
};

/** Random entries of a format, every eighth or so invalid, in long and short runs. */
template <class T>
std::vector<T> RandomEntries(std::mt19937& random, std::size_t count, T invalid, UINT32 stride)
{
    std::vector<T> entries(count * stride);
    std::uniform_int_distribution<int> value(-30000, 30000);
    for (std::size_t i = 0; i < count;)
    {
        const bool isInvalid = random() % 8 == 0;
        const std::size_t run = random() % (random() % 4 == 0 ? 3000 : 5) + 1;
        for (const std::size_t end = std::min(count, i + run); i < end; ++i)
        {
            for (UINT32 k = 0; k < stride; ++k)
            {
                entries[i * stride + k] = isInvalid ? invalid : static_cast<T>(value(random));
            }
            if (stride == 2 && entries[2 * i] > entries[2 * i + 1])
            {
                std::swap(entries[2 * i], entries[2 * i + 1]);
            }
        }
    }
    return entries;
}

KW_MinMax NaiveColumn(const std::vector<t_Point>& points, const KW_TraceInfo& info, double first,
                      double count, std::size_t column, std::size_t columns)
{
    const auto n = static_cast<double>(columns);
    const double left = std::floor(first + count * static_cast<double>(column) / n);
    const double right = std::floor(first + count * static_cast<double>(column + 1) / n);
    KW_MinMax found{kNaN, kNaN};
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        const auto at = static_cast<double>(i);
        if (at >= left && at <= right && at < first + count)
        {
            found.minimum = std::fmin(found.minimum, points[i].low);
            found.maximum = std::fmax(found.maximum, points[i].high);
        }
    }
    found = {found.minimum * info.scale + info.offset, found.maximum * info.scale + info.offset};
    return info.scale < 0 ? KW_MinMax{found.maximum, found.minimum} : found;
}

bool IsSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

void ExpectNaive(const CKWRecord& record, const std::vector<t_Point>& points, double first,
                 double count, std::size_t columns)
{
    SCOPED_TRACE(testing::Message() << points.size() << " points, from " << first << ", " << count
                                    << " in " << columns << " columns");
    std::vector<KW_MinMax> found(columns);
    ASSERT_EQ(record.GetColumns(0, first, count, found, eKW_ZEL_INTERPOLATION_MODE_SAMPLE_HOLD),
              eKW_ACC_OK);
    for (std::size_t i = 0; i < columns; ++i)
    {
        const KW_MinMax naive = NaiveColumn(points, record.GetTrace(0), first, count, i, columns);
        ASSERT_TRUE(IsSame(found[i].minimum, naive.minimum) &&
                    IsSame(found[i].maximum, naive.maximum))
            << "column " << i << ": " << found[i].minimum << " to " << found[i].maximum
            << ", naive " << naive.minimum << " to " << naive.maximum;
    }
}

/** Whole, and parts, at integer and at odd positions, beyond both ends. */
void ExpectNaiveEverywhere(const CKWRecord& record, const std::vector<t_Point>& points,
                           std::mt19937& random)
{
    const auto size = static_cast<double>(points.size());
    ExpectNaive(record, points, 0, size, 1);
    ExpectNaive(record, points, 0, size, std::min<std::size_t>(points.size(), 13));
    ExpectNaive(record, points, -size / 3, 2 * size, 11);
    std::uniform_real_distribution<double> place(-0.1 * size, size);
    for (int i = 0; i < 6; ++i)
    {
        const double first = i % 2 == 0 ? place(random) : std::floor(place(random));
        const double count = i % 3 == 0 ? 1.0 + size * std::pow(double(random() % 1000) / 1e3, 3)
                                        : 1.0 + double(random() % points.size());
        ExpectNaive(record, points, first, count, 1 + random() % 9);
    }
}

std::vector<std::size_t> Lengths(std::mt19937& random)
{
    std::vector<std::size_t> lengths = {1,    2,    3,     7,     8,     63,    64,      65,
                                        191,  192,  193,   1023,  1024,  1025,  16383,   16384,
                                        3072, 3071, 16385, 49152, 65536, 99999, 1000000, 262144};
    for (int i = 0; i < 60; ++i)
    {
        lengths.push_back(1 + random() % (1U << (random() % 17)));
    }
    return lengths;
}

template <class T>
t_Point PointOf(const std::vector<T>& entries, std::size_t i, T invalid, UINT32 stride)
{
    const T low = entries[stride * i];
    const T high = entries[stride * i + stride - 1];
    return low == invalid || low != low ? t_Point{kNaN, kNaN} : t_Point{double(low), double(high)};
}

template <class T>
void TestFormat(KW_SAMPLE_FORMAT format, T invalid, UINT32 stride)
{
    std::mt19937 random(17);
    CTestStream stream(16U << 20U);
    const auto reader = stream.Reader();
    for (const std::size_t length : Lengths(random))
    {
        ASSERT_TRUE(KW_IsAccepted(
            stream.Configure({{format, static_cast<UINT32>(length + random() % 70)}}, 1)));
        const std::vector<T> entries = RandomEntries<T>(random, length, invalid, stride);
        KW_TraceInfo info = CTestStream::Info(format, length);
        info.scale = random() % 2 == 0 ? 0.25 : -0.125;
        info.offset = 3.0;
        // In uneven pieces, as an acquisition delivers them.
        for (std::size_t done = 0; done < length;)
        {
            const std::size_t piece = std::min<std::size_t>(length - done, 1 + random() % 40000);
            const auto room = stream.Writer().Reserve(0);
            ASSERT_FALSE(room.empty());
            std::memcpy(room.data(), &entries[done * stride], piece * stride * sizeof(T));
            ASSERT_EQ(stream.Writer().Advance(0, static_cast<UINT32>(piece)), eKW_ACC_OK);
            done += piece;
        }
        ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}), eKW_ACC_OK);
        std::vector<t_Point> points(length);
        for (std::size_t i = 0; i < length; ++i)
        {
            points[i] = PointOf<T>(entries, i, invalid, stride);
        }
        ExpectNaiveEverywhere(reader->GetLatest(), points, random);
        if (testing::Test::HasFatalFailure())
        {
            return;
        }
    }
}
} // namespace

TEST(Columns, AreThoseOfANaiveSearchInEveryFormat)
{
    TestFormat<INT16>(eKW_SAMPLES_INT16, std::numeric_limits<INT16>::min(), 1);
    TestFormat<float>(eKW_SAMPLES_FLOAT, std::numeric_limits<float>::quiet_NaN(), 1);
    TestFormat<INT16>(eKW_SAMPLES_MINMAX, std::numeric_limits<INT16>::min(), 2);
}

TEST(Columns, OfDigitalLinesAreThoseOfANaiveSearch)
{
    std::mt19937 random(18);
    CTestStream stream;
    const auto reader = stream.Reader();
    for (int round = 0; round < 60; ++round)
    {
        const std::size_t length = 1 + random() % (1U << (random() % 17));
        ASSERT_TRUE(
            KW_IsAccepted(stream.Configure({{eKW_SAMPLES_LINES, static_cast<UINT32>(length)}}, 1)));
        std::vector<UINT8> points(length);
        for (UINT8& point : points)
        {
            point = static_cast<UINT8>(random() % 200 == 0 ? random() : 0x35);
        }
        const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_LINES, length);
        ASSERT_TRUE(stream.Fill(0, points));
        ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}), eKW_ACC_OK);
        std::array<KW_LineStates, 7> found{};
        const CKWRecord record = reader->GetLatest();
        const auto size = static_cast<double>(length);
        ASSERT_EQ(record.GetLines(0, 0, size, found), eKW_ACC_OK);
        for (std::size_t i = 0; i < found.size(); ++i)
        {
            KW_LineStates naive{0xFF, 0};
            const auto last = std::min<std::size_t>(length * (i + 1) / 7, length - 1);
            for (std::size_t k = length * i / 7; k <= last; ++k)
            {
                naive.always &= points[k];
                naive.once |= points[k];
            }
            ASSERT_EQ(found[i].always, naive.always) << length << ", column " << i;
            ASSERT_EQ(found[i].once, naive.once) << length << ", column " << i;
        }
    }
}

TEST(Columns, OfAGrowingRecordEndWhereTheViewEnds)
{
    std::mt19937 random(19);
    CTestStream stream;
    const auto reader = stream.Reader();
    constexpr UINT32 kLength = 60000;
    stream.Configure({{eKW_SAMPLES_INT16, kLength}}, 1);
    const auto entries =
        RandomEntries<INT16>(random, kLength, std::numeric_limits<INT16>::min(), 1);
    const KW_TraceInfo info = CTestStream::Info(eKW_SAMPLES_INT16, kLength);
    std::vector<CKWRecord> views;
    for (UINT32 done = 0; done < kLength;)
    {
        const UINT32 piece =
            std::min<UINT32>(kLength - done, 1 + static_cast<UINT32>(random() % 9000));
        const auto room = stream.Writer().Reserve(0);
        std::memcpy(room.data(), &entries[done], piece * sizeof(INT16));
        ASSERT_EQ(stream.Writer().Advance(0, piece), eKW_ACC_OK);
        done += piece;
        ASSERT_EQ(stream.Writer().Publish({}, {&info, 1}, done < kLength), eKW_ACC_OK);
        ASSERT_TRUE(reader->HasNew());
        views.push_back(reader->GetNext());
        ASSERT_EQ(views.back().GetTrace(0).count, done);
        ASSERT_FALSE(reader->HasNew());
        ASSERT_FALSE(reader->GetNext());
    }
    for (const CKWRecord& view : views) // when the record is whole
    {
        std::vector<t_Point> points(view.GetTrace(0).count);
        for (std::size_t i = 0; i < points.size(); ++i)
        {
            points[i] = PointOf<INT16>(entries, i, std::numeric_limits<INT16>::min(), 1);
        }
        ExpectNaiveEverywhere(view, points, random);
    }
}

namespace
{
std::vector<KW_MinMax> Curve(const CKWRecord& record, double first, double count,
                             std::size_t columns, KW_ZEL_INTERPOLATION_MODE mode)
{
    std::vector<KW_MinMax> found(columns);
    EXPECT_EQ(record.GetColumns(0, first, count, found, mode), eKW_ACC_OK);
    return found;
}
} // namespace

TEST(Columns, BetweenPointsAreWhatTheInterpolationSays)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 4}}, 1);
    stream.Publish({0, 100, 40, 40});
    const CKWRecord record = reader->GetLatest();
    const auto line = Curve(record, 0, 4, 8, eKW_ZEL_INTERPOLATION_MODE_LINEAR);
    const std::vector<std::pair<double, double>> lines = {{0, 50},  {50, 100}, {70, 100}, {40, 70},
                                                          {40, 40}, {40, 40},  {40, 40}};
    for (std::size_t i = 0; i < lines.size(); ++i)
    {
        EXPECT_EQ(std::pair(line[i].minimum, line[i].maximum), lines[i]) << i;
    }
    EXPECT_TRUE(std::isnan(line[7].minimum)) << "no line goes on behind the last point";
    const auto step = Curve(record, 0, 4, 8, eKW_ZEL_INTERPOLATION_MODE_SAMPLE_HOLD);
    EXPECT_EQ(step[0].maximum, 0);
    EXPECT_EQ(step[1].maximum, 100) << "the step itself";
    EXPECT_EQ(step[1].minimum, 0);
    EXPECT_EQ(step[2].minimum, 100);
    EXPECT_EQ(step[7].minimum, 40);
}

TEST(Columns, WithSinXOverXFollowASineThatIsBandLimited)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 200}, {eKW_SAMPLES_INT16, 200}}, 1);
    std::vector<INT16> sine(200);
    const auto at = [](double x) { return 20000 * std::sin(x * 2 * 3.14159265358979 / 5.3); };
    for (std::size_t i = 0; i < sine.size(); ++i)
    {
        sine[i] = static_cast<INT16>(std::lround(at(static_cast<double>(i))));
    }
    ASSERT_TRUE(stream.Publish(sine));
    const CKWRecord record = reader->GetLatest();
    const auto curve = Curve(record, 90.25, 20, 500, eKW_ZEL_INTERPOLATION_MODE_SINX);
    for (std::size_t i = 0; i < curve.size(); ++i)
    {
        const double left = at(90.25 + 20 * static_cast<double>(i) / 500);
        const double right = at(90.25 + 20 * static_cast<double>(i + 1) / 500);
        EXPECT_NEAR(curve[i].minimum, std::min(left, right), 60) << i;
        EXPECT_NEAR(curve[i].maximum, std::max(left, right), 60) << i;
        EXPECT_LE(curve[i].minimum, curve[i == 0 ? 0 : i - 1].maximum) << "a gap before " << i;
    }
}

TEST(Columns, HaveNoLineToAnInvalidPoint)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 5}}, 1);
    stream.Publish({10, 20, std::numeric_limits<INT16>::min(), 30, 40});
    for (const auto mode : {eKW_ZEL_INTERPOLATION_MODE_LINEAR, eKW_ZEL_INTERPOLATION_MODE_SINX})
    {
        const auto curve = Curve(reader->GetLatest(), 0, 4, 16, mode);
        EXPECT_EQ(curve[3].maximum, 20);
        EXPECT_EQ(curve[4].maximum, 20) << "the point itself";
        EXPECT_TRUE(std::isnan(curve[5].maximum)) << mode;
        EXPECT_TRUE(std::isnan(curve[10].maximum)) << mode;
        EXPECT_EQ(curve[12].minimum, 30);
    }
}

TEST(Columns, RefuseWhatIsNoStretch)
{
    CTestStream stream;
    const auto reader = stream.Reader();
    stream.Configure({{eKW_SAMPLES_INT16, 5}, {eKW_SAMPLES_LINES, 5}}, 1);
    std::array<KW_MinMax, 3> columns{{{7, 7}, {7, 7}, {7, 7}}};
    std::array<KW_LineStates, 3> lines{};
    EXPECT_EQ(reader->GetLatest().GetColumns(0, 0, 5, columns), eKW_ACC_BAD_INDEX);
    stream.Fill(0, std::vector<INT16>(5));
    stream.Fill(1, std::vector<UINT8>(5));
    const std::array infos = {CTestStream::Info(eKW_SAMPLES_INT16, 5),
                              CTestStream::Info(eKW_SAMPLES_LINES, 5)};
    ASSERT_EQ(stream.Writer().Publish({}, infos), eKW_ACC_OK);
    const CKWRecord record = reader->GetLatest();
    for (const double bad : {kNaN, HUGE_VAL, -HUGE_VAL, 1e16, -1e16})
    {
        EXPECT_EQ(record.GetColumns(0, bad, 5, columns), eKW_ACC_NOT_A_NUMBER) << bad;
        EXPECT_EQ(record.GetColumns(0, 0, bad, columns), eKW_ACC_NOT_A_NUMBER) << bad;
    }
    EXPECT_EQ(record.GetColumns(0, 0, 0, columns), eKW_ACC_NOT_A_NUMBER);
    EXPECT_EQ(record.GetColumns(2, 0, 5, columns), eKW_ACC_BAD_INDEX);
    EXPECT_EQ(record.GetColumns(1, 0, 5, columns), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(record.GetLines(0, 0, 5, lines), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(record.GetColumns(0, 0, 5, columns, static_cast<KW_ZEL_INTERPOLATION_MODE>(3)),
              eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(columns[0].minimum, 7) << "a refused call writes nothing";
    EXPECT_EQ(record.GetColumns(0, -1e15, 1e15, columns), eKW_ACC_OK);
}
