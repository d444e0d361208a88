// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
constexpr char kLevels[] =
    "Trigger/Source = C2; Vertical/Channel[1]/Levels/RuntTriggerLevelRange[0]/UpperLevel = 2; "
    "Vertical/Channel[1]/Levels/WindowTriggerLevelRange[0]/UpperLevel = 3; "
    "Vertical/Channel[1]/Levels/SlewRateTriggerLevelRange[0]/UpperLevel = 2.5";

const t_Rule kTriggerRules[] = {
    {"SourceIsOff", "Trigger/Source = C2", "Vertical/Channel[1]/Enabled = OFF",
     "Trigger/Source = C1"},
    {"DigitalSourceWithoutDigitalChannels", "", "Trigger/Source = D3", ".Source = C1",
     eKW_ACC_NOT_ENABLED},
    {"ConditionStaysAfterReset",
     "Trigger/Type = WIDTH; .Source = C3; .WidthTriggerSettings/TimeRange[0]/Range = SHORTER; "
     "Trigger/SerialPatternTriggerSettings/Pattern = 01",
     "Trigger/ResetSettings",
     ".Type = EDGE; .Source = C1; .WidthTriggerSettings/TimeRange[0]/Range = LONGER; "
     "Trigger/SerialPatternTriggerSettings/Pattern = XXXXXXXX"},
    {"TimesAreCrossed", "", "Trigger/GlitchTriggerSettings/TimeRange[0]/LowerLimit = 1e-05",
     ".UpperLimit = 1e-05"},
    {"HoldOffTimesAreCrossed", "", "Trigger/TriggerHoldOff/RandomMaximumTime = 1e-04",
     ".RandomMinimumTime = 1e-04"},
    {"AutoTriggersWithinAnAcquisition", "", "Horizontal/Scale = 0.1",
     "Trigger/TimeoutBasedEventGeneration/Timeout = 1"},
    {"UserTimeoutIsNotUsed", "Trigger/TimeoutBasedEventGeneration/UserTimeout = 2",
     ".TimeoutDefinition = USER", ".Timeout = 2"},
    {"PatternIsNotCleared",
     "Trigger/PatternTriggerSettings/ChannelState[2]/State = HIGH; ..ChannelState[11]/State = LOW",
     "..ClearPattern", ".ChannelState[2]/State = DONT_CARE; ..ChannelState[11]/State = DONT_CARE"},
    {"BitsAreNotClearedOrGetLost", "Trigger/SerialPatternTriggerSettings/Pattern = 0110",
     ".ClearPattern", ".Pattern = XXXX"},
    {"RecallLosesADigitalClock",
     "Logic/Enabled = ON; Trigger/DataToClockTriggerSettings/ClockSource = D1",
     ".DataSource[0]/Source = D2", "Trigger/DataToClockTriggerSettings/ClockSource = D1"},
    {"DataLineIsTheClock", "", "Trigger/DataToClockTriggerSettings/ClockSource = C2",
     ".DataSource[0]/Source = C1"},
    {"NewDataLineIsTheClock", "+ Trigger/DataToClockTriggerSettings/DataSource",
     ".ClockSource = C2", ".DataSource[1]/Source = C1"},
    {"HighDefinitionIsInterlaced",
     "Trigger/TvTriggerSettings/LineField = FIELD_2; .LineNumber = 312; .Polarity = POSITIVE",
     ".Standard = HD_720P_50",
     ".ScanMode = PROGRESSIVE; .LineField = FRAME; .SyncPulseType = TRILEVEL; .Polarity = "
     "NEGATIVE; .CombinedPolaritySyncPulseType = TRILEVEL_NEGATIVE; .LinesPerFrame = 750; "
     ".LineNumber = 312"},
    {"LineIsBelowThePicture", "Trigger/TvTriggerSettings/LineNumber = 625", ".Standard = NTSC",
     ".LineNumber = 525"},
    {"FieldHasTheLinesOfTheFrame", "Trigger/TvTriggerSettings/LineNumber = 600",
     ".LineField = FIELD_1", ".LineNumber = 313"},
    {"InterlacedStandardIsSegmented", "", "Trigger/TvTriggerSettings/ScanMode = SEGMENTED",
     ".ScanMode = INTERLACED", eKW_ACC_NOT_ENABLED},
    {"PolarityIsNotCombined", "", "Trigger/TvTriggerSettings/Polarity = POSITIVE",
     ".CombinedPolaritySyncPulseType = BILEVEL_POSITIVE"},
    {"DisplayShowsAnotherLevel", "Trigger/Source = C2",
     "Vertical/Channel[1]/Levels/EdgeTriggerLevel[0]/Level = 1.5",
     "Trigger/CurrentTriggerThresholdLevels/UpperLevel = 1.5; .LowerLevel = 1.5; .NumberOfLevels = "
     "1; .Source = C2"},
    {"TwoLevelsAreShownAsOne", kLevels, "Trigger/Type = WINDOW",
     ".CurrentTriggerThresholdLevels/UpperLevel = 3; .LowerLevel = -1; .NumberOfLevels = 2"},
    {"RuntHasTheLevelsOfTheWindow", kLevels, "Trigger/Type = RUNT",
     ".CurrentTriggerThresholdLevels/UpperLevel = 2; .LowerLevel = -1; .NumberOfLevels = 2"},
    {"SlewRateHasTheLevelsOfTheWindow", kLevels, "Trigger/Type = SLEWRATE",
     ".CurrentTriggerThresholdLevels/UpperLevel = 2.5; .LowerLevel = -1; .NumberOfLevels = 2"},
    {"BusHasALevel", "SerialBus/Enabled = ON", "Trigger/Type = PROTOCOL",
     ".CurrentTriggerThresholdLevels/Source = NONE; .NumberOfLevels = 0; .UpperLevel = 0-"},
    {"BusTriggerHasNoBus", "", "Trigger/Type = PROTOCOL", ".Type = EDGE", eKW_ACC_NOT_ENABLED},
    {"BusGoesAndItsTriggerStays", "SerialBus/Enabled = ON; Trigger/Type = PROTOCOL",
     "SerialBus/Enabled = OFF", "Trigger/Type = EDGE"},
    {"WindowIsLookedForInBits", "Logic/Enabled = ON; Trigger/Type = WINDOW", ".Source = D3",
     ".Source = C1", eKW_ACC_NOT_ENABLED},
    {"SlewRateIgnoresItsTimes", "",
     "Trigger/SlewRateTriggerSettings/TimeRange[0]/LowerLimit = 5e-07",
     "Trigger/SlewRateTriggerSettings/UpperSlewRate = 4e+06; .LowerSlewRate = 1e+06"},
    {"ExternalLevelIgnoresTheProbe",
     "Trigger/ExternalTriggerSettings/Attenuation = 10; Trigger/ExternalTriggerLevel/Level = 30",
     "Trigger/ExternalTriggerSettings/Attenuation = 1",
     "Trigger/ExternalTriggerLevel/Level = 5; .LevelSet = USER"},
};

