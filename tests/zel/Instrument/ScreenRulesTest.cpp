// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

// Rules of what is on the screen: diagrams, history viewer, simulated signals, and how far a
// knob moves what stands on it.

namespace
{
const t_Rule kScreenRules[] = {
    {"ViewerLooksAtARunningScope", "", "HistoryViewer/Enabled = ON",
     "Control/SMScope/RunStop = STOP"},
    {"ViewerStaysBeforeARunningScope", "HistoryViewer/Play", "Control/SMScope/RunStop = RUN",
     "HistoryViewer/Enabled = OFF; .Playing = OFF"},
    {"PlayerRunsWithoutTheViewer", "", "HistoryViewer/Playing = ON",
     ".Enabled = ON; Control/SMScope/RunStop = STOP"},
    {"ClosedViewerPlaysOn", "HistoryViewer/Playing = ON", ".Enabled = OFF",
     ".Playing = OFF; .SelectedTrace = 0; .TraceTime = 0"},
    {"PlayDoesNotPause", "HistoryViewer/Play", ".Play", ".Playing = OFF; .Enabled = ON"},
    {"PlayersRangeIsCrossed", "HistoryViewer/StartTrace = -20", ".StopTrace = -50",
     ".StartTrace = -50; .StopTrace = -50"},
    {"RangeIsDeeperThanTheHistory",
     "Horizontal/HistoryDepth = 1000; HistoryViewer/StartTrace = -700",
     "Horizontal/HistoryDepth = 100", "HistoryViewer/StartTrace = -99; .AvailableTraces = 0"},
    {"EmptyHistoryShowsSomething", "", "HistoryViewer/Previous", ".SelectedTrace = 0",
     eKW_ACC_WARNING},
    {"ClearedTraceIsShownOfOthers",
     "@HistoryViewer/AvailableTraces = 80; HistoryViewer/SelectedTrace = -50; .Clear",
     "@HistoryViewer/AvailableTraces = 80", ".SelectedTrace = 0; .SelectedTrace.min = -79"},
    {"SplitIgnoresTheSize", "Diagrams/DiagramWindow[1]/Visible = ON; ..DiagramWindow[0]/Size = 25",
     "..Layout = SPLIT",
     ".DiagramWindow[0]/Height = 200; ..DiagramWindow[1]/Top = 200; .Height = 600; .Width = 1280; "
     "..DiagramWindow[2]/Width = 0"},
    {"SideBySideStandsAbove", "Diagrams/DiagramWindow[2]/Visible = ON; ..Layout = SIDE_BY_SIDE",
     ".DiagramWindow[0]/Size = 30",
     ".Width = 384; .Height = 800; ..DiagramWindow[2]/Left = 384; .Width = 896"},
    {"ThirdOfFourLeavesAHole", "Diagrams/Layout = QUAD", ".DiagramWindow[2]/Visible = OFF",
     "..DiagramWindow[1]/Left = 640; ..DiagramWindow[3]/Top = 400; .Width = 1280; "
     "..DiagramWindow[2]/Height = 0"},
    {"SingleShowsAnotherThanTheActive", "Diagrams/DiagramWindow[1]/Visible = ON",
     "Diagrams/ActiveWindow = 1",
     ".DiagramWindow[1]/Width = 1280; Diagrams/DiagramWindow[0]/Width = 0; "
     "Diagrams/DiagramWindowHw/Enabled = OFF"},
    {"HiddenDiagramBecomesActive", "", "Diagrams/ActiveWindow = 2", ".ActiveWindow = 0",
     eKW_ACC_WARNING},
    {"ActiveDiagramIsHidden", "Diagrams/DiagramWindow[1]/Visible = ON; ..ActiveWindow = 1",
     ".DiagramWindow[1]/Visible = OFF", "..ActiveWindow = 0; .DiagramWindow[0]/Width = 1280"},
    {"ScreenIsEmpty", "", "Diagrams/DiagramWindow[0]/Visible = OFF", ".Visible = ON",
     eKW_ACC_WARNING},
    {"OverlayStaysWhereTheTracesWere",
     "Diagrams/DiagramWindow[1]/Visible = ON; ..DiagramWindow[0]/Type = METER; ..Layout = "
     "SIDE_BY_SIDE",
     ".DiagramWindow[1]/Type = YT", "..DiagramWindowHw/Enabled = ON; .Left = 640; .Width = 640"},
    {"ZoomMovesByTheMainScale", "", "Zoom/Scale = 5e-09", ".Position.step = 1e-10"},
    {"SpectrumMovesByAWiderScreen", "", "Spectrum/HorizontalSpan = 1000000",
     ".HorizontalStart.step = 2000; .HorizontalStop.step = 2000; .HorizontalCenter.step = 2000; "
     ".SpectrumCursors/SpectrumCursor[1]/Horizontal.step = 2000; "
     "Spectrum/SpectrumMarkers/ReferenceMarker/Frequency.step = 2000"},
    {"FirstDecadeIsSkipped", "Spectrum/HorizontalScaling = LOGARITHMIC",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1000",
     ".Horizontal.step = 20; Spectrum/HorizontalStart.step = 2"},
    {"MarkerMovesByAnotherDecade",
     "Spectrum/HorizontalScaling = LOGARITHMIC; + Spectrum/SpectrumMarkers/SpectrumMarker",
     "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Frequency = 1000", ".Frequency.step = 20"},
    {"VoltsMoveByDecibels", "", "Spectrum/VerticalScaling = LINEAR",
     ".SpectrumCursors/SpectrumCursor[0]/Vertical.step = 0.001; "
     "Spectrum/SpectrumMarkers/ReferenceMarker/Magnitude.step = 0.001"},
    {"NoiseHasAFrequency", "", "Simulation/SimulationChannel[0]/Shape = NOISE",
     ".Frequency = 1e+06!; .Amplitude = 1!; .DutyCycle = 50!; .Offset = 0"},
    {"SquareHasNoDutyCycle", "", "Simulation/SimulationChannel[0]/Shape = SQUARE",
     ".DutyCycle = 50; .Phase = 0"},
};

void CheckScreen(const CRuleTree& tree, CFindings& findings)
{
    double covered = 0.0;
    for (const char* window : {"[0]", "[1]", "[2]", "[3]"})
    {
        const QByteArray path = QByteArray("Diagrams/DiagramWindow") + window;
        covered += tree.Number(path + "/Width") * tree.Number(path + "/Height");
    }
    findings.Check(covered == 1280.0 * 800.0, "screen is not covered");
    findings.Check(tree.Number("HistoryViewer/StartTrace") <=
                       tree.Number("HistoryViewer/StopTrace"),
                   "film runs backwards");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Screen, Rules, testing::ValuesIn(kScreenRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Screen, Walks,
                         testing::Values(t_Walk{"", "Diagrams HistoryViewer Simulation",
                                                CheckScreen, 4}));

TEST(HistoryViewerRules, PlayerLeavesTheMemoryOrTheTimeOfAnotherTrace)
{
    const CRuleTree tree;
    tree.DoAll("@HistoryViewer/AvailableTraces = 50");
    EXPECT_EQ(tree.Do("HistoryViewer/First"), eKW_ACC_OK);
    EXPECT_EQ(tree.State("HistoryViewer/SelectedTrace"), QStringLiteral("-49"));
    EXPECT_EQ(tree.State("HistoryViewer/TraceTime"), QStringLiteral("0-")) << "not yet told";
    EXPECT_EQ(tree.Do("HistoryViewer/Previous"), eKW_ACC_WARNING);
    EXPECT_EQ(tree.Do("HistoryViewer/Next"), eKW_ACC_OK);
    EXPECT_EQ(tree.State("HistoryViewer/SelectedTrace"), QStringLiteral("-48"));
    EXPECT_EQ(tree.Do("HistoryViewer/Last"), eKW_ACC_OK);
    EXPECT_EQ(tree.State("HistoryViewer/TraceTime"), QStringLiteral("0"));
    EXPECT_EQ(tree.Do("HistoryViewer/Next"), eKW_ACC_WARNING);
    EXPECT_EQ(tree.Do("HistoryViewer/SelectedTrace = -50"), eKW_ACC_BELOW_MINIMUM);
    ASSERT_EQ(tree.Do("HistoryViewer/StartTrace = -30"), eKW_ACC_OK);
    EXPECT_EQ(tree.Do("HistoryViewer/Play"), eKW_ACC_OK);
    EXPECT_EQ(tree.State("HistoryViewer/SelectedTrace"), QStringLiteral("-30"));
    tree.DoAll("@HistoryViewer/AvailableTraces = 10");
    EXPECT_EQ(tree.State("HistoryViewer/SelectedTrace"), QStringLiteral("-9"))
        << "older ones are gone";
    EXPECT_EQ(tree.Do("HistoryViewer/Clear"), eKW_ACC_OK);
    EXPECT_EQ(tree.State("HistoryViewer/AvailableTraces"), QStringLiteral("0"));
    EXPECT_EQ(tree.State("HistoryViewer/SelectedTrace"), QStringLiteral("0"));
    EXPECT_EQ(tree.State("HistoryViewer/Playing"), QStringLiteral("OFF"));
    EXPECT_EQ(tree.reports.List(), QStringList());
}
