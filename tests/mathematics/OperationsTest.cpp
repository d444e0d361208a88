// SPDX-License-Identifier: MIT
// Operations over time, pairs, sources at other times, and the memory of results.
#include "mathematics/TestTraces.h"

#ifdef KWI_COUNT_ALLOCATIONS
#include "faults/Allocations.h"
#endif

#include <functional>
#include <numbers>
#include <numeric>

namespace
{
constexpr KW_ZEL_CHANNEL kC1 = eKW_ZEL_CHANNEL_C1;
constexpr KW_ZEL_CHANNEL kC2 = eKW_ZEL_CHANNEL_C2;
constexpr KW_ZEL_CHANNEL kR1 = eKW_ZEL_CHANNEL_R1;

KW_MathSettings Operation(KW_ZEL_MATHEMATICS_TYPE type, KW_ZEL_CHANNEL a = kC1,
                          KW_ZEL_CHANNEL b = kC2)
{
    KW_MathSettings settings;
    settings.type = type;
    settings.sourceA = a;
    settings.sourceB = b;
    settings.format = eKW_SAMPLES_FLOAT;
    return settings;
}

KW_ACCEPTANCE Compute(const KW_MathSettings& settings, const CKWRecord& record, CKWRecord& result,
                      const CKWRecord& reference = {})
{
    CKWMathematics mathematics;
    KW_MathError error;
    EXPECT_EQ(mathematics.Configure(settings, error), eKW_ACC_OK) << error.text.toStdString();
    return mathematics.Compute(record, result, reference);
}

std::vector<double> Curve(const KW_MathSettings& settings, const CKWRecord& record,
                          const CKWRecord& reference = {})
{
    CKWRecord result;
    EXPECT_EQ(Compute(settings, record, result, reference), eKW_ACC_OK);
    return ValuesOf(result);
}

void ExpectNear(const std::vector<double>& values, const std::vector<double>& expected,
                double relative = 1e-6)
{
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        ASSERT_TRUE(std::isnan(expected[i])
                        ? std::isnan(values[i])
                        : std::fabs(values[i] - expected[i]) <=
                              relative * std::max(std::fabs(expected[i]), 1e-30))
            << "point " << i << ": " << values[i] << ", expected " << expected[i];
    }
}

/** Random values of C1, some of them invalid where that is asked for. */
t_TestTrace Random(std::size_t count, bool hasGaps, double interval, unsigned seed = 7)
{
    std::mt19937 random(seed);
    std::vector<float> reals(count);
    for (float& real : reals)
    {
        real = hasGaps && random() % 7 == 0 ? float(kNaN) : float(random() % 2000) / 100.0F - 9.0F;
    }
    t_TestTrace trace = t_TestTrace::Reals(kC1, reals);
    trace.info.interval = interval;
    return trace;
}

/** The usual five coefficients of the filter, with many digits. */
std::vector<double> NaiveFilter(const std::vector<double>& x, long double turns, bool isLow)
{
    const long double k = std::tan(std::numbers::pi_v<long double> * turns);
    const long double norm = 1 / (1 + std::numbers::sqrt2_v<long double> * k + k * k);
    const long double b0 = isLow ? k * k * norm : norm;
    const long double b1 = isLow ? 2 * b0 : -2 * b0;
    const long double a1 = 2 * (k * k - 1) * norm;
    const long double a2 = (1 - std::numbers::sqrt2_v<long double> * k + k * k) * norm;
    std::vector<double> filtered(x.size());
    const long double before = isLow ? x[0] : 0; // as if x[0] had been there for ever
    long double x1 = x[0], x2 = x[0], y1 = before, y2 = before;
    for (std::size_t i = 0; i < x.size(); ++i)
    {
        const long double y = b0 * x[i] + b1 * x1 + b0 * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x[i];
        y2 = y1;
        y1 = y;
        filtered[i] = double(y);
    }
    return filtered;
}
} // namespace