void CheckTrigger(const CRuleTree& tree, CFindings& findings)
{
    for (const char* type :
         {"Glitch", "Width", "Interval", "Pattern", "Runt", "SlewRate", "Window"})
    {
        const QByteArray range =
            QByteArray("Trigger/") + type + QByteArray("TriggerSettings/TimeRange[0]/");
        findings.Check(tree.Number(range + "LowerLimit") <= tree.Number(range + "UpperLimit"),
                       range);
    }
    findings.Check(tree.Text("Trigger/DataToClockTriggerSettings/ClockSource") !=
                       tree.Text("Trigger/DataToClockTriggerSettings/DataSource[0]/Source"),
                   "data line is the clock");
    const QString type = tree.Text("Trigger/Type");
    findings.Check(!QStringLiteral("RUNT SLEWRATE WINDOW VIDEO").contains(type) ||
                       !tree.Text("Trigger/Source").startsWith(u'D'),
                   "levels of a bit");
    findings.Check(type != QLatin1String("PROTOCOL") ||
                       tree.Text("SerialBus/Enabled") == QLatin1String("ON"),
                   "trigger without its bus");
    findings.Check(tree.Text("Trigger/Protocol") == tree.Text("SerialBus/Protocol"), "two buses");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Trigger, Rules, testing::ValuesIn(kTriggerRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Trigger, Walks,
                         testing::Values(t_Walk{"Logic/Enabled = ON",
                                                "Trigger SerialBus Vertical/Channel[0]",
                                                CheckTrigger, 5}));
