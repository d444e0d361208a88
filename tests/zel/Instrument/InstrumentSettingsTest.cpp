// SPDX-License-Identifier: MIT
#include "IKWFunctionMeter.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "zel/ZelTree.h"

#include <gtest/gtest.h>

namespace
{
using t_Helper = CZELDatabaseHelperCommon;

KW_UNIT TemperatureUnitOf(KW_PROBE_TYPE probe)
{
    KW_UNIT outUnit = eKW_UNIT_NONE;
    const t_Helper::ProbeSettings settings = t_Helper::GetProbeSettingsDmm(
        eKW_ZEL_DMM_MEAS_TYPE_TEMP, {probe, 1.0, eKW_UNIT_LEVEL_V}, outUnit);
    EXPECT_EQ(settings.unit, outUnit);
    EXPECT_EQ(settings.factor, 1.0);
    return outUnit;
}

void SetText(const std::shared_ptr<IKWFunctionZEL>& root, const char* path, const char* text)
{
    ASSERT_EQ(Property(root, path)->SetText(QString::fromLatin1(text)), eKW_ACC_OK) << text;
}
} // namespace

TEST(InstrumentSettings, SamplingRateIgnoresTheTreeOrBuildsOne)
{
    const CReports reports;
    EXPECT_EQ(t_Helper::GetSamplingRateADC(), 1e6);
    {
        const auto root = GetZELRoot();
        const std::pair<const char*, double> rows[] = {
            {"2_MSPS", 2e6}, {"4_MSPS", 4e6}, {"1_MSPS", 1e6}, {"4_MSPS", 4e6}};
        for (const auto& [rate, expected] : rows)
        {
            SetText(root, "Meter/AdcRate", rate);
            EXPECT_EQ(t_Helper::GetSamplingRateADC(), expected) << rate;
        }
    }
    EXPECT_EQ(t_Helper::GetSamplingRateADC(), 1e6) << "rate of a tree that is gone";
    EXPECT_EQ(reports.List(), QStringList());
}

TEST(InstrumentSettings, TemperatureUnitIgnoresTheTreeOrTheSensorsOwnUnit)
{
    const CReports reports;
    EXPECT_EQ(TemperatureUnitOf(eKW_PROBE_TYPE_PT100), eKW_UNIT_TEMPERATURE_DEG);
    {
        const auto root = GetZELRoot();
        const std::pair<const char*, KW_UNIT> rows[] = {
            {"TEMPERATURE_F", eKW_UNIT_TEMPERATURE_F},
            {"TEMPERATURE_K", eKW_UNIT_TEMPERATURE_K},
            {"TEMPERATURE_DEG", eKW_UNIT_TEMPERATURE_DEG},
            {"TEMPERATURE_K", eKW_UNIT_TEMPERATURE_K}};
        for (const auto& [unit, expected] : rows)
        {
            SetText(root, "Meter/TemperatureUnit", unit);
            EXPECT_EQ(TemperatureUnitOf(eKW_PROBE_TYPE_PT1000), expected) << unit;
            EXPECT_EQ(TemperatureUnitOf(eKW_PROBE_TYPE_TEMPERATURE_1_MV_PER_DEG_C),
                      eKW_UNIT_TEMPERATURE_DEG);
            EXPECT_EQ(TemperatureUnitOf(eKW_PROBE_TYPE_TEMPERATURE_1_MV_PER_DEG_F),
                      eKW_UNIT_TEMPERATURE_F);
        }
    }
    EXPECT_EQ(TemperatureUnitOf(eKW_PROBE_TYPE_PT500), eKW_UNIT_TEMPERATURE_DEG)
        << "unit of a tree that is gone";
    EXPECT_EQ(reports.List(), QStringList());
}
