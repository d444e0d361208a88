// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPropBase.h"
#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"
#include "zel/RuleTree.h"

#include <algorithm>

namespace
{
// Functions of the meter and the counters, one after the other.
const t_Session kMeterSessions[] = {
    {"HandSetRangeGoesToOhm",
     {{"Meter/MeterChannel[4]/Range = 100; Meter/MeterType = OHM",
       "Meter/MeterChannel[4]/AutoRange = ON; .Range = 1_KILO"},
      {"Meter/MeterType = DC_VOLT",
       "Meter/MeterChannel[4]/AutoRange = OFF; .Range = 100; .RangeUpperLimit = 100"},
      {"Meter/MeterType = OHM; .MeterChannel[4]/Range = 10_MEGA; Meter/MeasTypeGUI = VOLTAGE",
       "Meter/MeterType = DC_VOLT; .MeterChannel[4]/AutoRange = OFF; .Range = 100"},
      {"Meter/MeasTypeGUI = RESISTANCE",
       "Meter/MeterType = OHM; .MeterChannel[4]/AutoRange = OFF; .Range = 10_MEGA; "
       "Meter/TestCurrent = 100_NANO_A"}}},
    {"CouplingTakesTheRangeAlong",
     {{"Meter/MeterChannel[4]/Range = 100; Meter/MeterType = AC_VOLT",
       "Meter/MeterChannel[4]/AutoRange = ON; .Range = 10"},
      {"Meter/MeterType = DC_VOLT", "Meter/MeterChannel[4]/AutoRange = OFF; .Range = 100"}}},
    {"ProbeIsForgotten",
     {{"Meter/ProbeType = VOLTAGE_100_TO_1; .MeterType = OHM", "Meter/ProbeType = VOLTAGE_1_TO_1"},
      {"Meter/MeterType = DC_CURR; .ProbeType = CURRENT_10_MV_PER_A; .MeterType = DC_VOLT",
       "Meter/ProbeType = VOLTAGE_100_TO_1; .ProbeFactor = 100; "
       ".MeterChannel[4]/RangeUpperLimit = 1000"},
      {"Meter/MeterType = DC_CURR", "Meter/ProbeType = CURRENT_10_MV_PER_A; .ProbeFactor = 100"}}},
    {"UserProbeOfVoltsMeasuresAmperes",
     {{"Meter/ProbeType = USER; .ProbeUserFactor = 50; .MeterType = AC_CURR; .ProbeType = USER",
       "Meter/ProbeUserFactor = 1; .ProbeUserUnit = LEVEL_A"},
      {"Meter/MeterType = DC_VOLT",
       "Meter/ProbeType = USER; .ProbeUserFactor = 50; .ProbeUserUnit = LEVEL_V"}}},
    {"VoltsAreTheReferenceOfOhms",
     {{"Meter/MeterChannel[4]/Reference = 5.2; .RelativeEnabled = ON; .LimitCheckEnabled = ON; "
       ".UpperLimit = 7; .LowerLimit = 6; .MeterMeasurement[0]/ResultType = RELATIVE; "
       "Meter/MeterType = OHM",
       "Meter/MeterChannel[4]/MeterMeasurement[0]/ResultType = ACTUAL; ..Reference = 0; "
       ".RelativeEnabled = OFF; .LimitCheckEnabled = OFF; "
       ".LowerLimit = -1; .UpperLimit = 1"},
      {"Meter/MeterType = DIODE; .MeterType = DC_VOLT",
       "Meter/MeterChannel[4]/Reference = 5.2; .RelativeEnabled = ON; .LimitCheckEnabled = ON; "
       ".LowerLimit = 6; .UpperLimit = 7; .MeterMeasurement[0]/ResultType = RELATIVE; "
       "..StatusIcon = RELATIVE"}}},
    {"CelsiusAreTheReferenceOfFahrenheit",
     {{"Meter/MeterType = TEMP; .ProbeType = PT100; .MeterChannel[4]/Reference = 20; "
       "Meter/TemperatureUnit = TEMPERATURE_F",
       "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit = FAHRENHEIT; ..Reference = 0"},
      {"Meter/TemperatureUnit = TEMPERATURE_DEG", "Meter/MeterChannel[4]/Reference = 20"}}},
    {"VoltmeterComparesHertzWithVolts",
     {{"Meter/MeterChannel[1]/Reference = 5.2; .RelativeEnabled = ON; "
       ".MeterMeasurement[0]/Type = FREQUENCY",
       "Meter/MeterChannel[1]/Reference = 0; .RelativeEnabled = OFF"},
      {"Meter/MeterChannel[1]/Reference = 50; .MeterMeasurement[0]/Type = DC",
       "Meter/MeterChannel[1]/Reference = 5.2; .RelativeEnabled = ON; "
       "Meter/MeterChannel[0]/Reference = 0"},
      {"Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A", "Meter/MeterChannel[1]/Reference = 0"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_10_TO_1",
       "Meter/MeterChannel[1]/Reference = 5.2"}}},
    {"CounterComparesSecondsWithHertz",
     {{"Counter/CounterChannel[0]/CounterNumerics/Reference = 1000; .Readout = RELATIVE; "
       "..MeasurementType = PERIOD",
       "Counter/CounterChannel[0]/CounterNumerics/Reference = 0; .Readout = ABSOLUTE"},
      {"Counter/CounterChannel[0]/CounterNumerics/Reference = 0.002; ..MeasurementType = FREQUENCY",
       "Counter/CounterChannel[0]/CounterNumerics/Reference = 1000; .Readout = RELATIVE; "
       "Counter/CounterChannel[1]/CounterNumerics/Reference = 0"},
      {"Counter/CounterChannel[0]/MeasurementType = PERIOD",
       "Counter/CounterChannel[0]/CounterNumerics/Reference = 0.002; .Readout = ABSOLUTE"}}},
    {"RmsOfAcIsThatOfAcAndDc",
     {{"Meter/MeterType = AC_VOLT; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Count = 5; "
       "@.Average = 2; @.Minimum = 1; @.Status = VALID; Meter/MeterType = AD_VOLT",
       "Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2-; .Relative = 2-; .Count = 0; "
       ".Average = 2-; .Minimum = 1-; .Status = NO_READING"}}},
    {"RangeOfNobodyIsSet",
     {{"Meter/Mode = VOLTMETER",
       "Meter/MeterChannel[0]/AutoRange = ON!; .Range = 10!; Meter/MeterChannel[3]/Range = 10!; "
       "Meter/MeterChannel[4]/Range = 10; .MeterMeasurement[0]/Type = DC!; "
       "..MeterMeasurement[1]/Type = FREQUENCY; Meter/RememberedSettings = !"}}},
    {"SymbolIsOfAnotherState",
     {{"",
       "Meter/MeterChannel[4]/StatusIcon = AUTO_RANGE; Meter/MeterChannel[0]/StatusIcon = NONE"},
      {"Meter/MeterChannel[4]/AutoRange = OFF", "Meter/MeterChannel[4]/StatusIcon = NONE"},
      {"Meter/TriggerMode = AUTO_HOLD", "Meter/MeterChannel[4]/StatusIcon = HOLD"},
      {"Meter/MeterChannel[4]/RelativeEnabled = ON", "Meter/MeterChannel[4]/StatusIcon = RELATIVE"},
      {"Meter/MeterChannel[4]/MeterMeasurement[0]/ResultType = MINIMUM",
       "Meter/MeterChannel[4]/StatusIcon = MIN_MAX"},
      {"@Meter/MeterChannel[4]/MeterMeasurement[0]/Status = OVERLOAD",
       "Meter/MeterChannel[4]/StatusIcon = OVERLOAD"},
      {"@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = -61; @.Status = VALID",
       "Meter/MeterChannel[4]/StatusIcon = HAZARDOUS_VOLTAGE"},
      {"Meter/MeterChannel[4]/LimitCheckEnabled = ON; "
       "@.MeterMeasurement[0]/Limit = UNDERFLOW",
       "Meter/MeterChannel[4]/StatusIcon = LIMIT_VIOLATED"},
      {"Meter/MeterChannel[4]/LowerLimit = -70",
       "Meter/MeterChannel[4]/StatusIcon = HAZARDOUS_VOLTAGE; .MeterMeasurement[0]/Limit = INSIDE"},
      {"Meter/MeterType = AC_VOLT; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 31",
       "Meter/MeterChannel[4]/StatusIcon = HAZARDOUS_VOLTAGE"},
      {"Meter/MeterType = CONTINUITY; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 20",
       "Meter/MeterChannel[4]/StatusIcon = CONTINUITY"},
      {"Meter/ContinuityThreshold = 10", "Meter/MeterChannel[4]/StatusIcon = HOLD"},
      {"Meter/MeterType = DIODE; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 0.6",
       "Meter/MeterChannel[4]/StatusIcon = DIODE"},
      {"Meter/Mode = VOLTMETER",
       "Meter/MeterChannel[4]/StatusIcon = NONE; Meter/MeterChannel[0]/StatusIcon = HOLD"},
      {"Meter/TriggerMode = CONTINUOUS", "Meter/MeterChannel[0]/StatusIcon = AUTO_RANGE"},
      {"Meter/MeterSourceChannel[0]/AutoRange = OFF", "Meter/MeterChannel[0]/StatusIcon = NONE"},
      {"Meter/MeterChannel[0]/RelativeEnabled = ON; .Enabled = OFF",
       "Meter/MeterChannel[0]/StatusIcon = NONE"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Meter, Sessions, testing::ValuesIn(kMeterSessions), Sessions::Name);

namespace
{
const CDbPropBase& NodeOf(const CRuleTree& tree, const char* path)
{
    return dynamic_cast<CDbPropBase&>(*Property(tree.root, path));
}

/** What a version that remembered nothing has saved. */
QByteArray WithoutMemory(const QByteArray& saved)
{
    QByteArrayList lines = saved.split('\n');
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QByteArray& line)
                               { return line.contains("RememberedSettings"); }),
                lines.end());
    return lines.join('\n');
}

constexpr const char* kMemory = "Meter/MeterChannel[4]/RememberedSettings";
} // namespace

TEST(FunctionMemory, FileMixesFunctionsOrLosesTheOthers)
{
    const CRuleTree tree;
    tree.DoAll("Meter/MeterType = OHM; .MeterChannel[4]/Range = 10_MEGA; .Reference = 7");
    const QByteArray ohms = Saved(tree.root);
    ASSERT_EQ(tree.root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(tree.State(kMemory), QStringLiteral("!"));
    tree.DoAll("Meter/MeterChannel[4]/Range = 100; .Reference = 7; Meter/ProbeType = "
               "VOLTAGE_10_TO_1");
    // A file that names the function alone selects it.
    EXPECT_EQ(RecallNaming(tree.root, NodeOf(tree, "Meter/MeterType"), QStringLiteral("OHM")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/AutoRange"), QStringLiteral("ON"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Reference"), QStringLiteral("0"));
    tree.DoAll("Meter/MeterType = DC_VOLT");
    // What a file names besides is the function's, also where it stood for another one before.
    EXPECT_EQ(RecallText(tree.root, WithoutMemory(ohms)), eKW_ACC_OK);
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Range"), QStringLiteral("10_MEGA"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/AutoRange"), QStringLiteral("OFF"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Reference"), QStringLiteral("7"));
    tree.DoAll("Meter/MeterChannel[4]/Reference = 8");
    const QByteArray both = Saved(tree.root);
    ASSERT_EQ(tree.root->GetPrPreset()->Set(), eKW_ACC_OK);
    EXPECT_EQ(RecallText(tree.root, both), eKW_ACC_OK);
    tree.DoAll("Meter/MeasTypeGUI = VOLTAGE");
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Range"), QStringLiteral("100"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Reference"), QStringLiteral("7"));
    EXPECT_EQ(tree.State("Meter/ProbeType"), QStringLiteral("VOLTAGE_10_TO_1"));
    tree.DoAll("Meter/MeterType = OHM");
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Range"), QStringLiteral("10_MEGA"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/Reference"), QStringLiteral("8"));
    EXPECT_EQ(tree.reports.Messages().toStdString(), "");
}

