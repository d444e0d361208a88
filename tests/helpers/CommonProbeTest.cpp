// SPDX-License-Identifier: MIT
#include "HelperCases.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "Numbers.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
using Common = CZELDatabaseHelperCommon;

KW_UNIT Unit(INT32 value)
{
    return static_cast<KW_UNIT>(value);
}

struct t_ProbeRow
{
    INT32 type;
    INT32 userUnit;
    double factor;
    INT32 unit;
    std::string report;
};

/** The user's factor is 42.5 in every row. */
const t_ProbeRow kProbeRows[] = {{0, 28, 1.0, 77, ""},
                                 {1, 28, 10.0, 77, ""},
                                 {2, 28, 20.0, 77, ""},
                                 {3, 28, 100.0, 77, ""},
                                 {4, 42, 200.0, 77, ""},
                                 {5, 0, 1000.0, 77, ""},
                                 {6, 28, 1.0, 77, "Unknown probe type= 6"},
                                 {7, 28, 0.01, 78, ""},
                                 {8, 28, 0.1, 78, ""},
                                 {9, 28, 1.0, 78, ""},
                                 {10, 28, 10.0, 78, ""},
                                 {11, 28, 100.0, 78, ""},
                                 {12, 28, 1000.0, 78, ""},
                                 {13, 28, 1.0, 77, "Unknown probe type= 13"},
                                 {14, 42, 1.0, 77, "Unknown probe type= 14"},
                                 {15, 28, 1.0, 77, "Unknown probe type= 15"},
                                 {17, 28, 1.0, 77, "Unknown probe type= 17"},
                                 {18, 28, 42.5, 77, ""},
                                 {18, 42, 42.5, 78, ""},
                                 {18, 43, 42.5, 77, "Unknown probe unit= 43"},
                                 {19, 28, 1.0, 77, "Unknown probe type= 19"},
                                 {-1, 28, 1.0, 77, "Unknown probe type= -1"}};

class CommonProbe : public testing::TestWithParam<t_ProbeRow>
{
};

TEST_P(CommonProbe, HasWrongScopeFactorUnitOrReport)
{
    const auto& [type, userUnit, factor, unit, report] = GetParam();
    CReports reports;
    const auto result = Common::GetProbeSettingsScope({Probe(type), 42.5, Unit(userUnit)});
    EXPECT_EQ(result.factor, factor);
    EXPECT_EQ(result.unit, unit);
    EXPECT_EQ(result.attributes, 0U);
    ExpectReport(reports, report, kHelpers, "CZELDatabaseHelperCommon::GetProbeSettingsScope");
}

TEST_P(CommonProbe, ReachesMeterUnmappedOrInWrongMeasurement)
{
    const auto& [type, userUnit, factor, unit, report] = GetParam();
    for (const INT32 measType : {0, 1, 2, 6})
    {
        CReports reports;
        KW_UNIT resultUnit = Unit(-1);
        const auto result =
            Common::GetProbeSettingsDmm(static_cast<KW_ZEL_DMM_MEAS_TYPE>(measType),
                                        {Probe(type), 42.5, Unit(userUnit)}, resultUnit);
        EXPECT_EQ(result.factor, factor);
        EXPECT_EQ(result.unit, unit == 77 ? 106 : 107);
        EXPECT_EQ(resultUnit, measType == 6 ? 56 : static_cast<INT32>(result.unit));
        EXPECT_EQ(reports.TakeMessages(), OneMessage(report));
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, CommonProbe, testing::ValuesIn(kProbeRows));

TEST(CommonProbeMeter, AppliesProbeWhereMeterMeasuresWithout)
{
    const struct
    {
        INT32 measType;
        INT32 probeType;
        INT32 unit;
        std::string report;
    } rows[] = {{3, 1, 51, ""},
                {4, 1, 108, ""},
                {7, 12, 108, ""},
                {5, 1, 28, ""},
                {8, 13, 84, ""},
                {8, 14, 85, ""},
                {8, 15, 84, ""}, // no tree: degrees Celsius
                {8, 99, 84, ""},
                {9, 1, 65, "Invalid measurement type!"},
                {-1, 1, 65, "Invalid measurement type!"}};
    for (const auto& [measType, probeType, unit, report] : rows)
    {
        CReports reports;
        KW_UNIT resultUnit = Unit(-1);
        const auto result =
            Common::GetProbeSettingsDmm(static_cast<KW_ZEL_DMM_MEAS_TYPE>(measType),
                                        {Probe(probeType), 42.5, Unit(28)}, resultUnit);
        EXPECT_EQ(result.factor, 1.0) << "type " << measType;
        EXPECT_EQ(result.unit, unit) << "type " << measType;
        EXPECT_EQ(resultUnit, unit) << "type " << measType;
        ExpectReport(reports, report, kHelpers, "CZELDatabaseHelperCommon::GetProbeSettingsDmm");
    }
}

TEST(CommonProbeUnit, IsMisreadOrMisreported)
{
    const struct
    {
        INT32 unit;
        INT32 measured;
        std::string measuredReport;
        INT32 factorUnit;
        std::string factorReport;
    } rows[] = {{77, 28, "", 91, "Unknown probe unit= 77"},
                {78, 42, "", 91, "Unknown probe unit= 78"},
                {28, 28, "Unknown probe factor unit= 28", 91, ""},
                {42, 28, "Unknown probe factor unit= 42", 95, ""},
                {91, 28, "Unknown probe factor unit= 91", 91, "Unknown probe unit= 91"},
                {-1, 28, "Unknown probe factor unit= -1", 91, "Unknown probe unit= -1"}};
    for (const auto& [unit, measured, measuredReport, factorUnit, factorReport] : rows)
    {
        CReports first;
        EXPECT_EQ(Common::GetProbeUnit(Unit(unit)), measured) << unit;
        ExpectReport(first, measuredReport, kHelpers, "CZELDatabaseHelperCommon::GetProbeUnit");
        CReports second;
        EXPECT_EQ(Common::GetProbeFactorUnit(Unit(unit)), factorUnit) << unit;
        ExpectReport(second, factorReport, kHelpers,
                     "CZELDatabaseHelperCommon::GetProbeFactorUnit");
    }
}

TEST(CommonProbeFactor, IsNotInvertedOrInvertedInWrongUnit)
{
    CReports reports;
    EXPECT_EQ(Common::ConvertProbeFactor(8.0, Unit(91)), 8.0);
    EXPECT_EQ(Common::ConvertProbeFactor(8.0, Unit(95)), 0.125);
    EXPECT_EQ(Common::ConvertProbeFactor(0.0, Unit(95)), kInf);
    EXPECT_EQ(Common::ConvertProbeFactor(-0.0, Unit(95)), -kInf);
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
    EXPECT_EQ(Common::ConvertProbeFactor(8.0, Unit(77)), 8.0);
    ExpectReport(reports, "Unknown probe unit= 77", kHelpers,
                 "CZELDatabaseHelperCommon::ConvertProbeFactor");
}
} // namespace
