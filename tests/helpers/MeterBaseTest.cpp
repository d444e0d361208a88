// SPDX-License-Identifier: MIT
#include "HelperCases.h"
#include "MeterBase/EvMeasurementBlocks.h"
#include "MeterBase/MeterMeasurementBaseData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

namespace
{
using Catalogue = CMeterMeasurementBaseData;

KW_ZEL_DMM_MEAS_TYPE Type(INT32 value)
{
    return static_cast<KW_ZEL_DMM_MEAS_TYPE>(value);
}
KW_ZEL_METER_RANGE Range(INT32 value)
{
    return static_cast<KW_ZEL_METER_RANGE>(value);
}

void ExpectSettings(const t_RangeSettings& got, const t_RangeSettings& expected)
{
    EXPECT_EQ(got.range, expected.range);
    EXPECT_EQ(got.lowerLimit, expected.lowerLimit);
    EXPECT_EQ(got.upperLimit, expected.upperLimit);
    EXPECT_EQ(got.divider, expected.divider);
    EXPECT_EQ(got.gain, expected.gain);
    EXPECT_EQ(got.gainStage, expected.gainStage);
    EXPECT_EQ(got.rangeFactor, expected.rangeFactor);
    EXPECT_EQ(got.currentSource, expected.currentSource);
}

const t_RangeSettings kNothing{0.0, 0.0, 0.0, 0.0, 0, 0, 0.0, static_cast<KW_ZEL_DMM_CURRENT>(-1)};

struct t_RangeRow
{
    INT32 range;
    double nominal, lower, upper, divider;
    INT32 gain, gainStage;
    double factor;
    INT32 current;
};

struct t_BlockRow
{
    INT32 type;
    std::string name;
    INT32 acPath;
    std::vector<t_RangeRow> ranges;
};

std::ostream& operator<<(std::ostream& stream, const t_BlockRow& row)
{
    return stream << row.name;
}

const std::vector<t_RangeRow> kAcVoltage = {{7, 1, 0, 1, 0.1, 10, 1, 1.0, 0},
                                            {8, 10, 0, 10, 0.1, 1, 0, 1.0, 0},
                                            {9, 100, 0, 100, 0.01, 1, 0, 1.0, 0},
                                            {10, 1000, 0, 1000, 0.001, 1, 0, 1.0, 0}};

const t_BlockRow kBlocks[] = {{0, "VOLT:AC", 1, kAcVoltage},
                              {1,
                               "VOLT:DC",
                               0,
                               {{7, 1, -1, 1, 0.1, 10, 1, 1.0, 0},
                                {8, 10, -10, 10, 0.1, 1, 0, 1.0, 0},
                                {9, 100, -100, 100, 0.01, 1, 0, 1.0, 0},
                                {10, 1000, -1000, 1000, 0.001, 1, 0, 1.0, 0}}},
                              {2, "VOLT:AD", 1, kAcVoltage},
                              {3,
                               "CAP",
                               0,
                               {{0, 1e-8, 0, 1e-8, 0.1, 10, 1, 1.0, 3},
                                {1, 1e-7, 0, 1e-7, 0.1, 10, 1, 1.0, 3},
                                {2, 1e-6, 0, 1e-6, 0.1, 10, 1, 2.0, 3},
                                {3, 1e-5, 0, 1e-5, 0.1, 10, 1, 2.0, 2},
                                {4, 1e-4, 0, 1e-4, 0.1, 10, 1, 2.0, 1},
                                {5, 1e-3, 0, 1e-3, 0.1, 10, 1, 4.0, 1},
                                {6, 1e-2, 0, 1e-2, 0.1, 10, 1, 16.0, 1}}},
                              {4, "CONT", 0, {{10, 1000, -1000, 1000, 0.1, 10, 1, 128.0, 1}}},
                              {5, "DIODE", 0, {{8, 10, 0, 3.0, 0.1, 1, 0, 1.0, 1}}},
                              {6,
                               "FREQ",
                               1,
                               {{7, 1, 0.01, 250000, 0.1, 10, 1, 1.0, 0},
                                {8, 10, 0.01, 250000, 0.1, 1, 0, 1.0, 0},
                                {9, 100, 0.01, 250000, 0.01, 1, 0, 1.0, 0},
                                {10, 1000, 0.01, 250000, 0.001, 1, 0, 1.0, 0}}},
                              {7,
                               "RESI",
                               0,
                               {{10, 1e3, -1e3, 1e3, 1.0, 1, 0, 1.0, 1},
                                {11, 1e4, -1e4, 1e4, 1.0, 1, 0, 1.0, 2},
                                {12, 1e5, -1e5, 1e5, 1.0, 1, 0, 1.0, 3},
                                {13, 1e6, -1e6, 1e6, 1.0, 1, 0, 1.0, 4},
                                {14, 1e7, -1e7, 1e7, 1.0, 1, 0, 1.0, 5},
                                {15, 1e8, -1e8, 1e8, 0.1, 10, 1, 1.0, 5}}},
                              {8, "TEMP", 0, {{10, 1000, -1000, 1000, 1.0, 1, 0, 1.0, 1}}}};

class MeterBlock : public testing::TestWithParam<t_BlockRow>
{
};

TEST_P(MeterBlock, HasWrongNamePathOrRange)
{
    const auto& [type, name, acPath, ranges] = GetParam();
    CReports reports;
    Catalogue catalogue;
    CMeasurementBlockBase& block = *catalogue.GetMeasurementBlocks().at(Type(type));
    EXPECT_EQ(block.GetName(), name);
    EXPECT_EQ(block.GetMeasurementSettings(), std::make_pair(0, acPath));
    EXPECT_EQ(block.GetRangeTable().size(), ranges.size());
    for (const t_RangeRow& row : ranges)
    {
        SCOPED_TRACE(testing::Message() << name << " range " << row.range);
        const t_RangeSettings expected{
            row.nominal, row.lower,     row.upper,  row.divider,
            row.gain,    row.gainStage, row.factor, static_cast<KW_ZEL_DMM_CURRENT>(row.current)};
        ExpectSettings(catalogue.GetRangeSettings(Type(type), row.nominal), expected);
        ExpectSettings(block.GetRangeSettings(Range(row.range)), expected);
    }
    EXPECT_EQ(block.GetRangeTable().size(), ranges.size());
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

INSTANTIATE_TEST_SUITE_P(AllTypes, MeterBlock, testing::ValuesIn(kBlocks));

TEST(MeterCatalogue, FailsOnRangeThatTypeLacksOrForgetsIt)
{
    Catalogue catalogue;
    CMeasurementBlockBase& block = *catalogue.GetMeasurementBlocks().at(Type(3));
    CReports reports;
    ExpectSettings(catalogue.GetRangeSettings(Type(3), 10.0), kNothing);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
    ASSERT_EQ(block.GetRangeTable().count(Range(8)), 1U);
    ExpectSettings(block.GetRangeTable()[Range(8)], kNothing);
    EXPECT_EQ(block.GetRangeTable().size(), 8U);
    EXPECT_EQ(Catalogue().GetMeasurementBlocks().at(Type(3))->GetRangeTable().size(), 7U);
}

TEST(MeterCatalogue, ReportsIllegalTypeOrRangeNotOnce)
{
    const struct
    {
        INT32 type;
        double range;
        std::string report;
        std::string source;
        std::string function;
    } rows[] = {{9, 1.0, "No valid measurement selected.", "ifc/MeterBase", "GetRangeSettings"},
                {-1, 1.0, "No valid measurement selected.", "ifc/MeterBase", "GetRangeSettings"},
                {9, 2.0, "No valid measurement selected.", "ifc/MeterBase", "GetRangeSettings"},
                {1, 2.0, "Invalid Range selected: 2", "src/MeterBase", "GetRangeAsEnumValue"}};
    for (const auto& [type, range, report, source, function] : rows)
    {
        Catalogue catalogue;
        CReports reports;
        ExpectSettings(catalogue.GetRangeSettings(Type(type), range), kNothing);
        ExpectReport(reports, report, source, "CMeterMeasurementBaseData::" + function);
        const auto& blocks = catalogue.GetMeasurementBlocks();
        EXPECT_EQ(blocks.size(), 9U);
        EXPECT_EQ(blocks.at(Type(1))->GetRangeTable().count(Range(-1)), type == 1 ? 1U : 0U);
    }
}

TEST(MeterCatalogue, LosesBlocksThatSomebodyHolds)
{
    auto catalogue = std::make_unique<Catalogue>();
    Catalogue copy = *catalogue;
    auto blocks = catalogue->GetMeasurementBlocks();
    catalogue.reset();
    EXPECT_EQ(blocks.at(Type(8))->GetName(), "TEMP");
    EXPECT_EQ(copy.GetRangeSettings(Type(5), 10.0).upperLimit, 3.0);
    EXPECT_EQ(copy.GetMeasurementBlocks().at(Type(8)), blocks.at(Type(8)));
}

TEST(MeterCatalogue, CarriesWrongIndexedTable)
{
    const double expected[7][4] = {{0.2, 2.8, 0.01, 0.986627}, {0.2, 2.8, 0.05, 0.986627},
                                   {0.2, 1.2, 0.2, 0.993776},  {0.3, 1.3, 0.2, 0.999289},
                                   {0.5, 1.5, 0.5, 0.99991},   {1.0, 1.25, 2.0, 0.999899},
                                   {0.7, 0.8, 10.0, 0.9999}};
    const Catalogue catalogue;
    ASSERT_EQ(catalogue.GetIndexedTable().size(), 7U);
    for (const auto& [index, row] : catalogue.GetIndexedTable())
    {
        const auto& [a, b, c, d] = expected[index];
        EXPECT_TRUE(row.a == a && row.b == b && row.c == c && row.d == d) << "index " << index;
    }
}

TEST(MeterBlockBase, StartsWithRangesOrSettings)
{
    CMeasurementBlockBase block("NEW");
    EXPECT_EQ(block.GetName(), "NEW");
    EXPECT_EQ(block.GetMeasurementSettings(), std::make_pair(-1, -1));
    EXPECT_TRUE(block.GetRangeTable().empty());
}

TEST(MeterRange, IsNotItsNominalValueOrNeighbourIsRefused)
{
    const double nominal[] = {1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1.0,
                              1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8};
    CReports reports;
    INT32 value = 0;
    for (const double range : nominal)
    {
        EXPECT_EQ(Catalogue::GetRangeAsDoubleValue(Range(value)), range);
        EXPECT_EQ(Catalogue::GetRangeAsEnumValue(range), value);
        EXPECT_EQ(Catalogue::GetRangeAsEnumValue(std::nextafter(range, 0.0)), value);
        EXPECT_EQ(Catalogue::GetRangeAsEnumValue(std::nextafter(range, 1e9)), value);
        ++value;
    }
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

TEST(MeterRange, IsTakenThoughIllegal)
{
    const struct
    {
        double value;
        std::string text;
    } rows[] = {{0.1, "0.1"},
                {2.0, "2"},
                {1.0000001, "1"},
                {0.0, "0"},
                {-1.0, "-1"},
                {1e9, "1e+09"},
                {std::numeric_limits<double>::infinity(), "inf"},
                {std::numeric_limits<double>::quiet_NaN(), "nan"}};
    for (const auto& [value, text] : rows)
    {
        CReports reports;
        EXPECT_EQ(Catalogue::GetRangeAsEnumValue(value), -1);
        ExpectReport(reports, "Invalid Range selected: " + text, "src/MeterBase",
                     "GetRangeAsEnumValue");
    }
    for (const INT32 value : {-1, 16})
    {
        CReports reports;
        EXPECT_EQ(Catalogue::GetRangeAsDoubleValue(Range(value)), 0.0);
        ExpectReport(reports, "Invalid Range selected.", "src/MeterBase", "GetRangeAsDoubleValue");
    }
}
} // namespace
