// SPDX-License-Identifier: MIT
#include "RuleTree.h"

#include <cmath>

// Rules of what looks at traces: zoom, cursors, mask test, measurements.

namespace
{
QString C(const char* rest)
{
    return QStringLiteral("Cursor/") + QString::fromLatin1(rest);
}

QString Z(const char* rest)
{
    return QStringLiteral("Zoom/") + QString::fromLatin1(rest);
}

QString K(const char* rest)
{
    return QStringLiteral("Mask/") + QString::fromLatin1(rest);
}

QString M(const char* rest)
{
    return QStringLiteral("Measurements/") + QString::fromLatin1(rest);
}

QString Of(const char* text)
{
    return QString::fromLatin1(text);
}

std::vector<t_RuleCase> Cases()
{
    const QString ms = Of("Horizontal/Scale = 0.001");
    return {
        // Zoom
        {"ZoomIsSlowerThanTheTimebase",
         {},
         Of("Horizontal/Scale = 1e-09"),
         {Z("Scale = 1e-09"), Z("Factor = 1"), Z("Left = -5e-09"), Z("Right = 5e-09")}},
        {"ZoomForgetsItsScale",
         {Of("Horizontal/Scale = 1e-09")},
         Of("Horizontal/Scale = 1e-06"),
         {Z("Scale = 1e-08"), Z("Factor = 100")}},
        {"ZoomLeavesTheRecord", {ms}, Z("Position = 0.006"), {Z("Position = 0")}, 3},
        {"ZoomReachesPastItsNeighbours",
         {ms, Z("Scale = 0.0001"), Z("Position = 0.0045")},
         Z("Scale = 0.0005"),
         {Z("Position = 0.0025"), Z("Right = 0.005"), Z("Factor = 2")}},
        {"ZoomShowsTooFewPoints",
         {Of("Horizontal/Scale = 1")},
         Z("Scale = 0.0001"),
         {Z("Points = 50"), Z("Factor = 10000"), Z("InterpolationFactor = 4")}},
        {"ZoomIgnoresTheCursors",
         {ms, C("X1 = 0.001"), C("X2 = 0.003")},
         Z("CoupleToCursor = ON"),
         {Z("Position = 0.002"), Z("Scale = 2e-04"), Z("Left = 0.001")}},
        {"CoupledZoomStaysBehind",
         {ms, C("X1 = 0.001"), C("X2 = 0.003"), Z("CoupleToCursor = ON")},
         C("X2 = 0.002"),
         {Z("Position = 0.0015"), Z("Scale = 1e-04")}},
        {"WrittenZoomIsTakenBackByTheCursors",
         {ms, Z("CoupleToCursor = ON")},
         Z("Position = 0.001"),
         {Z("CoupleToCursor = OFF"), Z("Position = 0.001")}},
        {"ZoomCenterMissesTheTrigger",
         {ms, Z("Position = 0.001")},
         Z("CenterOnTrigger"),
         {Z("Position = 0")}},
        // Cursors
        {"CursorLeavesTheScreen", {}, C("X1 = 6e-07"), {C("X1 = -2e-07")}, 3},
        {"CursorForgetsItsPlace",
         {ms, C("X2 = 0.004"), Of("Horizontal/Scale = 1e-06")},
         ms,
         {C("X2 = 0.004")}},
        {"DifferencesAreThoseBefore",
         {ms, C("X1 = 0.001")},
         C("X2 = 0.003"),
         {C("DeltaX = 0.002"), C("InverseDeltaX = 500"), C("Slope = 2000")}},
        {"NoDistanceHasAFrequency",
         {ms, C("X2 = 0.003"), C("X1 = 0.001")},
         C("X2 = 0.001"),
         {C("DeltaX = 0"), C("InverseDeltaX = 500-"), C("Slope = 2000-")}},
        {"CoupledCursorStays",
         {ms, C("X1 = 0"), C("X2 = 0.002"), C("Coupled = ON")},
         C("X1 = 0.001"),
         {C("X2 = 0.003"), C("DeltaX = 0.002")}},
        {"CoupledCursorLeavesTheScreen",
         {ms, C("X1 = 0"), C("X2 = 0.002"), C("Coupled = ON")},
         C("X1 = 0.004"),
         {C("X2 = 0.005"), C("DeltaX = 0.001")},
         1},
        {"CoupledLevelStays", {C("Coupled = ON")}, C("Y2 = 3"), {C("Y1 = -1"), C("DeltaY = 4")}},
        {"CursorStandsOnNothing",
         {C("Source = C2")},
         Of("Vertical/Channel[1]/Enabled = OFF"),
         {C("Source = C1"), C("SourceType = ANALOG")}},
        {"SpreadCursorsAreElsewhere",
         {ms, C("X1 = 0.001"), C("Y1 = 1")},
         C("SetToScreen"),
         {C("X1 = -0.002"), C("X2 = 0.002"), C("Y1 = -2"), C("Y2 = 2")}},
        {"PercentOfNothing",
         {C("ReferenceX = 0"), C("Readout = PERCENT")},
         C("ReferenceY = 0"),
         {C("Readout = VALUE")}},
        {"ReferenceIsAnotherDistance",
         {C("Y2 = 1"), C("ReferenceX = 1")},
         C("SetAsReference"),
         {C("ReferenceX = 4e-07"), C("ReferenceY = 3")}},
        {"CursorMeasurementKeepsAnotherUnit",
         {},
         C("CursorMeasurements/CursorMeasurement[0]/Type = PERIOD"),
         {C("CursorMeasurements/CursorMeasurement[0]/Unit = FREQ_SEC"),
          C("CursorMeasurements/CursorMeasurement[0]/Result = 0-")}},
        // Mask
        {"TestStartsWithOldCounts", {}, K("Start"), {K("State = RUNNING"), K("Enabled = ON")}},
        {"PauseEndsTheTest", {K("Start")}, K("Pause"), {K("State = PAUSED")}},
        {"PausedTestStaysSo", {K("Start"), K("Pause")}, K("Pause"), {K("State = RUNNING")}},
        {"NothingIsPaused", {}, K("Pause"), {K("State = OFF")}, eKW_ACC_NOTHING_TO_DO},
        {"StoppedTestHasNoResult", {K("Start")}, K("Stop"), {K("State = PASSED")}},
        {"DisabledTestRunsOn", {K("Start")}, K("Enabled = OFF"), {K("State = OFF")}},
        {"ClearedRateIsValid", {}, K("ClearCounts"), {K("FailureRate = 0-")}},
        // Measurements
        {"GateRunsBackwards",
         {},
         M("GateStart = 3e-07"),
         {M("GateStart = 3e-07"), M("GateStop = 3e-07")}},
        {"LowerReferenceIsAboveTheOthers",
         {},
         M("LowerReferencePercent = 95"),
         {M("MiddleReferencePercent = 95"), M("UpperReferencePercent = 95")}},
        {"UpperReferenceIsBelowTheOthers",
         {},
         M("UpperReferenceLevel = -2"),
         {M("LowerReferenceLevel = -2"), M("MiddleReferenceLevel = -2")}},
        {"MiddleReferencePushesNothing",
         {},
         M("MiddleReferencePercent = 5"),
         {M("LowerReferencePercent = 5"), M("UpperReferencePercent = 90")}},
        {"MeasurementKeepsAnotherUnit",
         {},
         M("Measurement[1]/Type = POS_SLEWRATE"),
         {M("Measurement[1]/Unit = LEVEL_V_PER_S"), M("Measurement[1]/Actual = 0-")}},
        {"DigitalTraceHasAnAmplitude",
         {Of("Logic/Enabled = ON"), Of("Logic/LogicChannel[2]/Enabled = ON")},
         M("Measurement[0]/Source = D2"),
         {M("Measurement[0]/Type = FREQUENCY"), M("Measurement[0]/Unit = FREQ_HZ")}},
        {"LimitsAreCrossed",
         {},
         M("Measurement[0]/LowerLimit = 4"),
         {M("Measurement[0]/UpperLimit = 4")}},
        {"StatisticsGoOn",
         {},
         M("ResetStatistics"),
         {M("Measurement[3]/Mean = 0-"), M("Measurement[3]/Count = 0"),
          M("Measurement[3]/Actual = 0")}},
        {"SomeMeasurementStaysOn",
         {M("Measurement[0]/Enabled = ON"), M("Measurement[3]/Enabled = ON")},
         M("DisableAll"),
         {M("Measurement[0]/Enabled = OFF"), M("Measurement[3]/Enabled = OFF")}},
    };
}
} // namespace

