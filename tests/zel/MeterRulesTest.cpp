// SPDX-License-Identifier: MIT
#include "Couplings.h"

#include <QTemporaryDir>

namespace
{
class MeterCoupling : public testing::TestWithParam<t_Coupling>
{
};

double Number(const std::shared_ptr<IKWFunctionZEL>& root, const char* path)
{
    return Property(root, path)->GetText().toDouble();
}

/** What must hold of every state of meter and counter. Names what does not. */
QStringList Violations(const std::shared_ptr<IKWFunctionZEL>& root)
{
    QStringList wrong;
    const auto check = [&wrong](bool holds, const QString& what)
    {
        if (!holds)
        {
            wrong.append(what);
        }
    };
    for (const char* const path : {"Meter/ProbeType", "Meter/ProbeUserUnit",
                                   "Meter/SelectedChannel", "Meter/MeterChannel[4]/Range"})
    {
        const auto selector = Property(root, path);
        check(selector->GetValueTexts().contains(selector->GetText()), QLatin1String(path));
    }
    for (int i = 0; i < 5; ++i)
    {
        const QByteArray channel = QByteArray("Meter/MeterChannel[") + QByteArray::number(i) + "]/";
        check(Number(root, channel + "LowerLimit") <= Number(root, channel + "UpperLimit"),
              QString::fromLatin1(channel + "UpperLimit"));
        check(Number(root, channel + "BargraphLowerEnd") <=
                  Number(root, channel + "BargraphUpperEnd"),
              QString::fromLatin1(channel + "BargraphUpperEnd"));
    }
    for (int i = 0; i < 4; ++i)
    {
        const QByteArray source =
            QByteArray("Meter/MeterSourceChannel[") + QByteArray::number(i) + "]/";
        const double range = Number(root, source + "Range");
        check(std::abs(Number(root, source + "Scale") - (range == 300.0 ? 109.5 : 0.525 * range)) <
                  1e-12,
              QString::fromLatin1(source + "Scale"));
    }
    for (int i = 0; i < 2; ++i)
    {
        const auto level = Property(root, QByteArray("Counter/CounterChannel[") +
                                              QByteArray::number(i) + "]/Level");
        check(std::abs(level->GetText().toDouble()) <= level->GetMaxText().toDouble(),
              level->GetPath());
    }
    return wrong;
}
} // namespace

TEST_P(MeterCoupling, IsAbsentOrDoesNotComeBack)
{
    CheckCoupling(GetParam());
}

const char* const kReading = "@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual=2";
const char* const kStatus = "@Meter/MeterChannel[4]/MeterMeasurement[0]/Status=VALID";

