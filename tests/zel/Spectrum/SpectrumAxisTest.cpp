// SPDX-License-Identifier: MIT
#include "KWEnumerationsReadings.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/SpectrumHardware.h"
#include "SpectrumTree.h"

#include <cmath>
#include <rapidcheck/gtest.h>

namespace
{
struct t_Write
{
    const char* property;
    double value;
    KW_ACCEPTANCE code;
};

struct t_AxisCase
{
    const char* name;
    KW_SCALING_TYPE scaling;
    std::vector<t_Write> writes;
    double start;
    double stop;
};

using t_Writes = std::vector<t_Write>;
constexpr KW_SCALING_TYPE kLin = eKW_SCALING_TYPE_LINEAR;
constexpr KW_SCALING_TYPE kLog = eKW_SCALING_TYPE_LOGARITHMIC;
constexpr char kStart[] = "Spectrum/HorizontalStart";
constexpr char kStop[] = "Spectrum/HorizontalStop";
constexpr char kSpan[] = "Spectrum/HorizontalSpan";
constexpr char kCenter[] = "Spectrum/HorizontalCenter";

std::shared_ptr<IKWNumericProperty<double>> Number(const t_SpectrumTree& t, const char* path)
{
    return std::dynamic_pointer_cast<IKWNumericProperty<double>>(
        Property(t.root, path)->GetHandle());
}
} // namespace

class SpectrumAxisWrites : public testing::TestWithParam<t_AxisCase>, protected t_SpectrumTree
{
};

TEST_P(SpectrumAxisWrites, MoveTheWrongEndOrGetAnotherCode)
{
    const t_AxisCase& c = GetParam();
    s->GetPrHorizontalScaling()->Set(c.scaling);
    for (const t_Write& write : c.writes)
    {
        EXPECT_EQ(Number(*this, write.property)->Set(write.value), write.code) << write.property;
        EXPECT_EQ(SpectrumViolations(*this), "") << write.property;
    }
    EXPECT_NEAR(s->GetPrHorizontalStart()->Get(), c.start, 1e-9 * c.stop);
    EXPECT_NEAR(s->GetPrHorizontalStop()->Get(), c.stop, 1e-9 * c.stop);
}

