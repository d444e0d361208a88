// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

#include <cmath>

namespace
{
const t_Rule kVerticalRules[] = {
    {"ScreenKeepsItsHeight", "Vertical/Channel[2]/Position = 1; .Offset = 3", ".Scale = 0.5",
     ".Range = 4; .Top = 4.5; .Bottom = 0.5"},
    {"PositionMovesTheScreenUp", "", "Vertical/Channel[2]/Position = 1.5",
     ".Range = 8; .Top = 2.5; .Bottom = -5.5"},
    {"OffsetMovesTheScreenDown", "", "Vertical/Channel[2]/Offset = 10", ".Top = 14; .Bottom = 6"},
    {"ScaleIgnoresTheProbe", "", "Vertical/Channel[2]/ProbeType = VOLTAGE_1000_TO_1",
     ".ProbeFactor = 1000; .Scale = 100; .Scale.max = 1e+05; .Top = 400"},
    {"OffsetIgnoresTheProbe", "Vertical/Channel[2]/Offset = 2000", ".ProbeType = VOLTAGE_1_TO_1",
     ".ProbeFactor = 1; .Offset = 200; .Offset.max = 200; .Bottom = 199.6"},
    {"CurrentIsInVolts", "", "Vertical/Channel[2]/ProbeType = CURRENT_100_MV_PER_A",
     ".ProbeFactor = 10; .ProbeUnit = LEVEL_A"},
    {"UserFactorIsNotUsed", "Vertical/Channel[2]/ProbeUserUnit = LEVEL_A; .ProbeUserFactor = 0.25",
     ".ProbeType = USER", ".ProbeFactor = 0.25; .ProbeUnit = LEVEL_A"},
    {"UserFactorIsUsedUnasked", "", "Vertical/Channel[2]/ProbeUserFactor = 3", ".ProbeFactor = 10"},
    {"PositionIsNotReset", "Vertical/Channel[2]/Position = 2; .Offset = 7", ".ResetPosition",
     ".Position = 0; .Offset = 0; .Top = 4"},
    {"ChannelThatIsOffIsASource", "", "Vertical/Channel[2]/Enabled = OFF",
     ".ChannelSourceTypes/TriggerSource = OFF; .XYSource = OFF; "
     "Vertical/Channel[1]/ChannelSourceTypes/XYSource = ON"},
    {"ChannelsHaveOneName", "", "Vertical/Channel[2]/Label = x",
     ".ChannelType/Channel = C3; .AnalogChannel = C3"},
    {"LevelLeavesTheScreen", "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/Level = 3",
     "Vertical/Channel[2]/Scale = 0.5", ".Levels/EdgeTriggerLevel[0]/Level = 2; .LevelSet = USER"},
    {"LevelComesBackElsewhere",
     "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/Level = 3; Vertical/Channel[2]/Scale = 0.5",
     ".Scale = 1", ".Levels/EdgeTriggerLevel[0]/Level = 3"},
    {"LevelLeavesTheMovedScreen", "", "Vertical/Channel[2]/Offset = 10",
     ".Levels/EdgeTriggerLevel[0]/Level = 6; ..RuntTriggerLevelRange[0]/LowerLevel = 6; "
     "..WindowTriggerLevelRange[0]/UpperLevel = 6; ..LogicThresholdSettings[0]/UserThreshold = 6; "
     ".Threshold = 1.4"},
    {"FixedLevelIsNotTaken", "", "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/LevelSet = ECL",
     ".Level = -1.3"},
    {"FixedLevelStaysFixedWhenWritten",
     "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/LevelSet = TTL", ".Level = 1.5",
     ".LevelSet = USER"},
    {"FixedLevelIsPulledOntoTheScreen", "Vertical/Channel[2]/Scale = 0.2",
     ".Levels/EdgeTriggerLevel[0]/LevelSet = CMOS", ".Level = 2.5; .Level.max = 2.5"},
    {"FixedLevelLeavesItsLimitsBehind",
     "Vertical/Channel[2]/Scale = 0.2; .Levels/EdgeTriggerLevel[0]/LevelSet = CMOS",
     ".LevelSet = TTL", ".Level = 1.4; .Level.max = 1.4"},
    {"UserLevelTakesThePlaceOfAFixedOne",
     "Vertical/Channel[2]/Scale = 0.2; .Levels/EdgeTriggerLevel[0]/LevelSet = CMOS", ".Level = 1.5",
     ".Level = 0.8; .LevelSet = USER; .Level.max = 0.8", eKW_ACC_WARNING},
    {"AmperesHaveAFixedLevel",
     "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/LevelSet = TTL; ...ProbeType = "
     "CURRENT_1_V_PER_A",
     ".Levels/EdgeTriggerLevel[0]/LevelSet = CMOS", ".LevelSet = USER; .Level.max = 0.4",
     eKW_ACC_NOT_ENABLED},
    {"MiddleMovesTheLevel", "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/Level = 1",
     ".LevelSet = MIDDLE", ".Level = 1"},
    {"UpperFallsBelowLower", "",
     "Vertical/Channel[2]/Levels/SlewRateTriggerLevelRange[0]/UpperLevel = -2", ".LowerLevel = -2"},
    {"LowerRisesAboveUpper", "",
     "Vertical/Channel[2]/Levels/RuntTriggerLevelRange[0]/LowerLevel = 3", ".UpperLevel = 3"},
    {"ThresholdIgnoresItsType", "",
     "Vertical/Channel[2]/Levels/LogicThresholdSettings[0]/ThresholdType = PECL",
     ".Threshold = 3.7; .UserThreshold = 1.4"},
    {"UserThresholdIsNotUsed", "",
     "Vertical/Channel[2]/Levels/LogicThresholdSettings[0]/UserThreshold = 1.5",
     ".ThresholdType = USER; .Threshold = 1.5"},
    {"HysteresisIsInVolts", "Vertical/Channel[2]/Scale = 5",
     ".Levels/HysteresisLevel[0]/NoiseReject = HIGH", ".Hysteresis = 5"},
    {"MediumHysteresisIsAnother", "",
     "Vertical/Channel[2]/Levels/HysteresisLevel[0]/NoiseReject = MEDIUM", ".Hysteresis = 0.5"},
    {"SmallestHysteresisIsAnother", "",
     "Vertical/Channel[2]/Levels/HysteresisLevel[0]/NoiseReject = OFF", ".Hysteresis = 0.05"},
    {"HysteresisIgnoresTheScale", "", "Vertical/Channel[2]/Scale = 5",
     ".Levels/HysteresisLevel[0]/Hysteresis = 1"},
    {"HysteresisIgnoresTheFilter", "", "Vertical/Channel[2]/BandwidthLimit = MHZ_20",
     ".Levels/RelativeHysteresisLevel[0]/Hysteresis = 1"},
    {"HysteresisIsTooSmall", "", "Vertical/Channel[2]/BandwidthLimit = KHZ_10",
     ".Levels/RelativeHysteresisLevel[0]/Hysteresis = 0.5"},
    {"UserHysteresisIsNotUsed",
     "Vertical/Channel[2]/Levels/RelativeHysteresisLevel[0]/UserHysteresis = 12; "
     "Vertical/Channel[2]/BandwidthLimit = MHZ_1",
     ".Levels/RelativeHysteresisLevel[0]/AutoHysteresis = OFF", ".Hysteresis = 12"},
    {"LevelsAreNotReset",
     "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/Level = 1; "
     "..WindowTriggerLevelRange[0]/UpperLevel = 3; ..LogicThresholdSettings[0]/UserThreshold = 2; "
     "..ShowLevels = OFF; ..Scale = 0.2",
     ".Levels/ResetLevels",
     ".EdgeTriggerLevel[0]/Level = 0; ..WindowTriggerLevelRange[0]/UpperLevel = 0.8; "
     "..LogicThresholdSettings[0]/ThresholdType = TTL; ..ShowLevels = OFF"},
    {"StreamsStayAsTheyWere", "Vertical/Channel[0]/Enabled = OFF; ..Channel[3]/Enabled = OFF",
     "Horizontal/ZELMode = ZEL_B",
     "Vertical/AnalogSignalStreams/NumberOfActiveStreams = 2; .PartsPerStream = 2; "
     ".SamplesPerClockCycle = 10; .ClockFrequency = 2.5e+08; .AnalogSignalStream[0]/Channel = C2; "
     "..AnalogSignalStream[1]/Channel = C3; ..AnalogSignalStream[2]/Active = OFF; "
     "..AnalogSignalStream[0]/AnalogSignalStreamPart[1]/DataStream = SAMPLES_FROM_5_TO_9; "
     "..AnalogSignalStreamPart[2]/DataStream = UNUSED; "
     "Vertical/AnalogChannelMapping[0]/AssociatedSignalStream = NONE; "
     "..AnalogChannelMapping[1]/AssociatedSignalStream = S1; "
     "..AnalogChannelMapping[3]/AssociatedSignalStream = NONE; "
     "..AnalogChannelMapping[2]/InterleavedConverters = 2"},
    {"FastestModeHasTwoStreams",
     "Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF",
     "Horizontal/ZELMode = ZEL_C",
     "Vertical/AnalogSignalStreams/NumberOfActiveStreams = 1; .AnalogSignalStream[0]/SampleRate = "
     "5e+09; .AnalogSignalStreamPart[3]/DataStream = SAMPLES_FROM_15_TO_19; "
     "Vertical/AnalogSignalStreams/AnalogSignalStream[1]/SampleRate = 0; "
     "Vertical/AnalogChannelMapping[3]/InterleavedConverters = 1"},
    {"SkewIsNotReset", "Vertical/Channel[2]/Deskew = 1e-08", "Vertical/ResetDeskew",
     ".Channel[2]/Deskew = 0"},
    {"SimulatedChannelIsAcquired", "", "Simulation/Enabled = ON",
     "Vertical/Channel[2]/ChannelType/DataGeneration = SIMULATED"},
    {"MissingCurveIsSetToOriginal", "", "Vertical/ReferenceCurve/SetToOriginal", ".Scale = 1",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"CurveKeepsItsScales",
     "@Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength = 10; @.OriginalScale = 2; "
     "@.OriginalPosition = 1; @.OriginalTimeScale = 1e-06; ..TimePosition = 1e-07",
     ".SetToOriginal",
     ".Scale = 2; .Position = 1; .TimeScale = 1e-06; .TimePosition = 0; .TimePosition.step = "
     "2e-08"},
    {"EmptyCurveIsShown", "", "Vertical/ReferenceCurve/Enabled = ON",
     ".Enabled = OFF; .Enabled.values = OFF", eKW_ACC_NOT_ENABLED},
    {"ClearedCurveIsShown",
     "@Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength = 10; ..Enabled = ON",
     ".Clear", ".Enabled = OFF; .ReferenceCurveAttributes/Unit = LEVEL_V-"},
    {"CoupledThresholdsPart", "", "Logic/LogicThresholdSettings[1]/ThresholdType = CMOS_3V3",
     "Logic/LogicThresholdSettings[0]/Threshold = 1.65; Logic/LogicThresholdSettings[1]/Threshold "
     "= 1.65"},
    {"FreeThresholdsFollow", "Logic/CoupleThresholds = OFF",
     ".LogicThresholdSettings[1]/UserThreshold = 3",
     "Logic/LogicThresholdSettings[0]/Threshold = 1.4; Logic/LogicThresholdSettings[1]/Threshold = "
     "3"},
    {"CoupledHalvesStayApart",
     "Logic/CoupleThresholds = OFF; .LogicThresholdSettings[1]/UserThreshold = 3; "
     "Logic/SelectedThresholdRange = D4_TO_D7",
     ".CoupleThresholds = ON", ".LogicThresholdSettings[0]/Threshold = 3"},
    {"ThresholdIsBeyondTheProbe", "", "Logic/LogicThresholdSettings[0]/UserThreshold = 9",
     ".Threshold = 1.4; .UserThreshold.max = 8; .UserThreshold.min = -2", eKW_ACC_ABOVE_MAXIMUM},
    {"SomeChannelStaysOn", "", "Logic/DisableAllChannels",
     ".LogicChannel[0]/Enabled = OFF; Logic/LogicChannel[7]/Enabled = OFF"},
    {"StackStaysInDisorder",
     "Logic/LogicChannel[3]/StackIndex = 0; Logic/LogicChannel[0]/StackIndex = 3",
     "Logic/ResetOrder", ".LogicChannel[3]/StackIndex = 3; Logic/LogicChannel[0]/StackIndex = 0"},
    {"StepLosesTheScale", "", "Vertical/Channel[2]/Scale = 0.1",
     ".Offset.step = 0.002; .Levels/EdgeTriggerLevel[0]/Level.step = 0.002; "
     "Vertical/Channel[2]/Levels/RuntTriggerLevelRange[0]/UpperLevel.step = 0.002"},
    {"StepLosesTheTimebase", "", "Horizontal/Scale = 0.001",
     ".Position.step = 2e-05; Cursor/X1.step = 2e-05; .ReferenceX.step = 2e-05"},
    {"StandingLevelStaysFixed", "Vertical/Channel[2]/Levels/EdgeTriggerLevel[0]/LevelSet = ECL",
     ".Level = -1.3", ".LevelSet = USER"},
    {"StandingThresholdStaysOfItsFamily", "",
     "Vertical/Channel[2]/Levels/LogicThresholdSettings[0]/UserThreshold = 1.4",
     ".ThresholdType = USER"},
    {"StandingHysteresisStaysAutomatic", "",
     "Vertical/Channel[2]/Levels/RelativeHysteresisLevel[0]/UserHysteresis = 5",
     ".AutoHysteresis = OFF"},
    {"HysteresisIgnoresTheHardware", "Vertical/Channel[2]/BandwidthLimit = MHZ_20",
     "Setup/HwConfig/RelativeHysteresisSettingsForBandwidth[4]/Hysteresis = 2",
     "Vertical/Channel[2]/Levels/RelativeHysteresisLevel[0]/Hysteresis = 2; "
     "Vertical/Channel[1]/Levels/RelativeHysteresisLevel[0]/Hysteresis = 5"},
    {"CursorIgnoresTheFilterOfItsSource", "Vertical/Channel[2]/BandwidthLimit = MHZ_20",
     "Cursor/CursorMeasurements/CursorMeasurement[1]/Source = C3",
     "Cursor/RelativeHysteresisLevel[1]/Hysteresis = 1; "
     "Cursor/RelativeHysteresisLevel[0]/Hysteresis = 5"},
    {"CursorIgnoresANewFilter", "", "Vertical/Channel[0]/BandwidthLimit = MHZ_200",
     "Cursor/RelativeHysteresisLevel[0]/Hysteresis = 3.2"},
    {"FreshTreeHasACurve", "", "Vertical/ReferenceCurve/TimeScale = 1e-06",
     ".TimePosition.step = 2e-08; .ReferenceCurveAttributes/Unit = LEVEL_V-; .RecordLength = 0-"},
    {"DigitalSkewIsNotReset", "Logic/ChannelDeskew[5]/Deskew = 1e-08", "Logic/ResetDeskew",
     ".ChannelDeskew[5]/Deskew = 0"},
};

/** The edges of the screen, from the settings by another way than the rule's. */
void CheckChannelScreen(const CRuleTree& tree, CFindings& findings)
{
    const double scale = tree.Number("Vertical/Channel[2]/Scale");
    const double middle = tree.Number("Vertical/Channel[2]/Offset") -
                          tree.Number("Vertical/Channel[2]/Position") * scale;
    const double top = tree.Number("Vertical/Channel[2]/Top");
    const double bottom = tree.Number("Vertical/Channel[2]/Bottom");
    const double tolerance = 1e-9 * (std::fabs(middle) + scale);
    findings.Check(std::fabs(top - middle - 4.0 * scale) <= tolerance &&
                       std::fabs(bottom - middle + 4.0 * scale) <= tolerance,
                   "screen");
    const double input = scale / tree.Number("Vertical/Channel[2]/ProbeFactor");
    findings.Check(input >= 0.0019999 && input <= 100.0001, "scale of the input path");
}

void CheckLevels(const CRuleTree& tree, CFindings& findings)
{
    const QByteArray levels = "Vertical/Channel[2]/Levels/";
    const auto check = [&](const QByteArray& level)
    {
        const double value = tree.Number(levels + level);
        findings.Check(value >= tree.Number("Vertical/Channel[2]/Bottom") &&
                           value <= tree.Number("Vertical/Channel[2]/Top") &&
                           tree.State(levels + level + ".max") ==
                               tree.Text("Vertical/Channel[2]/Top"),
                       level);
    };
    const QString set = tree.Text(levels + "EdgeTriggerLevel[0]/LevelSet");
    if (set == QLatin1String("USER") || set == QLatin1String("MIDDLE"))
    {
        check("EdgeTriggerLevel[0]/Level");
    }
    findings.Check(set != QLatin1String("TTL") ||
                       tree.Number(levels + "EdgeTriggerLevel[0]/Level") == 1.4,
                   "TTL");
    check("LogicThresholdSettings[0]/UserThreshold");
    const QString family = tree.Text(levels + "LogicThresholdSettings[0]/ThresholdType");
    const double threshold = tree.Number(levels + "LogicThresholdSettings[0]/Threshold");
    findings.Check(family != QLatin1String("TTL") || threshold == 1.4, "TTL threshold");
    findings.Check(family != QLatin1String("USER") ||
                       threshold == tree.Number(levels + "LogicThresholdSettings[0]/UserThreshold"),
                   "user's threshold");
    for (const char* const kind : {"SlewRate", "Runt", "Window"})
    {
        const QByteArray range = kind + QByteArray("TriggerLevelRange[0]/");
        check(range + "LowerLevel");
        check(range + "UpperLevel");
        findings.Check(tree.Number(levels + range + "LowerLevel") <=
                           tree.Number(levels + range + "UpperLevel"),
                       range);
    }
}

void CheckVertical(const CRuleTree& tree, CFindings& findings)
{
    CheckChannelScreen(tree, findings);
    CheckLevels(tree, findings);
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Vertical, Rules, testing::ValuesIn(kVerticalRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Vertical, Walks,
                         testing::Values(t_Walk{
                             "", "Vertical Logic Vertical/Channel[2] Vertical/Channel[2]/Levels",
                             CheckVertical, 12}));