TEST(OverTime, IntegralBeginsAtTheLeftEdgeAndPassesOverGaps)
{
    t_TestTrace trace = Random(3000, true, 2e-6);
    trace.info.settlingPoints = 17;
    KW_MathSettings settings = Operation(eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL);
    settings.integralStart = -1e-3;
    const CKWRecord record = RecordOf({trace});
    const std::vector<double> x = ValuesOf(record);
    std::vector<double> expected(x.size(), kNaN);
    long double sum = settings.integralStart;
    std::size_t last = 0;
    for (std::size_t i = 17; i < x.size(); ++i)
    {
        if (!std::isnan(x[i]))
        {
            sum += last > 0 ? (x[last] + x[i]) / 2 * 2e-6L * double(i - last) : 0;
            expected[i] = double(sum);
            last = i;
        }
    }
    ExpectNear(Curve(settings, record), expected);
}

TEST(OverTime, DerivativeIsThatOfTheNeighbours)
{
    const CKWRecord record = RecordOf({Random(2100, true, 5e-3)});
    const std::vector<double> x = ValuesOf(record);
    std::vector<double> expected(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
    {
        const bool hasLeft = i > 0 && !std::isnan(x[i - 1]);
        const bool hasRight = i + 1 < x.size() && !std::isnan(x[i + 1]);
        expected[i] = hasLeft && hasRight ? (x[i + 1] - x[i - 1]) / 1e-2
                      : hasLeft           ? (x[i] - x[i - 1]) / 5e-3
                      : hasRight          ? (x[i + 1] - x[i]) / 5e-3
                                          : kNaN;
        expected[i] = std::isnan(x[i]) ? kNaN : expected[i];
    }
    ExpectNear(Curve(Operation(eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE), record), expected);
}

TEST(OverTime, FiltersAreButterworth)
{
    const CKWRecord record = RecordOf({Random(5000, false, 1e-6)});
    for (const double frequency : {1e3, 33333.0, 2e5, 499e3})
    {
        for (const bool isLow : {true, false})
        {
            KW_MathSettings settings = Operation(isLow ? eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS
                                                       : eKW_ZEL_MATHEMATICS_TYPE_HIGH_PASS);
            settings.filterFrequency = frequency;
            const std::vector<double> values = Curve(settings, record);
            const std::vector<double> naive =
                NaiveFilter(ValuesOf(record), frequency * 1e-6L, isLow);
            for (std::size_t i = 0; i < values.size(); ++i)
            {
                ASSERT_NEAR(values[i], naive[i], 2e-6) << frequency << ", point " << i;
            }
        }
    }
}

TEST(OverTime, FiltersKeepAConstantBeginAgainBehindGapsAndKnowTheirEnds)
{
    std::vector<float> reals(100, 5.0F);
    reals[40] = float(kNaN);
    std::fill(reals.begin() + 41, reals.end(), -2.0F);
    const CKWRecord record = RecordOf({t_TestTrace::Reals(kC1, reals)}); // 1 Hz
    for (const double frequency : {1e-12, 0.1, 0.5, 3.0})
    {
        KW_MathSettings settings = Operation(eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS);
        settings.filterFrequency = frequency;
        ExpectNear(Curve(settings, record), ValuesOf(record));
        settings.type = eKW_ZEL_MATHEMATICS_TYPE_HIGH_PASS;
        std::vector<double> zero(100, 0.0);
        zero[40] = kNaN;
        ExpectNear(Curve(settings, record), zero);
    }
}

TEST(OperationsOnOne, AreComputedAndInvalidWithoutAResult)
{
    const CKWRecord record = RecordOf({t_TestTrace::Reals(kC1, {4.0F, 0.0F, -0.25F, 1e-30F})});
    const auto of = [&record](KW_ZEL_MATHEMATICS_TYPE type)
    { return Curve(Operation(type), record); };
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_ABS), {4, 0, 0.25, 1e-30});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_INVERT), {-4, 0, 0.25, -1e-30});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL), {0.25, kNaN, -4, 1e30});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_SQUARE), {16, 0, 0.0625, 0});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_SQRT), {2, 0, kNaN, 1e-15});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_LOG10), {std::log10(4.0), kNaN, kNaN, -30});
    ExpectNear(of(eKW_ZEL_MATHEMATICS_TYPE_LN), {std::log(4.0), kNaN, kNaN, std::log(1e-30)});
}