// From 0 … 625 MHz, or from 100 Hz … 625 MHz when logarithmic.
INSTANTIATE_TEST_SUITE_P(
    Cases, SpectrumAxisWrites,
    testing::Values(
        t_AxisCase{"SpanKeepsCenter", kLin, {{kSpan, 1e6, 0}}, 312e6, 313e6},
        t_AxisCase{"SpanTooWideForCenter", kLin, {{kCenter, 1e8, 0}, {kSpan, 3e8, 3}}, 0, 2e8},
        t_AxisCase{"SpanComesBack", kLin, {{kCenter, 1e8, 0}, {kCenter, 3e8, 0}}, 0, 6e8},
        t_AxisCase{
            "OldSpanIsOverByStop", kLin, {{kStop, 1e6, 0}, {kCenter, 3e8, 0}}, 2.995e8, 3.005e8},
        t_AxisCase{"OldSpanIsOverByStart",
                   kLin,
                   {{kStart, 6.24e8, 0}, {kCenter, 3e8, 0}},
                   2.995e8,
                   3.005e8},
        t_AxisCase{"SpanTooNarrow", kLin, {{kSpan, 824.0, 2}}, 0, 6.25e8},
        t_AxisCase{"StopBelowStart", kLin, {{kStart, 2e8, 0}, {kStop, 1e8, 0}}, 99999175, 1e8},
        t_AxisCase{"StartAboveStop", kLin, {{kStop, 1e8, 0}, {kStart, 2e8, 0}}, 2e8, 200000825},
        t_AxisCase{"StopBeyondRange", kLin, {{kStop, 6.3e8, 3}}, 0, 6.25e8},
        t_AxisCase{"StopFirstOfAll", kLin, {{kStop, 825, 0}, {kCenter, 412.5, 0}}, 0, 825},
        t_AxisCase{"LastCenter", kLin, {{kCenter, 624999587.5, 0}}, 624999175, 6.25e8},
        t_AxisCase{"LogStartPushes", kLog, {{kStop, 1e6, 0}, {kStart, 5e5, 0}}, 5e5, 5e6},
        t_AxisCase{"LogStopPushes", kLog, {{kStart, 1e6, 0}, {kStop, 2e6, 0}}, 2e5, 2e6},
        t_AxisCase{"LogStartTooHigh", kLog, {{kStart, 6.3e7, 3}}, 100, 6.25e8},
        t_AxisCase{"LogStopTooLow", kLog, {{kStop, 999, 2}}, 100, 6.25e8},
        t_AxisCase{
            "LogCenter", kLog, {{kStart, 1e4, 0}, {kStop, 1e6, 0}, {kCenter, 1e6, 0}}, 1e5, 1e7},
        t_AxisCase{"LogCenterCutOff",
                   kLog,
                   {{kStart, 1e4, 0}, {kStop, 1e6, 0}, {kCenter, 1e8, 1}},
                   1e7,
                   6.25e8},
        t_AxisCase{"LogSpan",
                   kLog,
                   {{kStart, 1e4, 0},
                    {kStop, 1e6, 0},
                    {kSpan, 1e6 - 1e4, 0},
                    {kSpan, 2.4e5, 2},
                    {kSpan, 1.5e6, 0}},
                   6637.297521078, // 1e10 / stop
                   1506637.297521078}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(SpectrumGroup, SwitchingTheScalingLosesTheCenterOrTheStop)
{
    s->GetPrHorizontalScaling()->Set(kLog);
    EXPECT_EQ(s->GetPrHorizontalStart()->Get(), 100.0);
    EXPECT_EQ(s->GetPrHorizontalStop()->Get(), 6.25e8);
    EXPECT_NEAR(s->GetPrHorizontalCenter()->Get(), 2.5e5, 1e-6);
    s->GetPrHorizontalScaling()->Set(kLin);
    EXPECT_EQ(s->GetPrHorizontalStart()->Get(), 0.0);
    EXPECT_NEAR(s->GetPrHorizontalStop()->Get(), 5e5, 1e-6);
    s->GetPrHorizontalStart()->Set(1e5);
    s->GetPrChangeGrid()->Set();
    EXPECT_EQ(s->GetPrHorizontalScaling()->Get(), kLog);
    EXPECT_NEAR(s->GetPrHorizontalStart()->Get(), 5e4, 1e-6) << "a decade below the stop";
    // What is cut out lies about the arithmetic middle.
    EXPECT_NEAR(ddc->GetPrCenter()->Get(), 2.75e5, 1e-6);
    EXPECT_EQ(ddc->GetPrSpan()->Get(), s->GetPrHorizontalSpan()->Get());
    s->GetPrChangeGrid()->Set();
    const double span = s->GetPrHorizontalSpan()->Get();
    ASSERT_EQ(s->GetPrHorizontalCenter()->Set(3e8), eKW_ACC_OK);
    EXPECT_EQ(s->GetPrHorizontalSpan()->Get(), span) << "no span from before the other scaling";
    EXPECT_EQ(reports.List(), QStringList());
}

RC_GTEST_PROP(SpectrumAxisRandom, AnyOrderOfWritesBreaksTheAxis, ())
{
    const t_SpectrumTree t;
    t.root->EnableHistory(false);
    const char* const paths[] = {kStart, kStop, kSpan, kCenter};
    const int writes = *rc::gen::inRange(1, 40);
    for (int i = 0; i < writes; ++i)
    {
        if (*rc::gen::inRange(0, 6) == 0)
        {
            t.s->GetPrChangeGrid()->Set();
        }
        const auto number = Number(t, paths[*rc::gen::inRange(0, 4)]);
        const double share = *rc::gen::inRange(0, 1000001) / 1e6;
        const double min = std::max(number->GetMin(), 1.0);
        const double value = min * std::pow(number->GetMax() / min, share);
        // Inside the limits that it shows, a number is taken.
        RC_ASSERT(KW_IsAccepted(number->Set(std::min(value, number->GetMax()))));
        RC_ASSERT(SpectrumViolations(t) == std::string());
    }
    RC_ASSERT(t.reports.List().filter(QStringLiteral("database access")).isEmpty());
}

struct t_KeyCase
{
    const char* key;
    KW_SCALING_TYPE scaling;
    double start;
    double stop;
    KW_ACCEPTANCE code;
    double newStart;
    double newStop;
    const char* report;
};

class SpectrumKeys : public testing::TestWithParam<t_KeyCase>, protected t_SpectrumTree
{
};

TEST_P(SpectrumKeys, MoveTheAxisElsewhere)
{
    const t_KeyCase& c = GetParam();
    s->GetPrHorizontalScaling()->Set(c.scaling);
    s->GetPrHorizontalStart()->Set(c.start);
    s->GetPrHorizontalStop()->Set(c.stop);
    const auto action =
        std::dynamic_pointer_cast<IDbAction>(s->GetDbObject()->Find(QString::fromLatin1(c.key)));
    ASSERT_TRUE(action);
    EXPECT_EQ(action->Execute(), c.code);
    EXPECT_NEAR(s->GetPrHorizontalStart()->Get(), c.newStart, 1e-9 * c.newStop);
    EXPECT_NEAR(s->GetPrHorizontalStop()->Get(), c.newStop, 1e-9 * c.newStop);
    EXPECT_EQ(reports.List().join(QLatin1Char('|')).toStdString(), c.report);
    EXPECT_EQ(SpectrumViolations(*this), "");
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SpectrumKeys,
    testing::Values(t_KeyCase{"OnPressHorizontalRangeLeft", kLin, 9e7, 1.1e8, 0, 7.5e7, 1.25e8, ""},
                    t_KeyCase{"OnPressHorizontalRangeRight", kLin, 9e7, 1.1e8, 0, 9.5e7, 1.05e8,
                              ""},
                    t_KeyCase{"OnPressHorizontalRangeLeft", kLin, 0, 1.1e8, 1, 0, 1.1e8,
                              "property value is higher than property max value"},
                    t_KeyCase{"OnPressHorizontalRangeRight", kLog, 1e6, 1e7, 1, 1e6, 1e7,
                              "property value is lower than property min value"},
                    t_KeyCase{"OnPressHorizontalRangeLeft", kLin, 0, 825, 1, 0, 825,
                              "min and max are equal: 825"},
                    t_KeyCase{"OnPressHorizontalPosLeft", kLin, 9e7, 1.1e8, 0, 8.8e7, 1.08e8, ""},
                    t_KeyCase{"OnPressHorizontalPosRight", kLin, 5e8, 6.2e8, 0, 5.05e8, 6.25e8, ""},
                    t_KeyCase{"OnPressHorizontalPosRight", kLin, 0, 6.25e8, 1, 0, 6.25e8, ""},
                    t_KeyCase{"OnPressHorizontalPosRight", kLog, 1e3, 1e4, 0,
                              1e3 * std::pow(10.0, 0.1), 1e4 * std::pow(10.0, 0.1), ""},
                    t_KeyCase{"HorizontalFullSpan", kLog, 1e3, 1e4, 0, 100, 6.25e8, ""},
                    t_KeyCase{"HorizontalAutoSet", kLin, 1e3, 1e4, 0, 0, 6e8, ""}));

TEST_F(SpectrumGroup, AutoSetIgnoresTheFilterOfTheInput)
{
    Property(root, "Vertical/Channel[0]/BandwidthLimit")->SetText(QStringLiteral("MHZ_20"));
    s->GetPrHorizontalAutoSet()->Set();
    EXPECT_EQ(s->GetPrHorizontalStop()->Get(), 2e7) << "26 MHz to one digit";
}

TEST(SpectrumHardware, ModelDeclaresOtherLimits)
{
    using namespace NSpectrumHardware;
    const auto root = GetZELRoot();
    const CPgSpectrum* const s = KW_PeekZELRoot()->GetPgSpectrum();
    EXPECT_EQ(s->GetPrHorizontalStop()->GetDeclaredMax(), kHighestFrequency);
    EXPECT_EQ(s->GetPrHorizontalSpan()->GetDeclaredMin(), kSmallestSpan);
    EXPECT_EQ(s->GetPrHorizontalStart()->GetDeclaredMax(), kHighestFrequency - kSmallestSpan);
    EXPECT_EQ(s->GetPrRBW()->GetDeclaredMin(), kResolutionBandwidthFloor);
    EXPECT_EQ(s->GetPrRBW()->GetDeclaredMax(), kResolutionBandwidthCeiling);
}
