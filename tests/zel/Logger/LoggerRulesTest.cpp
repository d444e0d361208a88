// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
const t_Rule kLoggerRules[] = {
    {"RecordingLocksItsSettings", "", "Logger/Start",
     ".Recording = ON; .SampleRate = 1_PER_SEC!; .Duration = UNLIMITED!; .StartDelay = 0!; "
     ".LoggerAttributes/LoggerChannel[1]/Enabled = OFF!; .LoggerChannelSource/Source = METER!; "
     "Logger/LoggerAttributes/LoggerChannel[1]/Visible = ON; Logger/HorizontalScale = 10_S"},
    {"LockedSettingIsTaken", "Logger/Start", ".SampleRate = 1_PER_MIN", ".SampleRate = 1_PER_SEC!",
     eKW_ACC_READ_ONLY},
    {"StopUnlocks", "Logger/Start", ".Stop",
     ".Recording = OFF; .SampleRate = 1_PER_SEC; "
     ".LoggerAttributes/LoggerChannel[1]/LoggerChannelSource/Item = "},
    {"RecordingThatEndsByItselfUnlocks", "Logger/Start", "@.Recording = OFF",
     ".SampleRate = 1_PER_SEC"},
    {"StartKeepsTheOldRecording",
     "@Logger/LoggerAttributes/LoggerChannel[1]/Maximum = 5; @..NumberOfSamples = 9; "
     "@.MissedSamples = 4",
     "Logger/Start",
     ".LoggerAttributes/LoggerChannel[1]/Maximum = 5-; ..NumberOfSamples = 0; .MissedSamples = 0"},
    {"ClearLeavesResults",
     "@Logger/LoggerAttributes/LoggerChannel[1]/Actual = 5; @.LoggerCursorResults[1]/Value = 5; "
     "@..LoggerCursorResultsDelta/Mean = 5; @Logger/LoggerAttributes/RecordedTime = 100; "
     "@Logger/LoggerTime[0]/TimeStamp = 7; @Logger/MemoryUsed = 50",
     ".Clear",
     ".LoggerAttributes/LoggerChannel[1]/Actual = 5-; .LoggerCursorResults[1]/Value = 5-; "
     "..LoggerCursorResultsDelta/Mean = 5-; Logger/LoggerAttributes/RecordedTime = 100-; "
     "Logger/LoggerTime[0]/TimeStamp = 7-; Logger/MemoryUsed = 0"},
    {"WholeRecordingIsShown",
     "@Logger/LoggerAttributes/RecordedTime = 601; Logger/HorizontalPosition = 77", ".ShowAll",
     ".HorizontalScale = 2_MIN; .HorizontalPosition = 0"},
    {"RecordingThatFillsTheScreenIsShownSmaller", "@Logger/LoggerAttributes/RecordedTime = 600",
     "Logger/ShowAll", ".HorizontalScale = 1_MIN"},
    {"NothingIsShown", "", "Logger/ShowAll", ".HorizontalScale = 10_S", eKW_ACC_NOTHING_TO_ACT_ON},
    {"SlotTakesTheRecording",
     "@Logger/LoggerAttributes/NumberOfSamples = 9; @.RecordedTime = 100; @.SampleRate = 2; "
     "@Logger/LoggerTime[0]/TimeStamp = 1234",
     "Logger/LoggerSlot[2]/Store",
     ".Used = ON; .RecordedTime = 100; .SampleRate = 2; .StartTime = 1234"},
    {"NothingIsStored", "", "Logger/LoggerSlot[2]/Store", ".Used = OFF; .StartTime = 0-",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"LoadDisturbsARecording", "@Logger/LoggerSlot[2]/Used = ON; Logger/Start",
     ".LoggerSlot[2]/Load", "Logger/Recording = ON", eKW_ACC_NOT_AVAILABLE},
    {"EmptySlotIsLoaded", "", "Logger/LoggerSlot[2]/Load", "", eKW_ACC_NOTHING_TO_ACT_ON},
    {"UsedSlotIsRefused", "@Logger/LoggerSlot[2]/Used = ON", ".Load", ""},
    {"DeletedSlotKeepsItsContents",
     "@Logger/LoggerSlot[2]/Used = ON; @.Size = 99; @.RecordedTime = 9", ".Delete",
     ".Used = OFF; .Size = 0; .RecordedTime = 9-"},
    {"TopPushesTheBottom", "",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/Top = -5",
     ".Bottom = -5.01; .VerticalRange = USER"},
    {"BottomPushesTheTop", "",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/Bottom = 1",
     ".Top = 1.01; .VerticalRange = USER"},
    {"LargeEndsBecomeOne", "",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/Bottom = 1e9",
     ".Bottom = 1e+09; .Top = 1000001000"},
    {"TopReachesTheBottomsLimit", "",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/Top = -1e15",
     ".Bottom = -1e+15; .Top = -9.99999e+14", eKW_ACC_WARNING},
    {"LogarithmStartsBelowZero", "",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/VerticalScaling = "
     "LOGARITHMIC",
     ".Bottom = 1e-15; .Bottom.min = 1e-15; .Top = 1; .VerticalRange = AUTO"},
    {"LogarithmTakesNegativeEnds",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/VerticalScaling = "
     "LOGARITHMIC",
     ".Bottom = -3", ".Bottom = 1e-15", eKW_ACC_BELOW_MINIMUM},
    {"LogarithmPushesByADecade",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/VerticalScaling = "
     "LOGARITHMIC",
     ".Bottom = 4", ".Top = 40"},
    {"LinearAxisForgetsTheBottom",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelScreenLayout/VerticalScaling = "
     "LOGARITHMIC",
     ".VerticalScaling = LINEAR", ".Bottom = -1"},
    {"CurveFillsTheDiagram", "@Logger/LoggerAttributes/LoggerChannel[1]/Minimum = 3; @.Maximum = 8",
     ".FindScale", ".LoggerChannelScreenLayout/Bottom = 3; .Top = 8; .VerticalRange = USER"},
    {"CurveIsUnknown", "", "Logger/LoggerAttributes/LoggerChannel[1]/FindScale",
     ".LoggerChannelScreenLayout/VerticalRange = AUTO", eKW_ACC_NOTHING_TO_ACT_ON},
    {"ItemOfAnotherFunctionStays",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelSource/Item = Meter/MeterChannel[1]",
     ".Source = COUNTER", ".Item = "},
    {"ItemOfItsFunctionGoes",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelSource/Source = MEASUREMENT",
     ".Item = Measurements/Measurement[2]", ".Item = Measurements/Measurement[2]"},
    {"WrongItemIsTaken",
     "Logger/LoggerAttributes/LoggerChannel[1]/LoggerChannelSource/Source = HARMONIC",
     ".Item = Meter/MeterChannel[1]", ".Item = ", eKW_ACC_WARNING},
    {"CoupledLineStays", "Logger/LoggerCursor/Coupled = ON", ".X2 = 100", ".X1 = 60; .DeltaX = 40"},
    {"FreeLineFollows", "", "Logger/LoggerCursor/X2 = 100", ".X1 = 20; .DeltaX = 80"},
    {"CoupledLinesComeCloserAtTheStart", "Logger/LoggerCursor/Coupled = ON", ".X2 = 30",
     ".X1 = 0; .X2 = 40; .DeltaX = 40", eKW_ACC_WARNING},
    {"LinesMissTheScreen", "Logger/HorizontalScale = 20_S; .HorizontalPosition = 100",
     ".LoggerCursor/SetToScreen", ".X1 = 150; .X2 = 250; .DeltaX = 100"},
    {"ZoomIsNotFiner", "Logger/HorizontalScale = 1_MIN; .LoggerZoom/Scale = 30_S",
     "Logger/HorizontalScale = 5_S", ".LoggerZoom/Scale = 2_S; .Scale.values = 1_S|2_S"},
    {"FinestDiagramHasNoZoom", "", "Logger/HorizontalScale = 1_S",
     ".LoggerZoom/Scale = 1_S; .Scale.values = 1_S"},
    {"ZoomMissesTheLines", "Logger/HorizontalScale = 1_MIN", ".LoggerZoom/CoupleToCursors = ON",
     ".Position = 20; .Scale = 5_S"},
    {"ZoomStaysBehindTheLines", "Logger/HorizontalScale = 1_MIN; .LoggerZoom/CoupleToCursors = ON",
     "Logger/LoggerCursor/X1 = 300", "Logger/LoggerZoom/Position = 60; .Scale = 30_S"},
    {"ZoomStaysBehindSpreadLines",
     "Logger/HorizontalScale = 1_MIN; .LoggerZoom/CoupleToCursors = ON; Logger/LoggerCursor/X1 = "
     "300",
     ".SetToScreen", "Logger/LoggerZoom/Position = 150; .Scale = 30_S"},
    {"AutosetLeavesResultsOfBefore", "Logger/HorizontalScale = 1_MIN; .LoggerCursor/X1 = 300",
     "AutosetLogger", "Logger/LoggerCursor/X1 = 20; .DeltaX = 40; Logger/LoggerZoom/Scale.max = "},
    {"AutosetDisturbsARecording", "Logger/Duration = 1_H; Logger/Start", "AutosetLogger",
     "Logger/Duration = 1_H!", eKW_ACC_NOT_AVAILABLE},
    {"OwnPositionKeepsTheCoupling", "Logger/LoggerZoom/CoupleToCursors = ON", ".Position = 44",
     ".CoupleToCursors = OFF; .Position = 44"},
};

