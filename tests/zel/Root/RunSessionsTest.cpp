// SPDX-License-Identifier: MIT
#include "CommonDatabase/Nodes/DbPropBase.h"
#include "zel/RuleTree.h"

#include <map>

// What runs, in which mode, and what the screen shows of it.

namespace
{
const t_Session kRunSessions[] = {
    {"StartedRecordingLeavesItsMachineStopped",
     {{"Control/SMMode/OperationMode = LOGGER; .SwitchMode; Logger/Start",
       "Logger/Recording = ON; Control/SMLogger/RunStop = RUN; Runs/CurrentRun/RunStop = RUN"},
      {"Logger/Stop",
       "Logger/Recording = OFF; Control/SMLogger/RunStop = STOP; Runs/CurrentRun/RunStop = STOP"}}},
    {"MachineRunsWithoutARecording",
     {{"@Logger/LoggerAttributes/NumberOfSamples = 9; Control/SMLogger/Start",
       "Logger/Recording = ON; .SampleRate = 1_PER_SEC!; .LoggerAttributes/NumberOfSamples = 0"},
      {"@Logger/LoggerAttributes/NumberOfSamples = 9; Control/SMLogger/RunStop = STOP",
       "Logger/Recording = OFF; .SampleRate = 1_PER_SEC; .LoggerAttributes/NumberOfSamples = 9"},
      {"Control/SMLogger/RunStop = RUN",
       "Logger/Recording = ON; .LoggerAttributes/NumberOfSamples = 0"},
      {"@Logger/LoggerAttributes/NumberOfSamples = 9; @Logger/Recording = OFF",
       "Control/SMLogger/RunStop = STOP; Logger/LoggerAttributes/NumberOfSamples = 9"},
      {"@Logger/Recording = ON", "Control/SMLogger/RunStop = RUN"}}},
    {"SomethingRunsOnAfterStop",
     {{"Logger/Start; Mask/Start; Control/SMMode/Stop",
       "Control/SMScope/RunStop = STOP; Control/SMMeter/RunStop = STOP; "
       "Control/SMLogger/RunStop = STOP; Logger/Recording = OFF; Mask/State = PAUSED; "
       "Runs/CurrentRun/RunStop = STOP"},
      {"Control/SMScope/Start", "Mask/State = RUNNING; Runs/CurrentRun/RunStop = RUN"}}},
    {"SequenceRunsOnAfterStop",
     {{"@Control/SMComplexSequence/OperationState = ACTIVE; @.Progress = 40; @.Step = Autoset; "
       "Control/SMMode/Stop",
       "Control/SMComplexSequence/OperationState = ABORTED; .Progress = 0; .Step = "}}},
    {"NSingleRunsWithoutEnd",
     {{"Trigger/RepetitionMode = N_SINGLE; .NumberOfAcquisitions = 20",
       "Control/SMScope/SingleCount = 20; .RunStop = SINGLE; .AcquisitionsLeft = 10"},
      {"Control/SMScope/Stop; .Start", "Control/SMScope/RunStop = SINGLE; .AcquisitionsLeft = 20"},
      {"@Control/SMScope/AcquisitionsLeft = 0",
       "Control/SMScope/RunStop = STOP; Runs/CurrentRun/RunStop = STOP"},
      {"Control/SMScope/Start; Trigger/RepetitionMode = CONTINUOUS",
       "Control/SMScope/RunStop = RUN; .SingleCount = 1; Trigger/NumberOfAcquisitions = 20"}}},
    {"NumberOfNSingleIsTwo",
     {{"Control/SMScope/SingleCount = 7",
       "Trigger/RepetitionMode = N_SINGLE; .NumberOfAcquisitions = 7; "
       "Control/SMScope/SingleCount = 7"},
      {"Control/SMScope/SingleCount = 1", "Trigger/RepetitionMode = CONTINUOUS"},
      {"Trigger/RepetitionMode = SINGLE", "Control/SMScope/SingleCount = 1"},
      {"Control/SMScope/Stop; .Start", "Control/SMScope/AcquisitionsLeft = 1"}}},
    {"XyModeHasNoXyDiagram",
     {{"Control/SMMode/OperationMode = SCOPE_XY; .SwitchMode",
       "XY/State = ON; Diagrams/DiagramWindow[1]/Type = XY; .Width = 1280; "
       "Diagrams/DiagramWindow[0]/Width = 0"},
      {"Diagrams/Layout = SPLIT",
       "Diagrams/DiagramWindow[0]/Height = 400; Diagrams/DiagramWindow[1]/Height = 400"},
      {"XY/ShowYT = OFF",
       "Diagrams/DiagramWindow[0]/Height = 0; Diagrams/DiagramWindow[1]/Height = 800"},
      {"Control/SMMode/OperationMode = SCOPE_YT; .SwitchMode",
       "XY/State = OFF; Diagrams/DiagramWindow[0]/Height = 800; "
       "Diagrams/DiagramWindow[1]/Height = 0"}}},
    {"XyIsOnInYtMode",
     {{"Control/SMMode/OperationMode = METER; .SwitchMode; XY/State = ON",
       "Control/SMMode/OperationMode = SCOPE_XY; .ActiveMode = SCOPE_XY"},
      {"XY/State = OFF", "Control/SMMode/OperationMode = METER; .ActiveMode = METER"},
      {"Control/SMMode/OperationMode = SCOPE_XY; XY/State = OFF",
       "Control/SMMode/OperationMode = SCOPE_YT; .ActiveMode = SCOPE_YT"}}},
    {"SpectrumIsOnInAnotherModeOrLostWithIt",
     {{"Control/SMMode/OperationMode = METER; .SwitchMode; FFT/State = ON",
       "Control/SMMode/ActiveMode = SCOPE_YT; Diagrams/DiagramWindow[1]/Type = SPECTRUM; "
       ".Width = 1280"},
      {"XY/State = ON", "FFT/State = OFF; Diagrams/DiagramWindow[1]/Type = XY; .Width = 1280"},
      {"XY/State = OFF", "FFT/State = ON; Diagrams/DiagramWindow[1]/Type = SPECTRUM"},
      {"Control/SMMode/OperationMode = METER", "FFT/State = OFF; Diagrams/DiagramWindow[1]/Type = "
                                               "NONE; .Visible = OFF; ..ActiveWindow = 0"},
      {"Control/SMMode/OperationMode = SCOPE_YT", "FFT/State = ON"},
      {"Control/SMMode/OperationMode = METER; FFT/State = OFF; Control/SMMode/OperationMode = "
       "SCOPE_YT",
       "FFT/State = OFF"}}},
    {"SpectrumModeHasNoSpectrum",
     {{"Control/SMMode/OperationMode = METER; .OperationMode = FFT",
       "Control/SMMode/OperationMode = SCOPE_YT; .ActiveMode = SCOPE_YT; FFT/State = ON; "
       "Spectrum/Mode = FFT"},
      {"FFT/State = OFF; Control/SMMode/OperationMode = SPECTRUM",
       "Control/SMMode/OperationMode = SCOPE_YT; FFT/State = ON; Spectrum/Mode = SPA"}}},
    {"MaskIsTestedInAnotherMode",
     {{"Mask/Start", "Control/SMMode/OperationMode = MASKTEST_YT; .ActiveMode = MASKTEST_YT"},
      {"FFT/State = ON", "Mask/Enabled = OFF; .State = OFF"},
      {"FFT/State = OFF", "Mask/Enabled = ON; Control/SMMode/ActiveMode = MASKTEST_YT"},
      {"FFT/State = ON", "Control/SMMode/ActiveMode = SCOPE_YT"},
      {"Control/SMMode/OperationMode = MASKTEST_YT", "Mask/Enabled = ON; FFT/State = OFF"},
      {"Mask/Enabled = OFF", "Control/SMMode/OperationMode = SCOPE_YT; FFT/State = ON"}}},
    {"DiagramShowsWhatIsOff",
     {{"Zoom/Enabled = ON; Diagrams/DiagramWindow[1]/Type = ZOOM; .Visible = ON; ..ActiveWindow = "
       "1; "
       "Zoom/Enabled = OFF",
       "Diagrams/ActiveWindow = 0; .DiagramWindow[0]/Width = 1280; ..DiagramWindow[1]/Width = 0"},
      {"Zoom/Enabled = ON",
       "Diagrams/ActiveWindow = 1; .DiagramWindow[0]/Width = 0; ..DiagramWindow[1]/Width = 1280"},
      {"Diagrams/Layout = SIDE_BY_SIDE",
       "Diagrams/DiagramWindow[0]/Width = 640; Diagrams/DiagramWindow[1]/Left = 640"},
      {"Zoom/Enabled = OFF",
       "Diagrams/DiagramWindow[0]/Width = 1280; Diagrams/DiagramWindow[1]/Width = 0"}}},
    {"LayoutOfFourShowsOne",
     {{"Diagrams/Layout = QUAD",
       "Diagrams/DiagramWindow[0]/Width = 640; .Height = 400; "
       "Diagrams/DiagramWindow[1]/Left = 640; Diagrams/DiagramWindow[2]/Top = 400; "
       "Diagrams/DiagramWindow[3]/Left = 640; .Top = 400; .Visible = ON"},
      {"Diagrams/DiagramWindow[3]/Visible = OFF", "Diagrams/DiagramWindow[2]/Width = 1280"},
      {"Diagrams/Layout = SINGLE",
       "Diagrams/DiagramWindow[0]/Width = 1280; Diagrams/DiagramWindow[2]/Visible = OFF"}}},
    {"EmptyTestHasPassed",
     {{"Mask/Start; .Stop", "Mask/State = OFF; .Enabled = ON"},
      {"Mask/Start; @Mask/TestedAcquisitions = 5; @.FailedAcquisitions = 2; .Stop",
       "Mask/State = FAILED"},
      {"Mask/AllowedViolations = 2", "Mask/State = PASSED"},
      {"Mask/ClearCounts", "Mask/State = OFF"}}},
    {"TestRunsOnAStoppedScope",
     {{"Control/SMScope/Stop; Mask/Start", "Mask/State = PAUSED"},
      {"Control/SMScope/RunStop = SINGLE", "Mask/State = RUNNING"}}},
    {"SlotWithoutATimeStampBeginsIn1970",
     {{"@Logger/LoggerAttributes/NumberOfSamples = 9; Logger/LoggerSlot[1]/Store",
       "Logger/LoggerSlot[1]/Used = ON; .StartTime = 0-; .RecordedTime = 0-"},
      {"@Logger/LoggerTime[0]/TimeStamp = 1234; Logger/LoggerSlot[1]/Store",
       "Logger/LoggerSlot[1]/StartTime = 1234"}}},
};

bool IsOn(const CRuleTree& tree, const char* path)
{
    return tree.Text(path) == QLatin1String("ON");
}

void CheckModes(const CRuleTree& tree, CFindings& findings)
{
    const QString mode = tree.Text("Control/SMMode/OperationMode");
    findings.Check(IsOn(tree, "XY/State") == (mode == QLatin1String("SCOPE_XY")), "XY");
    findings.Check(IsOn(tree, "Mask/Enabled") == (mode == QLatin1String("MASKTEST_YT")), "mask");
    findings.Check(!IsOn(tree, "FFT/State") || mode == QLatin1String("SCOPE_YT"), "spectra");
    const std::map<QString, bool> isOn = {
        {QStringLiteral("YT"), !IsOn(tree, "XY/State") || IsOn(tree, "XY/ShowYT")},
        {QStringLiteral("XY"), IsOn(tree, "XY/State")},
        {QStringLiteral("FFT"), IsOn(tree, "FFT/State")},
        {QStringLiteral("SPECTRUM"), IsOn(tree, "FFT/State")},
        {QStringLiteral("ZOOM"), IsOn(tree, "Zoom/Enabled")},
        {QStringLiteral("LOGIC"), IsOn(tree, "Logic/Enabled")},
        {QStringLiteral("PROTOCOL"), IsOn(tree, "SerialBus/Enabled")},
        {QStringLiteral("HISTORY"), IsOn(tree, "HistoryViewer/Enabled")}};
    for (const char index : {'0', '1', '2', '3'})
    {
        const QByteArray window = QByteArray("Diagrams/DiagramWindow[") + index + "]/";
        const auto contents = isOn.find(tree.Text(window + "Type"));
        findings.Check(tree.Number(window + "Width") == 0.0 || contents == isOn.end() ||
                           contents->second,
                       window);
    }
}

void CheckRuns(const CRuleTree& tree, CFindings& findings)
{
    CheckModes(tree, findings);
    const auto isStopped = [&tree](const char* path)
    { return tree.Text(path) == QLatin1String("STOP"); };
    findings.Check(IsOn(tree, "Logger/Recording") != isStopped("Control/SMLogger/RunStop"),
                   "recording");
    findings.Check(tree.Text("Mask/State") != QLatin1String("RUNNING") ||
                       !isStopped("Control/SMScope/RunStop"),
                   "mask test of a stopped scope");
    const QString repetition = tree.Text("Trigger/RepetitionMode");
    const bool isSingle = tree.Text("Control/SMScope/RunStop") == QLatin1String("SINGLE");
    findings.Check(isSingle || isStopped("Control/SMScope/RunStop") ||
                       repetition == QLatin1String("CONTINUOUS"),
                   "run without an end");
    findings.Check(isSingle == (tree.Number("Control/SMScope/AcquisitionsLeft") > 0.0), "left");
    findings.Check(tree.Number("Control/SMScope/SingleCount") ==
                       (repetition == QLatin1String("N_SINGLE")
                            ? tree.Number("Trigger/NumberOfAcquisitions")
                            : 1.0),
                   "number of N-single");
    const QString active = tree.Text("Control/SMMode/ActiveMode");
    const char* const machine = active == QLatin1String("METER")    ? "Control/SMMeter/RunStop"
                                : active == QLatin1String("LOGGER") ? "Control/SMLogger/RunStop"
                                                                    : "Control/SMScope/RunStop";
    findings.Check(tree.Text("Runs/CurrentRun/RunStop") == tree.Text(machine), "present run");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Runs, Sessions, testing::ValuesIn(kRunSessions), Sessions::Name);
INSTANTIATE_TEST_SUITE_P(
    Runs, Walks,
    testing::Values(t_Walk{"", "Control Logger XY Mask Diagrams FFT HistoryViewer Zoom", CheckRuns,
                           8, "Average Length is invalid"},
                    t_Walk{"", "Control Control/SMScope Trigger XY/State", CheckRuns, 4}));

TEST(Runs, SequenceLeavesTheScopeStoppedOrTheLoggerRecording)
{
    const CRuleTree tree;
    const QByteArray saved = Saved(tree.root);
    tree.DoAll("Horizontal/Scale = 1e-05; Logger/Start; Control/SMMeter/Stop");
    const auto expectRestored = [&](const char* what)
    {
        SCOPED_TRACE(what);
        EXPECT_EQ(tree.Text("Horizontal/Scale"), QStringLiteral("1e-07"));
        EXPECT_EQ(tree.Text("Control/SMScope/RunStop"), QStringLiteral("RUN"));
        EXPECT_EQ(tree.Text("Control/SMMeter/RunStop"), QStringLiteral("STOP"));
        EXPECT_EQ(tree.Text("Logger/Recording"), QStringLiteral("OFF"));
        EXPECT_EQ(tree.root->Undo(), eKW_ACC_OK);
        EXPECT_EQ(tree.Text("Horizontal/Scale"), QStringLiteral("1e-05"));
        EXPECT_EQ(tree.Text("Control/SMScope/RunStop"), QStringLiteral("RUN"));
    };
    EXPECT_EQ(RecallText(tree.root, saved), eKW_ACC_OK);
    expectRestored("recall");
    EXPECT_EQ(tree.root->RunPresetSequence(false), eKW_ACC_OK);
    expectRestored("preset");
}

TEST(Runs, FunctionThatAFileNamesAloneStaysOff)
{
    const CRuleTree tree;
    const auto name = [&tree](const char* path, const char* text)
    {
        const auto property = std::dynamic_pointer_cast<CDbPropBase>(Property(tree.root, path));
        EXPECT_EQ(RecallNaming(tree.root, *property, QLatin1String(text)), eKW_ACC_OK);
    };
    name("XY/State", "ON");
    EXPECT_EQ(tree.Text("Control/SMMode/ActiveMode"), QStringLiteral("SCOPE_XY"));
    name("Control/SMMode/OperationMode", "MASKTEST_YT");
    EXPECT_EQ(tree.Text("XY/State") + tree.Text("Mask/Enabled"), QStringLiteral("OFFON"));
    name("Control/SMMode/OperationMode", "SPECTRUM");
    EXPECT_EQ(tree.Text("FFT/State") + tree.Text("Mask/Enabled"), QStringLiteral("ONOFF"));
    EXPECT_EQ(tree.Text("Control/SMMode/ActiveMode"), QStringLiteral("SCOPE_YT"));
    EXPECT_EQ(tree.reports.List(), QStringList());
}
