// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPropBase.h"
#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"
#include "zel/RuleTree.h"

namespace
{
// Functions of the meter and the counters, one after the other.
const t_Session kMeterSessions[] = {
    {"HandSetRangeGoesToOhm",
     {{"Meter/MeterChannel[4]/Range = 100; Meter/MeterType = OHM",
       "Meter/MeterChannel[4]/AutoRange = ON; .Range = 1_KILO"},
      {"Meter/MeterChannel[4]/Range = 10_MEGA; Meter/MeasTypeGUI = VOLTAGE",
       "Meter/MeterType = DC_VOLT; .MeterChannel[4]/AutoRange = OFF; .Range = 100; "
       ".RangeUpperLimit = 100"},
      {"Meter/MeasTypeGUI = RESISTANCE",
       "Meter/MeterChannel[4]/AutoRange = OFF; .Range = 10_MEGA; Meter/TestCurrent = 100_NANO_A"}}},
    {"ProbeIsForgotten",
     {{"Meter/ProbeType = VOLTAGE_100_TO_1; .MeterType = OHM", "Meter/ProbeType = VOLTAGE_1_TO_1"},
      {"Meter/MeterType = DC_CURR; .ProbeType = CURRENT_10_MV_PER_A; .MeterType = DC_VOLT",
       "Meter/ProbeType = VOLTAGE_100_TO_1; .MeterChannel[4]/RangeUpperLimit = 1000"},
      {"Meter/MeterType = DC_CURR", "Meter/ProbeType = CURRENT_10_MV_PER_A; .ProbeFactor = 100"}}},
    {"VoltsAreTheReferenceOfOhms",
     {{"Meter/MeterChannel[4]/Reference = 5.2; .RelativeEnabled = ON; .LimitCheckEnabled = ON; "
       ".UpperLimit = 7; .LowerLimit = 6; Meter/MeterType = OHM",
       "Meter/MeterChannel[4]/Reference = 0; .RelativeEnabled = OFF; .LimitCheckEnabled = OFF; "
       ".LowerLimit = -1; .UpperLimit = 1"},
      {"Meter/MeterType = DIODE; .MeterType = DC_VOLT",
       "Meter/MeterChannel[4]/Reference = 5.2; .RelativeEnabled = ON; .LimitCheckEnabled = ON; "
       ".LowerLimit = 6; .UpperLimit = 7"}}},
    {"CelsiusAreTheReferenceOfFahrenheit",
     {{"Meter/MeterType = TEMP; .ProbeType = PT100; .MeterChannel[4]/Reference = 20; "
       "Meter/TemperatureUnit = TEMPERATURE_F",
       "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit = FAHRENHEIT; ..Reference = 0"},
      {"Meter/TemperatureUnit = TEMPERATURE_DEG", "Meter/MeterChannel[4]/Reference = 20"}}},
    {"VoltmeterComparesHertzOrAmperesWithVolts",
     {{"Meter/MeterChannel[1]/Reference = 5.2; .MeterMeasurement[0]/Type = FREQUENCY",
       "Meter/MeterChannel[1]/Reference = 0"},
      {"Meter/MeterChannel[1]/Reference = 50; .MeterMeasurement[0]/Type = DC",
       "Meter/MeterChannel[1]/Reference = 5.2"},
      {"Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A", "Meter/MeterChannel[1]/Reference = 0"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_10_TO_1",
       "Meter/MeterChannel[1]/Reference = 5.2"}}},
    {"CounterComparesSecondsWithHertz",
     {{"Counter/CounterChannel[0]/CounterNumerics/Reference = 1000; .Readout = RELATIVE; "
       "..MeasurementType = PERIOD",
       "Counter/CounterChannel[0]/CounterNumerics/Reference = 0; .Readout = ABSOLUTE"},
      {"Counter/CounterChannel[0]/MeasurementType = FREQUENCY",
       "Counter/CounterChannel[0]/CounterNumerics/Reference = 1000; .Readout = RELATIVE"}}},
    {"RmsOfAcIsThatOfAcAndDc",
     {{"Meter/MeterType = AC_VOLT; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Count = 5; "
       "@.Average = 2; @.Resolution = 0.1; Meter/MeterType = AD_VOLT",
       "Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2-; .Count = 0; .Average = 2-; "
       ".Resolution = 0.1-"}}},
    {"RangeOfNobodyIsSet",
     {{"Meter/Mode = VOLTMETER",
       "Meter/MeterChannel[0]/AutoRange = ON!; .Range = 10!; Meter/MeterChannel[4]/Range = 10; "
       ".MeterMeasurement[0]/Type = DC!; ..MeterMeasurement[1]/Type = FREQUENCY"}}},
    {"SymbolIsOfAnotherState",
     {{"",
       "Meter/MeterChannel[4]/StatusIcon = AUTO_RANGE; Meter/MeterChannel[0]/StatusIcon = NONE"},
      {"Meter/TriggerMode = AUTO_HOLD", "Meter/MeterChannel[4]/StatusIcon = HOLD"},
      {"Meter/MeterChannel[4]/RelativeEnabled = ON", "Meter/MeterChannel[4]/StatusIcon = RELATIVE"},
      {"Meter/MeterChannel[4]/MeterMeasurement[0]/ResultType = MINIMUM",
       "Meter/MeterChannel[4]/StatusIcon = MIN_MAX"},
      {"@Meter/MeterChannel[4]/MeterMeasurement[0]/Status = OVERLOAD",
       "Meter/MeterChannel[4]/StatusIcon = OVERLOAD"},
      {"@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = -61; @.Status = VALID",
       "Meter/MeterChannel[4]/StatusIcon = HAZARDOUS_VOLTAGE"},
      {"Meter/MeterChannel[4]/LimitCheckEnabled = ON; @.MeterMeasurement[0]/Limit = UNDERFLOW",
       "Meter/MeterChannel[4]/StatusIcon = LIMIT_VIOLATED"},
      {"Meter/MeterChannel[4]/LowerLimit = -70",
       "Meter/MeterChannel[4]/StatusIcon = HAZARDOUS_VOLTAGE; .MeterMeasurement[0]/Limit = INSIDE"},
      {"Meter/MeterType = CONTINUITY; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 20",
       "Meter/MeterChannel[4]/StatusIcon = CONTINUITY"},
      {"Meter/ContinuityThreshold = 10", "Meter/MeterChannel[4]/StatusIcon = HOLD"},
      {"Meter/MeterType = DIODE; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 0.6",
       "Meter/MeterChannel[4]/StatusIcon = DIODE"},
      {"Meter/Mode = VOLTMETER; .TriggerMode = CONTINUOUS",
       "Meter/MeterChannel[4]/StatusIcon = NONE; Meter/MeterChannel[0]/StatusIcon = AUTO_RANGE"},
      {"Meter/MeterSourceChannel[0]/AutoRange = OFF", "Meter/MeterChannel[0]/StatusIcon = NONE"}}},
};

const QByteArray kChannel = "Meter/MeterChannel[4]/";
const QByteArray kMemory = kChannel + "RememberedSettings";

/** Range, automatic and reference of the multimeter. */
std::string Settings(const CRuleTree& tree)
{
    return (tree.Text(kChannel + "Range") + u' ' + tree.Text(kChannel + "AutoRange") + u' ' +
            tree.Text(kChannel + "Reference"))
        .toStdString();
}

KW_ACCEPTANCE RecallOf(const CRuleTree& tree, const char* path, const QString& text)
{
    return RecallNaming(tree.root, dynamic_cast<CDbPropBase&>(*Property(tree.root, path)), text);
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Meter, Sessions, testing::ValuesIn(kMeterSessions), Sessions::Name);

TEST(FunctionMemory, FileMixesFunctionsOrLosesTheOthers)
{
    const CRuleTree tree;
    tree.DoAll("Meter/MeterType = OHM; .MeterChannel[4]/Range = 10_MEGA; .Reference = 7");
    const QByteArray ohms = Saved(tree.root).replace("RememberedSettings", "LaterSettings");
    ASSERT_EQ(tree.root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(tree.State(kMemory), QStringLiteral("!"));
    tree.DoAll("Meter/MeterChannel[4]/Range = 100; .Reference = 7");
    EXPECT_EQ(RecallOf(tree, "Meter/MeterType", QStringLiteral("OHM")), eKW_ACC_OK);
    EXPECT_EQ(Settings(tree), "1_KILO ON 0");
    tree.DoAll("Meter/MeterType = DC_VOLT");
    // What a file names is the function's, also where it stood for another one before.
    EXPECT_EQ(RecallText(tree.root, ohms), eKW_ACC_WARNING);
    EXPECT_EQ(Settings(tree), "10_MEGA OFF 7");
    const QByteArray both = Saved(tree.root);
    ASSERT_EQ(tree.root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(RecallText(tree.root, both), eKW_ACC_OK);
    tree.DoAll("Meter/MeterType = DC_VOLT");
    EXPECT_EQ(Settings(tree), "100 OFF 7");
}

TEST(FunctionMemory, GarbageOfAFileIsAppliedOrKept)
{
    const CRuleTree tree;
    tree.DoAll("Meter/MeterChannel[4]/Range = 100");
    const auto range = QStringLiteral("DC_VOLT/METER_V AutoRange=OFF Range=100");
    const QString sound = range + QStringLiteral("; OHM/METER_OHM Reference=7");
    EXPECT_EQ(Property(tree.root, kMemory)->SetText(sound), eKW_ACC_READ_ONLY);
    auto full = QStringLiteral("DC_VOLT/METER_V"); // without room for the range
    for (INT32 unit = 0; full.size() < 4050; ++unit)
    {
        const QString name = GetStaticEnumNameInfo<KW_UNIT>().GetSerialName(unit);
        full += QStringLiteral("; OHM/%1 Reference=7; DIODE/%1 Reference=7").arg(name);
    }
    for (const char* const garbage :
         {"OHM Reference=1", "OHM/LEVEL Reference=1", "ohm/LEVEL_V Reference=1", "OHM/LEVEL_V",
          "OHM/LEVEL_V  Reference=1", "OHM/LEVEL_V Reference", "OHM/METER_OHM Reference=8",
          "DIODE/LEVEL_V LowerLimit=2 Reference=1e13", "DIODE/LEVEL_V Reference=nan", ";",
          "DIODE/LEVEL_V Reference=1 Reference=1", "DIODE/LEVEL_V AutoRange=PERHAPS",
          "DC_VOLT/METER_V Range=1"})
    {
        EXPECT_EQ(RecallOf(tree, kMemory, sound + QStringLiteral("; ") + QLatin1String(garbage)),
                  eKW_ACC_WARNING);
        EXPECT_EQ(tree.Text(kMemory).toStdString(), sound.toStdString()) << garbage;
    }
    for (const QString& garbage : {QStringLiteral("\t=; x"), full})
    {
        EXPECT_EQ(RecallOf(tree, kMemory, garbage), eKW_ACC_WARNING);
        EXPECT_EQ(tree.Text(kMemory).toStdString(), range.toStdString());
    }
    EXPECT_EQ(Settings(tree), "100 OFF 0");
}

TEST(Meter, RecallLeavesReadingsOfBefore)
{
    const CRuleTree tree;
    tree.DoAll("Meter/MeterType = AC_VOLT; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 2; "
               "@Counter/CounterChannel[0]/CounterNumerics/Value = 3; @..Statistics/Mean = 3");
    RecallOf(tree, "Counter/CounterChannel[0]/MeasurementType", QStringLiteral("PERIOD"));
    RecallOf(tree, "Meter/MeterType", QStringLiteral("AD_VOLT"));
    EXPECT_EQ(tree.State("Counter/CounterChannel[0]/CounterNumerics/Value"), QStringLiteral("3-"));
    EXPECT_EQ(tree.State("Counter/CounterChannel[0]/Statistics/Mean"), QStringLiteral("3-"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/MeterMeasurement[0]/Actual"), QStringLiteral("2-"));
}