void CheckLogger(const CRuleTree& tree, CFindings& findings)
{
    for (const char channel : {'0', '1', '2', '3'})
    {
        const QByteArray layout = QByteArray("Logger/LoggerAttributes/LoggerChannel[") + channel +
                                  "]/LoggerChannelScreenLayout/";
        const double bottom = tree.Number(layout + "Bottom");
        const bool isLinear = tree.Text(layout + "VerticalScaling") == QLatin1String("LINEAR");
        findings.Check(bottom < tree.Number(layout + "Top") && (isLinear || bottom > 0.0), layout);
    }
    findings.Check(tree.Number("Logger/LoggerCursor/DeltaX") ==
                       tree.Number("Logger/LoggerCursor/X2") -
                           tree.Number("Logger/LoggerCursor/X1"),
                   "stale difference");
    const bool isRecording = tree.Text("Logger/Recording") == QLatin1String("ON");
    findings.Check(tree.State("Logger/Duration").endsWith(u'!') == isRecording, "duration");
    findings.Check(tree.State("Logger/LoggerZoom/Scale.values")
                       .split(u'|')
                       .contains(tree.Text("Logger/LoggerZoom/Scale")),
                   "zoom");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Logger, Rules, testing::ValuesIn(kLoggerRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Logger, Walks, testing::Values(t_Walk{"", "Logger", CheckLogger, 10}));