class AnalysisRules : public testing::TestWithParam<t_RuleCase>
{
};

TEST_P(AnalysisRules, Coupling)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Analysis, AnalysisRules, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(MaskRules, ClearedMaskLeavesResultsOrAnotherMaskGoes)
{
    CRuleTree tree;
    const auto deliver = [&tree](const char* path, const char* text)
    {
        const auto property = Property(tree.root, path)->GetHandle();
        if (const auto on = std::dynamic_pointer_cast<IKWEnumProperty<KW_ONOFF>>(property))
        {
            return on->SetResult(eKW_ONOFF_ON);
        }
        const auto count = std::dynamic_pointer_cast<IKWNumericProperty<UINT64>>(property);
        return count->SetResult(QString::fromLatin1(text).toULongLong());
    };
    for (const char* path :
         {"Mask/MaskChannelSetup[1]/MaskDefined", "Mask/MaskChannelSetup[2]/MaskDefined"})
    {
        ASSERT_EQ(deliver(path, ""), eKW_ACC_OK);
    }
    ASSERT_EQ(deliver("Mask/MaskChannelSetup[1]/FailedAcquisitions", "3"), eKW_ACC_OK);
    ASSERT_EQ(deliver("Mask/FailedAcquisitions", "3"), eKW_ACC_OK);
    tree.DoAll({K("Start"), K("SelectedChannel = C2")});
    EXPECT_EQ(tree.State(K("FailedAcquisitions")), QStringLiteral("0"));
    EXPECT_EQ(tree.State(K("MaskChannelSetup[1]/FailedAcquisitions")), QStringLiteral("0"));
    ASSERT_EQ(deliver("Mask/FailedAcquisitions", "3"), eKW_ACC_OK);
    EXPECT_EQ(tree.Do(K("Stop")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(K("State")), QStringLiteral("FAILED"));
    EXPECT_EQ(tree.Do(K("MaskSettings/ClearMask")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(K("MaskChannelSetup[1]/MaskDefined")), QStringLiteral("OFF"));
    EXPECT_EQ(tree.State(K("MaskChannelSetup[2]/MaskDefined")), QStringLiteral("ON"));
}

TEST(AnalysisWalk, SomeOrderOfWritesBreaksACouplingOrIsNotUndone)
{
    const auto violations = [](const CRuleTree& tree)
    {
        QStringList wrong;
        const auto check = [&wrong](bool holds, const char* what)
        {
            if (!holds)
            {
                wrong.append(QString::fromLatin1(what));
            }
        };
        const double left = tree.Number(Of("Horizontal/Left"));
        const double right = tree.Number(Of("Horizontal/Right"));
        const double tiny = 1e-9 * (right - left);
        for (const char* line : {"X1", "X2"})
        {
            check(tree.Number(C(line)) >= left && tree.Number(C(line)) <= right,
                  "cursor off screen");
        }
        check(std::fabs(tree.Number(C("X2")) - tree.Number(C("X1")) - tree.Number(C("DeltaX"))) <=
                  tiny,
              "stale difference");
        check(tree.Number(Z("Left")) >= left - tiny && tree.Number(Z("Right")) <= right + tiny,
              "zoom off the record");
        check(tree.Number(M("GateStart")) <= tree.Number(M("GateStop")), "gate runs backwards");
        check(tree.Number(M("LowerReferencePercent")) <= tree.Number(M("MiddleReferencePercent")) &&
                  tree.Number(M("MiddleReferencePercent")) <=
                      tree.Number(M("UpperReferencePercent")),
              "references out of order");
        return wrong;
    };
    for (const UINT32 seed : {1U, 2U, 3U, 4U, 5U, 6U})
    {
        CheckWalk(seed, {},
                  {Of("Cursor"), Of("Zoom"), Of("Mask"), Of("Measurements"), Of("Horizontal")},
                  violations);
    }
}
