// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

#include <cmath>

// Rules of what looks at traces: zoom, cursors, mask test, measurements.

namespace
{
const t_Rule kAnalysisRules[] = {
    {"ZoomIsSlowerThanTheTimebase", "", "Horizontal/Scale = 1e-09",
     "Zoom/Scale = 1e-09; .Factor = 1; .Left = -5e-09; .Right = 5e-09"},
    {"ZoomForgetsItsScale", "Horizontal/Scale = 1e-09", ".Scale = 1e-06",
     "Zoom/Scale = 1e-08; .Factor = 100"},
    {"ZoomLeavesTheRecord", "Horizontal/Scale = 0.001", "Zoom/Position = 0.006", ".Position = 0",
     eKW_ACC_ABOVE_MAXIMUM},
    {"ZoomReachesPastItsNeighbours",
     "Horizontal/Scale = 0.001; Zoom/Scale = 0.0001; .Position = 0.0045", ".Scale = 0.0005",
     ".Position = 0.0025; .Right = 0.005; .Factor = 2"},
    {"ZoomShowsTooFewPoints", "Horizontal/Scale = 1", "Zoom/Scale = 0.0001",
     ".Points = 50; .Factor = 10000; .InterpolationFactor = 4"},
    {"ZoomIgnoresTheCursors", "Horizontal/Scale = 0.001; Cursor/X1 = 0.001; .X2 = 0.003",
     "Zoom/CoupleToCursor = ON", ".Position = 0.002; .Scale = 2e-04; .Left = 0.001"},
    {"CoupledZoomStaysBehind",
     "Horizontal/Scale = 0.001; Cursor/X1 = 0.001; .X2 = 0.003; Zoom/CoupleToCursor = ON",
     "Cursor/X2 = 0.002", "Zoom/Position = 0.0015; .Scale = 1e-04"},
    {"WrittenZoomIsTakenBackByTheCursors", "Horizontal/Scale = 0.001; Zoom/CoupleToCursor = ON",
     ".Position = 0.001", ".CoupleToCursor = OFF; .Position = 0.001"},
    {"WrittenZoomScaleIsTakenBackByTheCursors", "Zoom/CoupleToCursor = ON", ".Scale = 1e-08",
     ".CoupleToCursor = OFF; .Scale = 1e-08"},
    {"ZoomCenterMissesTheTrigger", "Horizontal/Scale = 0.001; Zoom/Position = 0.001",
     ".CenterOnTrigger", ".Position = 0"},
    {"CursorLeavesTheScreen", "", "Cursor/X1 = 6e-07", ".X1 = -2e-07", eKW_ACC_ABOVE_MAXIMUM},
    {"CursorForgetsItsPlace",
     "Horizontal/Scale = 0.001; Cursor/X2 = 0.004; Horizontal/Scale = 1e-06", ".Scale = 0.001",
     "Cursor/X2 = 0.004"},
    {"DifferencesAreThoseBefore", "Horizontal/Scale = 0.001; Cursor/X1 = 0.001", ".X2 = 0.003",
     ".DeltaX = 0.002; .InverseDeltaX = 500; .Slope = 2000"},
    {"FrequencyIsNegative", "Horizontal/Scale = 0.001; Cursor/X1 = 0.003", ".X2 = 0.001",
     ".DeltaX = -0.002; .InverseDeltaX = 500; .Slope = -2000"},
    {"NoDistanceHasAFrequency", "Horizontal/Scale = 0.001; Cursor/X2 = 0.003; .X1 = 0.001",
     ".X2 = 0.001", ".DeltaX = 0; .InverseDeltaX = 500-; .Slope = 2000-"},
    {"CoupledCursorStays", "Horizontal/Scale = 0.001; Cursor/X1 = 0; .X2 = 0.002; .Coupled = ON",
     ".X1 = 0.001", ".X2 = 0.003; .DeltaX = 0.002"},
    {"CoupledCursorsComeCloserAtTheEdge",
     "Horizontal/Scale = 0.001; Cursor/X1 = 0; .X2 = 0.002; .Coupled = ON", ".X1 = 0.004",
     ".X1 = 0.003; .X2 = 0.005; .DeltaX = 0.002", eKW_ACC_WARNING},
    {"CoupledLevelStays", "Cursor/Coupled = ON", ".Y2 = 3", ".Y1 = -1; .DeltaY = 4"},
    {"CursorStandsOnNothing", "Cursor/Source = C2", "Vertical/Channel[1]/Enabled = OFF",
     "Cursor/Source = C1; .SourceType = ANALOG"},
    {"SpreadCursorsAreElsewhere",
     "Horizontal/Scale = 0.001; Cursor/X1 = 0.001; .Y1 = 1; .LevelX1 = 1", ".SetToScreen",
     ".X1 = -0.002; .X2 = 0.002; .Y1 = -2; .Y2 = 2; .LevelX1 = -2; .LevelX2 = 2; .DeltaX = 0.004"},
    {"ScreenOfATraceMovesUp", "Mathematics/Enabled = ON; .Scale = 1; Cursor/Source = M1",
     "Mathematics/Position = 2", "Cursor/Y1.max = 2; .Y1.min = -6"},
    {"PercentOfNothing", "Cursor/ReferenceX = 0; .Readout = PERCENT", ".ReferenceY = 0",
     ".Readout = VALUE"},
    {"DecibelOfATime", "Cursor/ReferenceX = 1; .ReferenceY = 0", ".Readout = DECIBEL",
     ".Readout = VALUE; .Readout.values = VALUE|PERCENT", eKW_ACC_NOT_ENABLED},
    {"ReferenceIsAnotherDistance", "Cursor/Y2 = 1; .ReferenceX = 1", ".SetAsReference",
     ".ReferenceX = 4e-07; .ReferenceY = 3"},
    {"CursorMeasurementKeepsAnotherUnit", "",
     "Cursor/CursorMeasurements/CursorMeasurement[0]/Type = PERIOD",
     ".Unit = FREQ_SEC; .Result = 0-"},
    {"TestStartsWithOldCounts", "", "Mask/Start", ".State = RUNNING; .Enabled = ON"},
    {"PauseEndsTheTest", "Mask/Start", ".Pause", ".State = PAUSED"},
    {"PausedTestStaysSo", "Mask/Start; .Pause", ".Pause", ".State = RUNNING"},
    {"NothingIsPaused", "", "Mask/Pause", ".State = OFF", eKW_ACC_NOTHING_TO_ACT_ON},
    {"StoppedTestHasNoResult", "Mask/Start; @Mask/TestedAcquisitions = 1", ".Stop",
     ".State = PASSED"},
    {"PauseEndsOnAStoppedScope", "Mask/Start; Control/SMScope/Stop", "Mask/Pause",
     ".State = PAUSED", eKW_ACC_NOTHING_TO_ACT_ON},
    {"DisabledTestRunsOn", "Mask/Start", ".Enabled = OFF", ".State = OFF"},
    {"ClearedCountsStay", "@Mask/ElapsedTime = 7; @.FailedAcquisitions = 3; @.FailureRate = 3",
     "Mask/ClearCounts", ".ElapsedTime = 0; .FailedAcquisitions = 0; .FailureRate = 3-"},
    {"GateRunsBackwards", "", "Measurements/GateStart = 3e-07",
     ".GateStart = 3e-07; .GateStop = 3e-07"},
    {"LowerReferenceIsAboveTheOthers", "", "Measurements/LowerReferencePercent = 95",
     ".MiddleReferencePercent = 95; .UpperReferencePercent = 95"},
    {"UpperReferenceIsBelowTheOthers", "", "Measurements/UpperReferenceLevel = -2",
     ".LowerReferenceLevel = -2; .MiddleReferenceLevel = -2"},
    {"MiddleReferencePushesNothing", "", "Measurements/MiddleReferencePercent = 5",
     ".LowerReferencePercent = 5; .UpperReferencePercent = 90"},
    {"MeasurementKeepsAnotherUnit", "@Measurements/Measurement[1]/Count = 5; @.Mean = 3",
     ".Type = POS_SLEWRATE", ".Unit = LEVEL_V_PER_S; .Actual = 0-; .Mean = 3-; .Count = 0"},
    {"DigitalTraceHasAnAmplitude", "Logic/Enabled = ON; .LogicChannel[2]/Enabled = ON",
     "Measurements/Measurement[0]/Source = D2", ".Type = FREQUENCY; .Unit = FREQ_HZ"},
    {"LimitsAreCrossed", "", "Measurements/Measurement[0]/LowerLimit = 4", ".UpperLimit = 4"},
    {"StatisticsGoOn",
     "@Measurements/Measurement[3]/Actual = 7; @.Mean = 6; @.Count = 2; @.Limit = OVERFLOW",
     "Measurements/ResetStatistics",
     ".Measurement[3]/Mean = 6-; .Count = 0; .Limit = OVERFLOW-; .Actual = 7"},
    {"SomeMeasurementStaysOn",
     "Measurements/Measurement[0]/Enabled = ON; ..Measurement[3]/Enabled = ON", "..DisableAll",
     ".Measurement[0]/Enabled = OFF; ..Measurement[3]/Enabled = OFF"},
};

void CheckAnalysis(const CRuleTree& tree, CFindings& findings)
{
    const double left = tree.Number("Horizontal/Left");
    const double right = tree.Number("Horizontal/Right");
    const double tiny = 1e-9 * (right - left);
    const double x1 = tree.Number("Cursor/X1");
    const double x2 = tree.Number("Cursor/X2");
    findings.Check(std::min(x1, x2) >= left && std::max(x1, x2) <= right, "cursor off screen");
    findings.Check(std::fabs(x2 - x1 - tree.Number("Cursor/DeltaX")) <= tiny, "stale difference");
    findings.Check(tree.Number("Zoom/Left") >= left - tiny &&
                       tree.Number("Zoom/Right") <= right + tiny,
                   "zoom off the record");
    findings.Check(tree.Number("Measurements/GateStart") <= tree.Number("Measurements/GateStop"),
                   "gate runs backwards");
    const double middle = tree.Number("Measurements/MiddleReferencePercent");
    findings.Check(tree.Number("Measurements/LowerReferencePercent") <= middle &&
                       middle <= tree.Number("Measurements/UpperReferencePercent"),
                   "references out of order");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Analysis, Rules, testing::ValuesIn(kAnalysisRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Analysis, Walks,
                         testing::Values(t_Walk{"", "Cursor Zoom Mask Measurements Horizontal",
                                                CheckAnalysis, 6,
                                                "register dimensions|reference point"}));

TEST(MaskRules, ClearedMaskLeavesResultsOrAnotherMaskGoes)
{
    const CRuleTree tree;
    const QByteArray lines =
        QByteArrayLiteral(
            "<Mask Version='1.0' Unit='LEVEL_V' Left='0' TimeScale='1' Middle='0' LevelScale='1'>"
            "<Upper><Point X='0' Y='1'/></Upper></Mask>")
            .toBase64();
    tree.DoAll("@Mask/MaskChannelSetup[1]/MaskLines = " + lines +
               "; @.FailedAcquisitions = 3; "
               "@Mask/MaskChannelSetup[2]/MaskLines = " +
               lines +
               "; @Mask/FailedAcquisitions = 3; "
               ".Start; .SelectedChannel = C2");
    EXPECT_EQ(tree.State("Mask/MaskChannelSetup[1]/MaskPoints"), QStringLiteral("1"));
    EXPECT_EQ(tree.State("Mask/FailedAcquisitions"), QStringLiteral("0"));
    EXPECT_EQ(tree.State("Mask/MaskChannelSetup[1]/FailedAcquisitions"), QStringLiteral("0"));
    tree.DoAll("@Mask/FailedAcquisitions = 3; .Stop");
    EXPECT_EQ(tree.State("Mask/State"), QStringLiteral("FAILED"));
    tree.DoAll("Mask/MaskSettings/ClearMask");
    EXPECT_EQ(tree.State("Mask/MaskChannelSetup[1]/MaskDefined"), QStringLiteral("OFF"));
    EXPECT_EQ(tree.State("Mask/MaskChannelSetup[2]/MaskDefined"), QStringLiteral("ON"));
}