INSTANTIATE_TEST_SUITE_P(
    Meter, MeterCoupling,
    testing::Values(
        t_Coupling{"ResistanceFindsItsPath",
                   {"Meter/ProbeType=VOLTAGE_100_TO_1"},
                   "Meter/MeterType=OHM",
                   0,
                   {"Meter/MeasTypeGUI=RESISTANCE", "Meter/MeasType=OHM",
                    "Meter/ProbeType=VOLTAGE_1_TO_1", "Meter/ProbeType.values=VOLTAGE_1_TO_1",
                    "Meter/InputType=SOURCE", "Meter/AdcPath=DC", "Meter/TestCurrent=1_MILLI_A",
                    "Meter/MeterChannel[4]/Range=1_KILO",
                    "Meter/MeterChannel[4]/RangeLowerLimit=-1000",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=OHM"}},
        t_Coupling{"GroupKeepsTheCouplingInBetween",
                   {"Meter/MeterType=AD_VOLT", "Meter/MeterType=DIODE"},
                   "Meter/MeasTypeGUI=CURRENT",
                   0,
                   {"Meter/MeterType=AD_CURR", "Meter/MeasType=AD_VOLT", "Meter/AdcPath=AC",
                    "Meter/ProbeType=CURRENT_100_V_PER_A", "Meter/ProbeKind=CURRENT",
                    "Meter/ProbeFactor=0.01", "Meter/ProbeUserUnit=LEVEL_A",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=AMPERE",
                    "Meter/MeterChannel[4]/RangeUpperLimit=0.1"}},
        t_Coupling{"GroupOfTheSameCouplingStays",
                   {"Meter/MeterType=AC_CURR"},
                   "Meter/MeasTypeGUI=VOLTAGE",
                   0,
                   {"Meter/MeterType=AC_VOLT", "Meter/ProbeType=VOLTAGE_1_TO_1",
                    "Meter/MeterChannel[4]/RangeLowerLimit=0"}},
        t_Coupling{"LargeResistanceNeedsLittleCurrent",
                   {"Meter/MeterType=OHM"},
                   "Meter/MeterChannel[4]/Range=10_MEGA",
                   0,
                   {"Meter/TestCurrent=100_NANO_A", "Meter/MeterChannel[4]/AutoRange=OFF",
                    "Meter/MeterChannel[4]/RangeUpperLimit=1e+07",
                    "Meter/MeterChannel[4]/BargraphLowerEnd=-1e+07"}},
        t_Coupling{"ChosenRangeIsKept",
                   {},
                   "Meter/MeterChannel[4]/Range=10",
                   0,
                   {"Meter/MeterChannel[4]/AutoRange=OFF"}},
        t_Coupling{"CapacitanceTakesTheNearestRange",
                   {},
                   "Meter/MeterType=CAPACITY",
                   0,
                   {"Meter/MeterChannel[4]/Range=10_MILLI", "Meter/TestCurrent=1_MILLI_A",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=FARAD"}},
        t_Coupling{"ThermometerIsVoltageOrResistor",
                   {"Meter/MeterType=TEMP", "Meter/TemperatureUnit=TEMPERATURE_K"},
                   "Meter/ProbeType=PT1000",
                   0,
                   {"Meter/InputType=SOURCE", "Meter/TestCurrent=1_MILLI_A", "Meter/ProbeKind=RTD",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=KELVIN"}},
        t_Coupling{"ThermometerHasItsOwnUnit",
                   {"Meter/MeterType=TEMP", "Meter/TemperatureUnit=TEMPERATURE_K"},
                   "Meter/ProbeType=TEMPERATURE_1_MV_PER_DEG_F",
                   0,
                   {"Meter/InputType=VOLTAGE", "Meter/TestCurrent=NONE",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=FAHRENHEIT"}},
        t_Coupling{"UserProbeReachesTheRange",
                   {"Meter/ProbeType=USER"},
                   "Meter/ProbeUserFactor=50",
                   0,
                   {"Meter/ProbeFactor=50", "Meter/ProbeKind=USER",
                    "Meter/MeterChannel[4]/RangeUpperLimit=500",
                    "Meter/ProbeUserUnit.values=LEVEL_V"}},
        t_Coupling{"FrequencyLimitsIgnoreTheProbe",
                   {"Meter/MeterType=FREQ"},
                   "Meter/ProbeType=CURRENT_1_MV_PER_A",
                   0,
                   {"Meter/MeterChannel[4]/RangeUpperLimit=250000", "Meter/ProbeFactor=1000",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Unit=HERTZ"}},
        t_Coupling{"ZeroTestShortsTheInput",
                   {"Meter/MeterType=OHM"},
                   "Meter/TestMode=ZERO",
                   0,
                   {"Meter/InputType=SHORT", "Meter/TestCurrent=NONE"}},
        t_Coupling{"VoltmeterSelectsAnInput",
                   {},
                   "Meter/Mode=VOLTMETER",
                   0,
                   {"Meter/SelectedChannel=C1", "Meter/SelectedChannel.values=C1|C2|C3|C4"}},
        t_Coupling{"RangeDropsReadings",
                   {kReading, kStatus, "@Meter/MeterChannel[4]/MeterMeasurement[0]/Count=5"},
                   "Meter/MeterChannel[4]/Range=100",
                   0,
                   {"!Meter/MeterChannel[4]/MeterMeasurement[0]/Actual",
                    "!Meter/MeterChannel[4]/MeterMeasurement[0]/Relative",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Count=0",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Status=NO_READING"}},
        t_Coupling{"SameSizeOfAnotherQuantityDropsReadings",
                   {"Meter/ProbeType=USER", kReading, kStatus},
                   "Meter/MeterType=DC_CURR",
                   0,
                   {"!Meter/MeterChannel[4]/MeterMeasurement[0]/Actual"}},
        t_Coupling{"OtherSensorDropsReadings",
                   {"Meter/MeterType=TEMP", "Meter/ProbeType=PT100", kReading, kStatus},
                   "Meter/ProbeType=PT500",
                   0,
                   {"!Meter/MeterChannel[4]/MeterMeasurement[0]/Actual"}},
        t_Coupling{"OtherSettingsKeepReadings",
                   {kReading, kStatus},
                   "Meter/HoldThreshold=2",
                   0,
                   {"Meter/MeterChannel[4]/MeterMeasurement[0]/Actual=2"}},
        t_Coupling{"LowerLimitPushesTheUpper",
                   {},
                   "Meter/MeterChannel[1]/LowerLimit=5",
                   0,
                   {"Meter/MeterChannel[1]/UpperLimit=5"}},
        t_Coupling{"ReferenceIsTheReading",
                   {kReading, kStatus},
                   "Meter/MeterChannel[4]/SetReference()",
                   0,
                   {"Meter/MeterChannel[4]/Reference=2",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Relative=0"}},
        t_Coupling{"ReferenceNeedsAReading",
                   {},
                   "Meter/MeterChannel[4]/SetReference()",
                   eKW_ACC_NOTHING_TO_DO,
                   {"Meter/MeterChannel[4]/Reference=0"}},
        t_Coupling{
            "LimitsSurroundANegativeReading",
            {"@Meter/MeterChannel[4]/MeterMeasurement[0]/Actual=-20", kStatus},
            "Meter/MeterChannel[4]/SetLimits()",
            0,
            {"Meter/MeterChannel[4]/LowerLimit=-22", "Meter/MeterChannel[4]/UpperLimit=-18"}},
        t_Coupling{
            "DeliveredReadingMovesTheZoom",
            {"Meter/MeterChannel[4]/BargraphRange=ZOOM", "Meter/MeterChannel[4]/Reference=0.5"},
            kReading,
            0,
            {"Meter/MeterChannel[4]/BargraphLowerEnd=1", "Meter/MeterChannel[4]/BargraphUpperEnd=3",
             "Meter/MeterChannel[4]/MeterMeasurement[0]/Relative=1.5"}},
        t_Coupling{"BargraphFollowsTheLimits",
                   {"Meter/MeterChannel[4]/BargraphRange=LIMITS"},
                   "Meter/MeterChannel[4]/UpperLimit=7",
                   0,
                   {"Meter/MeterChannel[4]/BargraphLowerEnd=-1",
                    "Meter/MeterChannel[4]/BargraphUpperEnd=7"}},
        t_Coupling{"StatisticsOfTheMeterAreAll",
                   {kStatus, "@Meter/MeterChannel[4]/MeterMeasurement[0]/Count=5",
                    "@Meter/MeterChannel[4]/MeterMeasurement[0]/Average=5", kReading},
                   "Meter/ResetStatistics()",
                   0,
                   {"!Meter/MeterChannel[4]/MeterMeasurement[0]/Average",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Count=0",
                    "Meter/MeterChannel[4]/MeterMeasurement[0]/Actual=2"}},
        t_Coupling{"CrestFactorHasNoUnit",
                   {},
                   "Meter/MeterChannel[0]/MeterMeasurement[1]/Type=CREST",
                   0,
                   {"!Meter/MeterChannel[0]/MeterMeasurement[1]/Unit",
                    "Meter/MeterChannel[0]/MeterMeasurement[0]/Unit=VOLT"}},
        t_Coupling{"InputRangeSetsScaleAndLimits",
                   {},
                   "Meter/MeterSourceChannel[2]/Range=300",
                   0,
                   {"Meter/MeterSourceChannel[2]/AutoRange=OFF",
                    "Meter/MeterSourceChannel[2]/Scale=109.5",
                    "Meter/MeterChannel[2]/RangeUpperLimit=3000",
                    "Meter/MeterChannel[1]/RangeUpperLimit=100"}}),
    CouplingName);

const char* const kCounted = "@Counter/CounterChannel[0]/CounterNumerics/Value=1010";

INSTANTIATE_TEST_SUITE_P(
    Counter, MeterCoupling,
    testing::Values(t_Coupling{"LevelEndsTheAutomatic",
                               {},
                               "Counter/CounterChannel[0]/Level=0",
                               0,
                               {"Counter/CounterChannel[0]/AutoLevel=OFF"}},
                    t_Coupling{"LevelStaysInTheRangeOfItsInput",
                               {"Counter/CounterChannel[1]/Level=90"},
                               "Counter/MeterSourceChannel[1]/Range=1",
                               0,
                               {"Counter/CounterChannel[1]/Level=10",
                                "Counter/CounterChannel[1]/Level.max=10",
                                "Counter/CounterChannel[0]/Level.max=100",
                                "Counter/MeterSourceChannel[1]/Scale=0.525"}},
                    t_Coupling{"LevelFollowsAnotherSource",
                               {"Counter/MeterSourceChannel[2]/Range=3"},
                               "Counter/CounterChannel[0]/Source=C3",
                               0,
                               {"Counter/CounterChannel[0]/Level.min=-30"}},
                    t_Coupling{"OtherQuantityDropsTheReading",
                               {kCounted, "@Counter/CounterChannel[0]/Statistics/Count=3",
                                "@Counter/CounterChannel[0]/Statistics/Mean=3"},
                               "Counter/CounterChannel[0]/MeasurementType=PERIOD",
                               0,
                               {"Counter/CounterChannel[0]/CounterNumerics/Unit=FREQ_SEC",
                                "!Counter/CounterChannel[0]/CounterNumerics/Value",
                                "!Counter/CounterChannel[0]/Statistics/Mean",
                                "Counter/CounterChannel[0]/Statistics/Count=0"}},
                    t_Coupling{"DutyCycleIsPercent",
                               {},
                               "Counter/CounterChannel[1]/MeasurementType=NEG_DUTY_CYCLE",
                               0,
                               {"Counter/CounterChannel[1]/CounterNumerics/Unit=COUNT_PCT"}},
                    t_Coupling{"ReadingIsComparedWithTheReference",
                               {"Counter/CounterChannel[0]/CounterNumerics/Reference=1000"},
                               kCounted,
                               0,
                               {"Counter/CounterChannel[0]/CounterNumerics/RelativeValue=10",
                                "Counter/CounterChannel[0]/CounterNumerics/Deviation=10000"}},
                    t_Coupling{"ReferenceOfZeroHasNoDeviation",
                               {kCounted},
                               "Counter/CounterChannel[0]/CounterNumerics/Digits=9",
                               0,
                               {"Counter/CounterChannel[0]/CounterNumerics/RelativeValue=1010",
                                "!Counter/CounterChannel[0]/CounterNumerics/Deviation"}},
                    t_Coupling{"CountIsTheReference",
                               {kCounted},
                               "Counter/CounterChannel[0]/CounterNumerics/SetReference()",
                               0,
                               {"Counter/CounterChannel[0]/CounterNumerics/Reference=1010",
                                "Counter/CounterChannel[0]/CounterNumerics/RelativeValue=0"}},
                    t_Coupling{"BothCountersReset",
                               {"@Counter/CounterChannel[1]/Statistics/Count=3",
                                "@Counter/CounterChannel[1]/Statistics/Maximum=3"},
                               "Counter/ResetStatistics()",
                               0,
                               {"!Counter/CounterChannel[1]/Statistics/Maximum",
                                "Counter/CounterChannel[1]/Statistics/Count=0"}},
                    t_Coupling{"AcquisitionsCountAnew",
                               {"@Horizontal/SampleCounter/Acquisitions=3",
                                "@Horizontal/SampleCounter/AcquiredBlocks=3",
                                "@Horizontal/SampleCounter/LostAcquisitions=3",
                                "@Horizontal/SampleCounter/AcquiredSamples=3"},
                               "Horizontal/SampleCounter/ResetCounters()",
                               0,
                               {"Horizontal/SampleCounter/Acquisitions=0",
                                "Horizontal/SampleCounter/AcquiredBlocks=0",
                                "Horizontal/SampleCounter/LostAcquisitions=0",
                                "Horizontal/SampleCounter/AcquiredSamples=3"}}),
    CouplingName);

TEST(MeterRules, SomeSettingBreaksTheMeter)
{
    const auto root = GetZELRoot();
    for (const char* const step : {kReading, kStatus, kCounted})
    {
        ASSERT_EQ(RunStep(root, QString::fromLatin1(step)), eKW_ACC_OK);
    }
    WalkByChance(root, {QStringLiteral("Meter"), QStringLiteral("Counter")}, 20, 1600,
                 [&root] { return Violations(root); });
}
