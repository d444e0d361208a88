// SPDX-License-Identifier: MIT
#include "KWBrackets.h"
#include "zel/RuleTree.h"

#include <cmath>

namespace
{
const t_Rule kMeterRules[] = {
    {"ResistanceFindsItsPath", "Meter/ProbeType = VOLTAGE_100_TO_1", ".MeterType = OHM",
     ".MeasTypeGUI = RESISTANCE; .MeasType = OHM; .ProbeType = VOLTAGE_1_TO_1; .ProbeType.values = "
     "VOLTAGE_1_TO_1; .InputType = SOURCE; .AdcPath = DC; .TestCurrent = 1_MILLI_A; "
     ".MeterChannel[4]/Range = 1_KILO; .RangeLowerLimit = -1000; .MeterMeasurement[0]/Unit = OHM"},
    {"GroupKeepsTheCouplingInBetween", "Meter/MeterType = AD_VOLT; .MeterType = DIODE",
     ".MeasTypeGUI = CURRENT",
     ".MeterType = AD_CURR; .MeasType = AD_VOLT; .AdcPath = AC; .ProbeType = CURRENT_100_V_PER_A; "
     ".ProbeKind = CURRENT; .ProbeFactor = 0.01; .ProbeUserUnit = LEVEL_A; "
     ".MeterChannel[4]/MeterMeasurement[0]/Unit = AMPERE; ..RangeUpperLimit = 0.1"},
    {"CouplingThatIsNoneEndsTheProgram", "Meter/MeterType = OHM; @.Coupling = CAPACITY",
     ".MeasTypeGUI = CURRENT", ".MeterType = AC_CURR"},
    {"GroupOfTheSameCouplingStays", "Meter/MeterType = AC_CURR", ".MeasTypeGUI = VOLTAGE",
     ".MeterType = AC_VOLT; .ProbeType = VOLTAGE_1_TO_1; .MeterChannel[4]/RangeLowerLimit = 0"},
    {"LargeResistanceNeedsLittleCurrent", "Meter/MeterType = OHM",
     ".MeterChannel[4]/Range = 10_MEGA",
     "Meter/TestCurrent = 100_NANO_A; .MeterChannel[4]/AutoRange = OFF; .RangeUpperLimit = 1e+07; "
     ".BargraphLowerEnd = -1e+07"},
    {"KnobMovesByTheOldRange", "", "Meter/MeterChannel[4]/Range = 1_KILO",
     ".Reference.step = 1; .LowerLimit.step = 1; .UpperLimit.step = 1"},
    {"ChosenRangeIsKept", "", "Meter/MeterChannel[4]/Range = 10", ".AutoRange = OFF"},
    {"CapacitanceTakesTheNearestRange", "", "Meter/MeterType = CAPACITY",
     ".MeterChannel[4]/Range = 10_MILLI; Meter/TestCurrent = 1_MILLI_A; "
     ".MeterChannel[4]/MeterMeasurement[0]/Unit = FARAD"},
    {"ThermometerIsVoltageOrResistor", "Meter/MeterType = TEMP; .TemperatureUnit = TEMPERATURE_K",
     ".ProbeType = PT1000",
     ".InputType = SOURCE; .TestCurrent = 1_MILLI_A; .ProbeKind = RTD; "
     ".MeterChannel[4]/MeterMeasurement[0]/Unit = KELVIN"},
    {"ThermometerHasItsOwnUnit", "Meter/MeterType = TEMP; .TemperatureUnit = TEMPERATURE_K",
     ".ProbeType = TEMPERATURE_1_MV_PER_DEG_F",
     ".InputType = VOLTAGE; .TestCurrent = NONE; .MeterChannel[4]/MeterMeasurement[0]/Unit = "
     "FAHRENHEIT"},
    {"UserProbeReachesTheRange", "Meter/ProbeType = USER", ".ProbeUserFactor = 50",
     ".ProbeFactor = 50; .ProbeKind = USER; .MeterChannel[4]/RangeUpperLimit = 500; "
     "Meter/ProbeUserUnit.values = LEVEL_V"},
    {"FrequencyLimitsIgnoreTheProbe", "Meter/MeterType = FREQ", ".ProbeType = CURRENT_1_MV_PER_A",
     ".MeterChannel[4]/RangeUpperLimit = 250000; Meter/ProbeFactor = 1000; "
     ".MeterChannel[4]/MeterMeasurement[0]/Unit = HERTZ"},
    {"ZeroTestShortsTheInput", "Meter/MeterType = OHM", ".TestMode = ZERO",
     ".InputType = SHORT; .TestCurrent = NONE"},
    {"VoltmeterSelectsAnInput", "", "Meter/Mode = VOLTMETER",
     ".SelectedChannel = C1; .SelectedChannel.values = C1|C2|C3|C4"},
    {"RangeDropsReadings",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Status = VALID; @.Count = 5",
     "Meter/MeterChannel[4]/Range = 100",
     ".MeterMeasurement[0]/Actual = 2-; .Relative = 2-; .Count = 0; .Status = NO_READING"},
    {"SameSizeOfAnotherQuantityDropsReadings",
     "Meter/ProbeType = USER; @.MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Status = VALID",
     "Meter/MeterType = DC_CURR", ".MeterChannel[4]/MeterMeasurement[0]/Actual = 2-"},
    {"OtherSensorDropsReadings",
     "Meter/MeterType = TEMP; .ProbeType = PT100; @.MeterChannel[4]/MeterMeasurement[0]/Actual = "
     "2; @.Status = VALID",
     "Meter/ProbeType = PT500", ".MeterChannel[4]/MeterMeasurement[0]/Actual = 2-"},
    {"OtherSettingsKeepReadings",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Status = VALID",
     "Meter/HoldThreshold = 2", ".MeterChannel[4]/MeterMeasurement[0]/Actual = 2"},
    {"LowerLimitPushesTheUpper", "", "Meter/MeterChannel[1]/LowerLimit = 5", ".UpperLimit = 5"},
    {"ReferenceIsTheReading",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Status = VALID",
     "Meter/MeterChannel[4]/SetReference", ".Reference = 2; .MeterMeasurement[0]/Relative = 0"},
    {"ReferenceNeedsAReading", "", "Meter/MeterChannel[4]/SetReference", ".Reference = 0",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"LimitsSurroundANegativeReading",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = -20; @.Status = VALID",
     "Meter/MeterChannel[4]/SetLimits", ".LowerLimit = -22; .UpperLimit = -18"},
    {"DeliveredReadingMovesTheZoom", "Meter/MeterChannel[4]/BargraphRange = ZOOM; .Reference = 0.5",
     "@.MeterMeasurement[0]/Actual = 2",
     "..BargraphLowerEnd = 1; .BargraphUpperEnd = 3; .MeterMeasurement[0]/Relative = 1.5"},
    {"ZoomLooksAtAReadingOfBefore",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2; @.Status = VALID; ..Range = 100",
     ".BargraphRange = ZOOM", ".BargraphLowerEnd = -10; .BargraphUpperEnd = 10"},
    {"BargraphFollowsTheLimits", "Meter/MeterChannel[4]/BargraphRange = LIMITS", ".UpperLimit = 7",
     ".BargraphLowerEnd = -1; .BargraphUpperEnd = 7"},
    {"StatisticsOfTheMeterAreAll",
     "@Meter/MeterChannel[4]/MeterMeasurement[0]/Status = VALID; @.Count = 5; @.Average = 5; "
     "@.Actual = 2",
     "Meter/ResetStatistics",
     ".MeterChannel[4]/MeterMeasurement[0]/Average = 5-; .Count = 0; .Actual = 2"},
    {"CrestFactorHasNoUnit", "", "Meter/MeterChannel[0]/MeterMeasurement[1]/Type = CREST",
     ".Unit = HERTZ-; Meter/MeterChannel[0]/MeterMeasurement[0]/Unit = VOLT"},
    {"InputRangeSetsScaleAndLimits", "", "Meter/MeterSourceChannel[2]/Range = 300",
     ".AutoRange = OFF; .Scale = 109.5; Meter/MeterChannel[2]/RangeUpperLimit = 3000; "
     "Meter/MeterChannel[1]/RangeUpperLimit = 100"},
    {"KnobMovesSecondsByHertz", "", "Counter/CounterChannel[0]/MeasurementType = PERIOD",
     ".CounterNumerics/Reference.step = 1e-06"},
    {"LevelEndsTheAutomatic", "", "Counter/CounterChannel[0]/Level = 0", ".AutoLevel = OFF"},
    {"LevelStaysInTheRangeOfItsInput", "Counter/CounterChannel[1]/Level = 90",
     "Counter/MeterSourceChannel[1]/Range = 1",
     "Counter/CounterChannel[1]/Level = 10; .Level.max = 10; Counter/CounterChannel[0]/Level.max = "
     "100; Counter/MeterSourceChannel[1]/Scale = 0.525"},
    {"LevelFollowsAnotherSource", "Counter/MeterSourceChannel[2]/Range = 3",
     "Counter/CounterChannel[0]/Source = C3", ".Level.min = -30"},
    {"OtherQuantityDropsTheReading",
     "@Counter/CounterChannel[0]/CounterNumerics/Value = 1010; @..Statistics/Count = 3; @.Mean = 3",
     "..MeasurementType = PERIOD",
     ".CounterNumerics/Unit = FREQ_SEC; .Value = 1010-; ..Statistics/Mean = 3-; .Count = 0"},
    {"DutyCycleIsPercent", "", "Counter/CounterChannel[1]/MeasurementType = NEG_DUTY_CYCLE",
     ".CounterNumerics/Unit = COUNT_PCT"},
    {"ReadingIsComparedWithTheReference",
     "Counter/CounterChannel[0]/CounterNumerics/Reference = 1000", "@.Value = 1010",
     ".RelativeValue = 10; .Deviation = 10000"},
    {"ReferenceOfZeroHasNoDeviation", "@Counter/CounterChannel[0]/CounterNumerics/Value = 1010",
     ".Digits = 9", ".RelativeValue = 1010; .Deviation = 0-"},
    {"CountIsTheReference", "@Counter/CounterChannel[0]/CounterNumerics/Value = 1010",
     ".SetReference", ".Reference = 1010; .RelativeValue = 0"},
    {"BothCountersReset",
     "@Counter/CounterChannel[1]/Statistics/Count = 3; @.Maximum = 3; @.AllanDeviation = 3",
     "Counter/ResetStatistics",
     ".CounterChannel[1]/Statistics/Maximum = 3-; .Count = 0; .AllanDeviation = 3-"},
    {"AcquisitionsCountAnew",
     "@Horizontal/SampleCounter/Acquisitions = 3; @.AcquiredBlocks = 3; @.LostAcquisitions = 3; "
     "@.AcquiredSamples = 3",
     ".ResetCounters",
     ".Acquisitions = 0; .AcquiredBlocks = 0; .LostAcquisitions = 0; .AcquiredSamples = 3"},
};

/** Through all functions and back, in a transaction that leaves nothing behind; the last setting is
    a reference. */
void CheckThereAndBack(const CRuleTree& tree, const QByteArray& function,
                       const QByteArray& settings, CFindings& findings)
{
    const QByteArrayList paths = settings.split(' ');
    const auto present = [&]
    {
        QStringList states;
        std::transform(paths.begin(), paths.end(), std::back_inserter(states),
                       [&](const QByteArray& path) { return tree.State(path); });
        return states;
    };
    const CKWTransaction rolledBack(tree.root, QString());
    tree.Do(paths.last() + " = 5.2");
    const QStringList before = present();
    const QByteArray start = tree.Text(function).toLatin1();
    for (const QString& other : tree.State(function + ".values").split(u'|'))
    {
        tree.Do(function + " = " + other.toLatin1());
        findings.Check(other.toLatin1() == start || tree.Number(paths.last()) != 5.2, paths.last());
    }
    tree.Do(function + " = " + start);
    findings.Check(present() == before, function + " back");
}

void CheckMeter(const CRuleTree& tree, CFindings& findings)
{
    for (const QByteArray path : {"Meter/ProbeType", "Meter/ProbeUserUnit", "Meter/SelectedChannel",
                                  "Meter/MeterChannel[4]/Range"})
    {
        findings.Check(tree.State(path + ".values").split(u'|').contains(tree.Text(path)), path);
    }
    for (const char item : {'0', '1', '2', '3', '4'})
    {
        const QByteArray channel = QByteArray("Meter/MeterChannel[") + item + "]/";
        findings.Check(tree.Number(channel + "LowerLimit") <= tree.Number(channel + "UpperLimit") &&
                           tree.Number(channel + "BargraphLowerEnd") <=
                               tree.Number(channel + "BargraphUpperEnd"),
                       channel);
    }
    for (const char item : {'0', '1', '2', '3'})
    {
        const QByteArray source = QByteArray("Meter/MeterSourceChannel[") + item + "]/";
        const double range = tree.Number(source + "Range");
        const double scale = range == 300.0 ? 109.5 : 0.525 * range;
        findings.Check(std::abs(tree.Number(source + "Scale") - scale) < 1e-12, source);
    }
    for (const char item : {'0', '1'})
    {
        const QByteArray level = QByteArray("Counter/CounterChannel[") + item + "]/Level";
        findings.Check(std::abs(tree.Number(level)) <= tree.State(level + ".max").toDouble(),
                       level);
    }
    CheckThereAndBack(tree, "Meter/MeterType",
                      "Meter/ProbeType Meter/ProbeUserFactor Meter/ProbeUserUnit "
                      "Meter/MeterChannel[4]/AutoRange Meter/MeterChannel[4]/Range "
                      "Meter/MeterChannel[4]/RangeUpperLimit Meter/MeterChannel[4]/LowerLimit "
                      "Meter/MeterChannel[4]/UpperLimit Meter/MeterChannel[4]/Reference",
                      findings);
    CheckThereAndBack(tree, "Meter/MeterChannel[2]/MeterMeasurement[0]/Type",
                      "Meter/MeterChannel[2]/MeterMeasurement[0]/ResultType "
                      "Meter/MeterChannel[2]/RelativeEnabled Meter/MeterChannel[2]/Reference",
                      findings);
    CheckThereAndBack(tree, "Counter/CounterChannel[1]/MeasurementType",
                      "Counter/CounterChannel[1]/CounterNumerics/Readout "
                      "Counter/CounterChannel[1]/CounterNumerics/Reference",
                      findings);
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Meter, Rules, testing::ValuesIn(kMeterRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Meter, Walks,
                         testing::Values(t_Walk{
                             "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual = 2; "
                             "@.Status = VALID; @Counter/CounterChannel[0]/CounterNumerics/Value = "
                             "1010",
                             "Meter Counter", CheckMeter, 10}));
