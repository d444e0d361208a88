// SPDX-License-Identifier: MIT
#include "HelperCases.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
using Common = CZELDatabaseHelperCommon;

struct t_TemperatureRow
{
    INT32 type;
    double input;
    double output;
    double tolerance;
};

// Expected values were computed with 40 digits from the equation R0 × (1 + A T + B T² + …), not
// with the completed square: 5e-7 relative is what its rounded coefficients leave.
TEST(CommonTemperature, GivesWrongResistance)
{
    const t_TemperatureRow rows[] = {
        {15, 0.0, 100.0, 5e-5},
        {15, 100.0, 138.5055, 1e-4},
        {15, 400.0, 247.092, 2e-4},
        {15, 850.0, 390.481125, 2e-4},
        {15, -50.0, 80.306281875, 1e-10},
        {15, -200.0, 18.52008, 1e-10},
        {15, -0.001, 99.9996091699422, 1e-10},
        {15, 900.0, 161.01694, 1e-10}, // above 850 °C the third order term is back
        {16, 0.0, 500.0, 3e-4},
        {16, 100.0, 692.5275, 5e-4},
        {16, -50.0, 401.426834375, 1e-10}, // (T − 500), not the standard's (T − 100)
        {16, -200.0, 85.9076, 1e-10},
        {16, 900.0, 1414.9661, 1e-10},
        {17, 0.0, 1000.0, 5e-4},
        {17, 850.0, 3904.81125, 2e-3},
        {17, -50.0, 802.59223125, 1e-10},
        {17, -1000.0, -11851.8, 1e-8},
        {15, 850.5, 197.49220188642508, 1e-10},
        // One representable number beside the seam stays on the quadratic.
        {15, std::nextafter(850.0, 851.0), 390.481125, 2e-4},
        {15, -std::numeric_limits<double>::denorm_min(), 100.0, 5e-5}};
    CReports reports;
    for (const auto& [type, celsius, ohm, tolerance] : rows)
        EXPECT_NEAR(Common::ConvertTemperature2Resistance(Probe(type), celsius), ohm, tolerance)
            << "type " << type << " at " << celsius;
    EXPECT_TRUE(std::isnan(Common::ConvertTemperature2Resistance(Probe(15), kNan)));
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

TEST(CommonTemperature, GivesWrongTemperature)
{
    const t_TemperatureRow rows[] = {{15, 18.52, -200.000127393645, 1e-9},
                                     {15, 80.0, -50.77113196928, 1e-9},
                                     {15, 99.999, -0.0025306861586712, 1e-9},
                                     {15, 100.0, -0.000122948461426, 1e-9},
                                     {15, 138.5055, 99.9998733074585, 1e-9},
                                     {15, 390.0, 848.356368287344, 1e-9},
                                     {16, 100.0, -196.5719259091, 1e-9},
                                     {16, 400.0, -50.7710914624, 1e-9},
                                     {16, 692.5275, 99.9998733074585, 1e-9},
                                     {17, 200.0, -196.57193591552, 1e-9},
                                     {17, 800.0, -50.77113196928, 1e-9},
                                     {17, 3904.8, 849.995991693222, 1e-9},
                                     {15, std::nextafter(100.0, 0.0), -0.000122948461426, 1e-9},
                                     {17, std::nextafter(1000.0, 0.0), -0.000122948461426, 1e-9},
                                     {15, kNan, 0.0, 0.0}};
    CReports reports;
    for (const auto& [type, ohm, celsius, tolerance] : rows)
        EXPECT_NEAR(Common::ConvertResistance2Temperature(Probe(type), ohm), celsius, tolerance)
            << "type " << type << " at " << ohm;
    EXPECT_TRUE(std::isnan(Common::ConvertResistance2Temperature(Probe(15), 761.3)));
    EXPECT_TRUE(std::isnan(Common::ConvertResistance2Temperature(Probe(15), kInf)));
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}

// Below 0 °C the 500 and 1000 Ω sensors do not come back: their third-order term is not the
// standard's, which the polynomial of the way back is.
TEST(CommonTemperature, DoesNotComeBackFromResistance)
{
    for (const INT32 type : {15, 16, 17})
    {
        for (int tenths = type == 15 ? -2000 : 0; tenths <= 8500; ++tenths)
        {
            const double celsius = tenths * 0.1;
            const double ohm = Common::ConvertTemperature2Resistance(Probe(type), celsius);
            ASSERT_NEAR(Common::ConvertResistance2Temperature(Probe(type), ohm), celsius, 0.01)
                << "type " << type;
        }
    }
}

// The last digits depend on the order of the terms: another order is another result.
TEST(CommonTemperature, SumsTermsInAnotherOrder)
{
    EXPECT_EQ(Common::ConvertTemperature2Resistance(Probe(15), -199.0), 18.952232336051694);
    EXPECT_EQ(Common::ConvertTemperature2Resistance(Probe(15), 123.0), 147.19843830194793);
    EXPECT_EQ(Common::ConvertResistance2Temperature(Probe(15), 1.02), -239.7499465570187);
    EXPECT_EQ(Common::ConvertResistance2Temperature(Probe(15), 18.423), -200.22446711977184);
    EXPECT_EQ(Common::ConvertResistance2Temperature(Probe(15), 123.0), 59.36982256301112);
}

TEST(CommonTemperature, AcceptsProbeThatIsNoPlatinum)
{
    for (const INT32 type : {-1, 0, 13, 14, 18, 19})
    {
        for (const double value : {20.0, -20.0, 900.0, kNan})
        {
            CReports there;
            EXPECT_EQ(Common::ConvertTemperature2Resistance(Probe(type), value), 0.0);
            ExpectReport(there, "Unsupported temperature probe.", kHelpers,
                         "ConvertTemperature2Resistance");
            CReports back;
            EXPECT_EQ(Common::ConvertResistance2Temperature(Probe(type), value), 0.0);
            ExpectReport(back, "Unsupported temperature probe.", kHelpers,
                         "ConvertResistance2Temperature");
        }
    }
}

TEST(CommonTemperature, MixesUpUnits)
{
    const struct
    {
        INT32 unit;
        double celsius;
        double value;
    } rows[] = {{85, 100.0, 212.0}, {85, -40.0, -40.0}, {86, 0.0, 273.15},
                {84, 21.5, 21.5},   {28, 21.5, 21.5},   {-1, 21.5, 21.5}};
    CReports reports;
    for (const auto& [number, celsius, value] : rows)
    {
        const auto unit = static_cast<KW_UNIT>(number);
        EXPECT_DOUBLE_EQ(Common::ConvertTempCelsius(celsius, unit), value);
        EXPECT_DOUBLE_EQ(Common::ConvertTemp2Celsius(value, unit), celsius);
    }
    EXPECT_EQ(reports.TakeMessages(), OneMessage(""));
}
} // namespace