TEST(Pairs, EncloseWhatLiesBetween)
{
    std::mt19937 random(5);
    t_TestTrace a = t_TestTrace::Of<INT16>(kC1, eKW_SAMPLES_MINMAX, {});
    t_TestTrace b = a;
    std::vector<INT16> lowsAndHighs[2];
    for (std::vector<INT16>& entries : lowsAndHighs)
    {
        for (int i = 0; i < 1500; ++i)
        {
            const int low = int(random() % 200) - 100;
            const bool isNone = random() % 8 == 0;
            entries.push_back(INT16(isNone ? INT16_MIN : low));
            entries.push_back(INT16(isNone ? INT16_MIN : low + int(random() % 60)));
        }
    }
    a = t_TestTrace::Of(kC1, eKW_SAMPLES_MINMAX, lowsAndHighs[0]);
    b = t_TestTrace::Of(kC2, eKW_SAMPLES_MINMAX, lowsAndHighs[1]);
    b.info.scale = -0.5; // turns over
    for (int type = eKW_ZEL_MATHEMATICS_TYPE_ADD; type <= eKW_ZEL_MATHEMATICS_TYPE_LN; ++type)
    {
        CKWRecord result;
        ASSERT_EQ(Compute(Operation(KW_ZEL_MATHEMATICS_TYPE(type)), RecordOf({a, b}), result),
                  eKW_ACC_OK);
        const KW_TraceInfo info = result.GetTrace(0);
        ASSERT_EQ(info.format, eKW_SAMPLES_MINMAX);
        for (std::size_t i = 0; i < 1500; ++i)
        {
            const auto at = [&](int trace, double part)
            {
                const INT16 low = lowsAndHighs[trace][2 * i];
                const INT16 high = lowsAndHighs[trace][2 * i + 1];
                const double scale = trace == 0 ? 1.0 : -0.5;
                return low == INT16_MIN ? kNaN : scale * (low + part * (high - low));
            };
            double lowest = kInfinity, highest = -kInfinity;
            bool isValid = true;
            for (int k = 0; k <= 12; ++k)
            {
                for (int m = 0; m <= 12; ++m)
                {
                    const double x = at(0, k / 12.0), y = at(1, m / 12.0);
                    const double all[] = {x + y,      x - y, x * y, x / y,        std::fabs(x),
                                          -x,         1 / x, x * x, std::sqrt(x), std::log10(x),
                                          std::log(x)};
                    lowest = std::min(lowest, all[type]);
                    highest = std::max(highest, all[type]);
                    isValid = isValid && std::isfinite(all[type]);
                }
            }
            const INT16 low = SampleAt<INT16>(result, 0, 2 * i);
            const INT16 high = SampleAt<INT16>(result, 0, 2 * i + 1);
            ASSERT_EQ(low == INT16_MIN, high == INT16_MIN);
            // Between the twelfths there may be a zero.
            ASSERT_TRUE(low == INT16_MIN || isValid) << type << ", point " << i;
            if (low != INT16_MIN)
            {
                const double slack = 0.51 * info.scale + 1e-3 * (highest - lowest);
                ASSERT_NEAR(low * info.scale + info.offset, std::min(lowest, highest),
                            slack + (type >= 4 ? 0.1 * std::fabs(highest - lowest) : 0))
                    << type << ", point " << i;
                ASSERT_NEAR(high * info.scale + info.offset, highest, slack) << type;
            }
        }
    }
    CKWRecord result;
    for (const auto type : {eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE, eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS})
    {
        EXPECT_EQ(Compute(Operation(type), RecordOf({a, b}), result), eKW_ACC_WRONG_KIND);
    }
    b.info.start = 0.5; // between the points of the other
    EXPECT_EQ(Compute(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD), RecordOf({a, b}), result),
              eKW_ACC_WRONG_KIND);
}

