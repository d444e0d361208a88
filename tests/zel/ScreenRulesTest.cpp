// SPDX-License-Identifier: MIT
#include "RuleTree.h"

// Rules of what is on the screen: diagrams, history viewer, simulated signals.

namespace
{
QString H(const char* rest)
{
    return QStringLiteral("HistoryViewer/") + QString::fromLatin1(rest);
}

QString D(const char* rest)
{
    return QStringLiteral("Diagrams/") + QString::fromLatin1(rest);
}

QString S(const char* rest)
{
    return QStringLiteral("Simulation/SimulationChannel[0]/") + QString::fromLatin1(rest);
}

/** Fifty acquisitions in memory. */
void Acquire(const CRuleTree& tree, const char* count = "50")
{
    const auto traces = std::dynamic_pointer_cast<IKWNumericProperty<UINT32>>(
        Property(tree.root, "HistoryViewer/AvailableTraces")->GetHandle());
    ASSERT_TRUE(traces);
    ASSERT_EQ(traces->SetResult(QString::fromLatin1(count).toUInt()), eKW_ACC_OK);
}

std::vector<t_RuleCase> Cases()
{
    return {
        {"ViewerLooksAtARunningScope",
         {},
         H("Enabled = ON"),
         {QStringLiteral("Control/SMScope/RunStop = STOP")}},
        {"ViewerStaysBeforeARunningScope",
         {H("Play")},
         QStringLiteral("Control/SMScope/RunStop = RUN"),
         {H("Enabled = OFF"), H("Playing = OFF")}},
        {"PlayerRunsWithoutTheViewer",
         {},
         H("Playing = ON"),
         {H("Enabled = ON"), QStringLiteral("Control/SMScope/RunStop = STOP")}},
        {"ClosedViewerPlaysOn",
         {H("Playing = ON")},
         H("Enabled = OFF"),
         {H("Playing = OFF"), H("SelectedTrace = 0"), H("TraceTime = 0")}},
        {"PlayDoesNotPause", {H("Play")}, H("Play"), {H("Playing = OFF"), H("Enabled = ON")}},
        {"PlayersRangeIsCrossed",
         {H("StartTrace = -20")},
         H("StopTrace = -50"),
         {H("StartTrace = -50"), H("StopTrace = -50")}},
        {"RangeIsDeeperThanTheHistory",
         {QStringLiteral("Horizontal/HistoryDepth = 1000"), H("StartTrace = -700")},
         QStringLiteral("Horizontal/HistoryDepth = 100"),
         {H("StartTrace = -99"), H("AvailableTraces = 0")}},
        {"EmptyHistoryShowsSomething", {}, H("Previous"), {H("SelectedTrace = 0")}, 1},
        {"SplitIgnoresTheSize",
         {D("DiagramWindow[1]/Visible = ON"), D("DiagramWindow[0]/Size = 25")},
         D("Layout = SPLIT"),
         {D("DiagramWindow[0]/Height = 200"), D("DiagramWindow[1]/Top = 200"),
          D("DiagramWindow[1]/Height = 600"), D("DiagramWindow[1]/Width = 1280"),
          D("DiagramWindow[2]/Width = 0")}},
        {"SideBySideStandsAbove",
         {D("DiagramWindow[2]/Visible = ON"), D("Layout = SIDE_BY_SIDE")},
         D("DiagramWindow[0]/Size = 30"),
         {D("DiagramWindow[0]/Width = 384"), D("DiagramWindow[0]/Height = 800"),
          D("DiagramWindow[2]/Left = 384"), D("DiagramWindow[2]/Width = 896")}},
        {"ThirdOfFourLeavesAHole",
         {D("DiagramWindow[1]/Visible = ON"), D("DiagramWindow[3]/Visible = ON")},
         D("Layout = QUAD"),
         {D("DiagramWindow[1]/Left = 640"), D("DiagramWindow[3]/Top = 400"),
          D("DiagramWindow[3]/Width = 1280"), D("DiagramWindow[2]/Height = 0")}},
        {"SingleShowsAnotherThanTheActive",
         {D("DiagramWindow[1]/Visible = ON")},
         D("ActiveWindow = 1"),
         {D("DiagramWindow[1]/Width = 1280"), D("DiagramWindow[0]/Width = 0"),
          D("DiagramWindowHw/Enabled = OFF")}},
        {"HiddenDiagramBecomesActive", {}, D("ActiveWindow = 2"), {D("ActiveWindow = 0")}, 1},
        {"ActiveDiagramIsHidden",
         {D("DiagramWindow[1]/Visible = ON"), D("ActiveWindow = 1")},
         D("DiagramWindow[1]/Visible = OFF"),
         {D("ActiveWindow = 0"), D("DiagramWindow[0]/Width = 1280")}},
        {"ScreenIsEmpty",
         {},
         D("DiagramWindow[0]/Visible = OFF"),
         {D("DiagramWindow[0]/Visible = ON")},
         1},
        {"OverlayStaysWhereTheTracesWere",
         {D("DiagramWindow[1]/Visible = ON"), D("DiagramWindow[0]/Type = FFT"),
          D("Layout = SIDE_BY_SIDE")},
         D("DiagramWindow[1]/Type = YT"),
         {D("DiagramWindowHw/Enabled = ON"), D("DiagramWindowHw/Left = 640"),
          D("DiagramWindowHw/Width = 640")}},
        {"NoiseHasAFrequency",
         {},
         S("Shape = NOISE"),
         {S("Frequency = 1e+06!"), S("Amplitude = 1!"), S("DutyCycle = 50!"), S("Offset = 0")}},
        {"SquareHasNoDutyCycle", {}, S("Shape = SQUARE"), {S("DutyCycle = 50"), S("Phase = 0")}},
    };
}
} // namespace