TEST(Meter, RecallLeavesReadingsOfBefore)
{
    const CRuleTree tree;
    tree.DoAll("Meter/MeterType = AC_VOLT; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 2; "
               "@.Status = VALID; @Counter/CounterChannel[0]/CounterNumerics/Value = 3; "
               "@..Statistics/Count = 3; @.Mean = 3");
    EXPECT_EQ(RecallNaming(tree.root, NodeOf(tree, "Counter/CounterChannel[0]/MeasurementType"),
                           QStringLiteral("PERIOD")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.State("Counter/CounterChannel[0]/CounterNumerics/Value"), QStringLiteral("3-"));
    EXPECT_EQ(tree.State("Counter/CounterChannel[0]/Statistics/Mean"), QStringLiteral("3-"));
    EXPECT_EQ(tree.State("Counter/CounterChannel[0]/Statistics/Count"), QStringLiteral("0"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/MeterMeasurement[0]/Actual"), QStringLiteral("2"));
    RecallNaming(tree.root, NodeOf(tree, "Meter/MeterType"), QStringLiteral("AD_VOLT"));
    EXPECT_EQ(tree.State("Meter/MeterChannel[4]/MeterMeasurement[0]/Actual"), QStringLiteral("2-"));
}

TEST(FunctionMemory, GarbageOfAFileIsAppliedOrKept)
{
    CRuleTree tree;
    tree.DoAll("Meter/MeterChannel[4]/Range = 100");
    const QString sound =
        QStringLiteral("DC_VOLT/METER_V AutoRange=OFF Range=100; OHM/METER_OHM Reference=7");
    const CDbPropBase& memory = NodeOf(tree, kMemory);
    EXPECT_EQ(Property(tree.root, kMemory)->SetText(sound), eKW_ACC_READ_ONLY);
    for (const char* const garbage :
         {"OHM Reference=1", "OHM/LEVEL Reference=1", "ohm/METER_OHM Reference=1", "OHM/METER_OHM",
          "OHM/METER_OHM/ Reference=1", "OHM/METER_OHM  Reference=1", "OHM/METER_OHM Reference",
          "DIODE/LEVEL_V LowerLimit=2 Reference=1e13", "DIODE/LEVEL_V Reference=nan",
          "DIODE/LEVEL_V Reference=1 Reference=1", "DIODE/LEVEL_V Bargraph=1", ";",
          "DIODE/LEVEL_V AutoRange=PERHAPS", "OHM/METER_OHM Reference=8",
          "DC_VOLT/METER_V Range=1"})
    {
        SCOPED_TRACE(garbage);
        const QString text = sound + QStringLiteral("; ") + QString::fromLatin1(garbage);
        EXPECT_EQ(RecallNaming(tree.root, memory, text), eKW_ACC_WARNING);
        EXPECT_EQ(tree.Text(kMemory), sound);
        EXPECT_FALSE(tree.reports.List().isEmpty());
        tree.reports.Clear();
    }
    EXPECT_EQ(RecallNaming(tree.root, memory, QStringLiteral("\t=; x")), eKW_ACC_WARNING);
    EXPECT_EQ(tree.Text(kMemory).toStdString(), "DC_VOLT/METER_V AutoRange=OFF Range=100");
    QString full = QStringLiteral("DC_VOLT/METER_V");
    for (INT32 unit = 0; full.size() < 4050; ++unit)
    {
        const QString name = GetStaticEnumNameInfo<KW_UNIT>().GetSerialName(unit);
        full += QStringLiteral("; OHM/%1 Reference=7; DIODE/%1 Reference=7").arg(name);
    }
    ASSERT_LE(full.size(), 4096);
    EXPECT_EQ(RecallNaming(tree.root, memory, full), eKW_ACC_WARNING) << "no room for the range";
    EXPECT_EQ(tree.Text(kMemory).toStdString(), "DC_VOLT/METER_V AutoRange=OFF Range=100");
}