TEST(SourcesAtOtherTimes, AreStraightLinesBetweenTheirPoints)
{
    t_TestTrace a = t_TestTrace::Words(kC1, std::vector<INT16>(3000, 0));
    a.info.interval = 1e-3;
    a.info.start = -1.0;
    t_TestTrace b = Random(1111, true, 1.7e-3);
    b.info.channel = kR1;
    b.info.start = -0.5004;
    const CKWRecord reference = RecordOf({b});
    const std::vector<double> y = ValuesOf(reference);
    std::vector<double> expected(3000, kNaN);
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        const double place = (-1.0 + 1e-3 * double(i) + 0.5004) / 1.7e-3;
        const auto before = std::size_t(std::max(place, 0.0));
        if (std::fabs(place - std::round(place)) < 1e-9 && place > -0.5 && place < 1110.5)
        {
            expected[i] = y[std::size_t(std::round(place))];
        }
        else if (place >= 0 && before + 1 < y.size())
        {
            expected[i] = y[before] + (place - double(before)) * (y[before + 1] - y[before]);
        }
    }
    const std::vector<double> values =
        Curve(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD, kC1, kR1), RecordOf({a}), reference);
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        ASSERT_EQ(std::isnan(values[i]), std::isnan(expected[i])) << i;
        ASSERT_TRUE(std::isnan(values[i]) || std::fabs(values[i] - expected[i]) < 1e-5) << i;
    }
    // The other way round the reference's own points are the grid.
    EXPECT_EQ(
        Curve(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD, kR1, kC1), RecordOf({a}), reference).size(),
        y.size());
}

TEST(SourcesAtOtherTimes, ShiftedByWholePointsAreTheirOwnPoints)
{
    std::vector<INT16> ramp(5000);
    std::iota(ramp.begin(), ramp.end(), INT16(0));
    t_TestTrace a = t_TestTrace::Words(kC1, ramp);
    t_TestTrace b = t_TestTrace::Words(kC2, ramp);
    ramp[2000] = INT16_MIN;
    b = t_TestTrace::Words(kC2, ramp);
    b.info.start = 1500.0002;
    b.info.count = 3001;
    b.bytes.resize(2 * 3001);
    const std::vector<double> values =
        Curve(Operation(eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT), RecordOf({a, b}));
    for (std::size_t i = 0; i < 5000; ++i)
    {
        const bool isNone = i < 1500 || i > 4500 || i == 3500;
        ASSERT_TRUE(isNone ? std::isnan(values[i]) : values[i] == 1500) << i << ": " << values[i];
    }
}

TEST(Results, AreTheRecordsTheyComeFrom)
{
    t_TestTrace a = t_TestTrace::Words(kC1, {100, -100, 32767, INT16_MIN});
    t_TestTrace b = t_TestTrace::Words(kC2, {1, 2, 3, 4});
    a.info.settlingPoints = 1;
    a.info.start = -3.5;
    a.info.interval = 0.25;
    b.info = {kC2, eKW_SAMPLES_INT16, eKW_UNIT_LEVEL_A, 0, 4, 1, 0.25, -3.5, 1, 0};
    b.info.flags = eKW_TRACE_BELOW_RANGE;
    const CKWRecord record = RecordOf({a, b}, {77, 1234567890123, 42, eKW_MASK_FAILED});
    CKWRecord result;
    KW_MathSettings settings = Operation(eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY);
    settings.format = eKW_SAMPLES_INT16;
    settings.autoScale = false;
    settings.scale = {1000, 1};
    ASSERT_EQ(Compute(settings, record, result), eKW_ACC_OK);
    EXPECT_EQ(result.GetInfo().number, 77U);
    EXPECT_EQ(result.GetInfo().triggerTime, 1234567890123);
    EXPECT_EQ(result.GetInfo().settingsCounter, 42);
    const KW_TraceInfo trace = result.GetTrace(0);
    EXPECT_EQ(trace.channel, eKW_ZEL_CHANNEL_M1);
    EXPECT_EQ(trace.unit, eKW_UNIT_LEVEL_W);
    EXPECT_EQ(trace.settlingPoints, 1U);
    EXPECT_EQ(trace.start, -3.5);
    EXPECT_EQ(trace.interval, 0.25);
    EXPECT_EQ(trace.scale, 1000 / 6400.0);
    EXPECT_EQ(trace.offset, -1000.0);
    EXPECT_EQ(trace.flags, UINT32{eKW_TRACE_ABOVE_RANGE} | UINT32{eKW_TRACE_BELOW_RANGE});
    EXPECT_EQ(SampleAt<INT16>(result, 0, 0), 7040); // (100 + 1000) × 6.4
    EXPECT_EQ(SampleAt<INT16>(result, 0, 2), 32767);
    EXPECT_EQ(SampleAt<INT16>(result, 0, 3), INT16_MIN);
}