class ScreenRules : public testing::TestWithParam<t_RuleCase>
{
};

TEST_P(ScreenRules, Coupling)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Screen, ScreenRules, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HistoryViewerRules, PlayerLeavesTheMemoryOrTheTimeOfAnotherTrace)
{
    CRuleTree tree;
    Acquire(tree);
    EXPECT_EQ(tree.Do(H("First")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(H("SelectedTrace")), QStringLiteral("-49"));
    EXPECT_EQ(tree.State(H("TraceTime")), QStringLiteral("0-")) << "not yet told";
    EXPECT_EQ(tree.Do(H("Previous")), eKW_ACC_WARNING);
    EXPECT_EQ(tree.Do(H("Next")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(H("SelectedTrace")), QStringLiteral("-48"));
    EXPECT_EQ(tree.Do(H("Last")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(H("TraceTime")), QStringLiteral("0"));
    EXPECT_EQ(tree.Do(H("Next")), eKW_ACC_WARNING);
    EXPECT_EQ(tree.Do(H("SelectedTrace = -50")), eKW_ACC_BELOW_MINIMUM);
    ASSERT_EQ(tree.Do(H("StartTrace = -30")), eKW_ACC_OK);
    EXPECT_EQ(tree.Do(H("Play")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(H("SelectedTrace")), QStringLiteral("-30"));
    Acquire(tree, "10");
    EXPECT_EQ(tree.State(H("SelectedTrace")), QStringLiteral("-9")) << "older ones are gone";
    EXPECT_EQ(tree.Do(H("Clear")), eKW_ACC_OK);
    EXPECT_EQ(tree.State(H("AvailableTraces")), QStringLiteral("0"));
    EXPECT_EQ(tree.State(H("SelectedTrace")), QStringLiteral("0"));
    EXPECT_EQ(tree.State(H("Playing")), QStringLiteral("OFF"));
    EXPECT_EQ(tree.reports.Messages(), QStringList());
}

TEST(ScreenWalk, SomeOrderOfWritesLeavesTheScreenTornOrNotUndone)
{
    const auto violations = [](const CRuleTree& tree)
    {
        QStringList wrong;
        double covered = 0.0;
        for (const char* window : {"[0]", "[1]", "[2]", "[3]"})
        {
            const QString path =
                QStringLiteral("Diagrams/DiagramWindow%1/").arg(QLatin1String(window));
            covered += tree.Number(path + QLatin1String("Width")) *
                       tree.Number(path + QLatin1String("Height"));
        }
        if (covered != 1280.0 * 800.0)
        {
            wrong.append(QStringLiteral("screen is not covered"));
        }
        if (tree.Number(H("StartTrace")) > tree.Number(H("StopTrace")))
        {
            wrong.append(QStringLiteral("film runs backwards"));
        }
        return wrong;
    };
    for (const UINT32 seed : {1U, 2U, 3U, 4U})
    {
        CheckWalk(seed, {},
                  {QStringLiteral("Diagrams"), QStringLiteral("HistoryViewer"),
                   QStringLiteral("Simulation")},
                  violations);
    }
}