TEST(Results, AreRefusedWithoutSources)
{
    const CKWRecord record = RecordOf(
        {t_TestTrace::Words(kC1, {1, 2}), t_TestTrace::Of<UINT8>(kC2, eKW_SAMPLES_LINES, {1, 2})});
    CKWRecord result;
    EXPECT_EQ(Compute(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD), {}, result),
              eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_EQ(Compute(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD, kC1, kR1), record, result),
              eKW_ACC_NOT_FOUND);
    EXPECT_EQ(Compute(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD), record, result), eKW_ACC_WRONG_KIND);
    EXPECT_FALSE(result);
    KW_MathSettings settings;
    settings.usesExpression = true;
    settings.expression = QStringLiteral("2*3");
    settings.format = eKW_SAMPLES_FLOAT;
    EXPECT_EQ(Curve(settings, record), (std::vector<double>{6, 6}));
    CKWMathematics mathematics;
    KW_MathError error;
    settings.expression = QStringLiteral("2*");
    EXPECT_EQ(mathematics.Configure(settings, error), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(error.column, 3U);
    settings = Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD, eKW_ZEL_CHANNEL_M1);
    EXPECT_EQ(mathematics.Configure(settings, error), eKW_ACC_UNKNOWN_VALUE);
    settings = Operation(eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS);
    settings.filterFrequency = 0;
    EXPECT_EQ(mathematics.Configure(settings, error), eKW_ACC_BELOW_MINIMUM);
    settings.filterFrequency = kNaN;
    EXPECT_EQ(mathematics.Configure(settings, error), eKW_ACC_NOT_A_NUMBER);
}

TEST(Results, ThatAreHeldStayAndTheirMemoryIsUsedAgain)
{
    CKWMathematics mathematics(2);
    KW_MathError error;
    mathematics.Configure(Operation(eKW_ZEL_MATHEMATICS_TYPE_ADD, kC1, kC1), error);
    const CKWRecord one = RecordOf({t_TestTrace::Words(kC1, {1, 2, 3})});
    const CKWRecord other = RecordOf({t_TestTrace::Words(kC1, {10, 20, 30})});
    CKWRecord first, second, third;
    ASSERT_EQ(mathematics.Compute(one, first), eKW_ACC_OK);
    ASSERT_EQ(mathematics.Compute(other, second), eKW_ACC_OK);
    EXPECT_EQ(mathematics.Compute(other, third), eKW_ACC_CONTAINER_FULL);
    EXPECT_EQ(ValuesOf(first), (std::vector<double>{2, 4, 6}));
    const std::byte* const memory = first.GetSamples(0).data();
    first = {};
    ASSERT_EQ(mathematics.Compute(other, third), eKW_ACC_OK);
    EXPECT_EQ(third.GetSamples(0).data(), memory);
    EXPECT_EQ(ValuesOf(second), (std::vector<double>{20, 40, 60}));
#ifdef KWI_COUNT_ALLOCATIONS
    const auto act = [&]
    {
        for (int i = 0; i < 10; ++i)
        {
            third = {};
            mathematics.Compute(i % 2 == 0 ? one : other, third);
        }
    };
    EXPECT_EQ(KW_CountAllocations(act), 0U);
    EXPECT_EQ(ValuesOf(third), (std::vector<double>{20, 40, 60}));
#endif
}

TEST(Scales, FillTheScreen)
{
    struct t_Row
    {
        KW_MinMax range;
        double scale;
        double position;
    };
    constexpr t_Row kRows[] = {
        {{-4, 4}, 1, 0},
        {{-4.01, 4}, 2, 0},
        {{0, 8}, 1, -4},
        {{0, 0}, 1, 0},
        {{5, 5}, 1, -2.5},
        {{100, 101}, 20, -4},
        {{-1e-13, 0}, 1e-12, 0.06},
        {{-1e30, 1e30}, 1e12, 0},
        {{-3e-5, 1e-5}, 5e-6, 2},
    };
    for (const t_Row& row : kRows)
    {
        KW_MathScale found;
        ASSERT_TRUE(KW_FindMathScale(row.range, found));
        EXPECT_EQ(found.scale, row.scale) << row.range.minimum;
        EXPECT_DOUBLE_EQ(found.position, row.position) << row.range.minimum;
    }
    KW_MathScale found{7, 1};
    EXPECT_FALSE(KW_FindMathScale({kNaN, kNaN}, found));
    EXPECT_EQ(found.scale, 7);
}
