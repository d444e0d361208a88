// SPDX-License-Identifier: MIT
#include "RuleTree.h"

namespace
{
QString T(const char* rest)
{
    return QStringLiteral("Trigger/") + QString::fromLatin1(rest);
}

QString Levels(const char* rest)
{
    return QStringLiteral("Vertical/Channel[1]/Levels/") + QString::fromLatin1(rest);
}

QString Of(const char* text)
{
    return QString::fromLatin1(text);
}

std::vector<t_RuleCase> Cases()
{
    return {
        {"SourceIsOff",
         {T("Source = C2")},
         Of("Vertical/Channel[1]/Enabled = OFF"),
         {T("Source = C1")}},
        {"DigitalSourceWithoutDigitalChannels",
         {},
         T("Source = D3"),
         {T("Source = C1")},
         eKW_ACC_NOT_ENABLED},
        {"ConditionStaysAfterReset",
         {T("Type = WIDTH"), T("Source = C3"),
          T("WidthTriggerSettings/TimeRange[0]/Range = SHORTER"),
          T("SerialPatternTriggerSettings/Pattern = 01")},
         T("ResetSettings"),
         {T("Type = EDGE"), T("Source = C1"), T("WidthTriggerSettings/TimeRange[0]/Range = LONGER"),
          T("SerialPatternTriggerSettings/Pattern = XXXXXXXX")}},
        {"TimesAreCrossed",
         {},
         T("GlitchTriggerSettings/TimeRange[0]/LowerLimit = 1e-05"),
         {T("GlitchTriggerSettings/TimeRange[0]/UpperLimit = 1e-05")}},
        {"HoldOffTimesAreCrossed",
         {},
         T("TriggerHoldOff/RandomMaximumTime = 1e-04"),
         {T("TriggerHoldOff/RandomMinimumTime = 1e-04")}},
        {"AutoTriggersWithinAnAcquisition",
         {},
         Of("Horizontal/Scale = 0.1"),
         {T("TimeoutBasedEventGeneration/Timeout = 1")}},
        {"UserTimeoutIsNotUsed",
         {T("TimeoutBasedEventGeneration/UserTimeout = 2")},
         T("TimeoutBasedEventGeneration/TimeoutDefinition = USER"),
         {T("TimeoutBasedEventGeneration/Timeout = 2")}},
        {"PatternIsNotCleared",
         {T("PatternTriggerSettings/ChannelState[2]/State = HIGH"),
          T("PatternTriggerSettings/ChannelState[11]/State = LOW")},
         T("PatternTriggerSettings/ClearPattern"),
         {T("PatternTriggerSettings/ChannelState[2]/State = DONT_CARE"),
          T("PatternTriggerSettings/ChannelState[11]/State = DONT_CARE")}},
        {"BitsAreNotClearedOrGetLost",
         {T("SerialPatternTriggerSettings/Pattern = 0110")},
         T("SerialPatternTriggerSettings/ClearPattern"),
         {T("SerialPatternTriggerSettings/Pattern = XXXX")}},
        {"RecallLosesADigitalClock",
         {Of("Logic/Enabled = ON"), T("DataToClockTriggerSettings/ClockSource = D1")},
         T("DataToClockTriggerSettings/DataSource[0]/Source = D2"),
         {T("DataToClockTriggerSettings/ClockSource = D1")}},
        {"DataLineIsTheClock",
         {},
         T("DataToClockTriggerSettings/ClockSource = C2"),
         {T("DataToClockTriggerSettings/DataSource[0]/Source = C1")}},
        {"NewDataLineIsTheClock",
         {Of("+ Trigger/DataToClockTriggerSettings/DataSource")},
         T("DataToClockTriggerSettings/ClockSource = C2"),
         {T("DataToClockTriggerSettings/DataSource[1]/Source = C1")}},
        {"HighDefinitionIsInterlaced",
         {T("TvTriggerSettings/LineField = FIELD_2"), T("TvTriggerSettings/LineNumber = 312"),
          T("TvTriggerSettings/Polarity = POSITIVE")},
         T("TvTriggerSettings/Standard = HD_720P_50"),
         {T("TvTriggerSettings/ScanMode = PROGRESSIVE"), T("TvTriggerSettings/LineField = FRAME"),
          T("TvTriggerSettings/SyncPulseType = TRILEVEL"),
          T("TvTriggerSettings/Polarity = NEGATIVE"),
          T("TvTriggerSettings/CombinedPolaritySyncPulseType = TRILEVEL_NEGATIVE"),
          T("TvTriggerSettings/LinesPerFrame = 750"), T("TvTriggerSettings/LineNumber = 312")}},
        {"LineIsBelowThePicture",
         {T("TvTriggerSettings/LineNumber = 625")},
         T("TvTriggerSettings/Standard = NTSC"),
         {T("TvTriggerSettings/LineNumber = 525")}},
        {"FieldHasTheLinesOfTheFrame",
         {T("TvTriggerSettings/LineNumber = 600")},
         T("TvTriggerSettings/LineField = FIELD_1"),
         {T("TvTriggerSettings/LineNumber = 313")}},
        {"InterlacedStandardIsSegmented",
         {},
         T("TvTriggerSettings/ScanMode = SEGMENTED"),
         {T("TvTriggerSettings/ScanMode = INTERLACED")},
         eKW_ACC_NOT_ENABLED},
        {"PolarityIsNotCombined",
         {},
         T("TvTriggerSettings/Polarity = POSITIVE"),
         {T("TvTriggerSettings/CombinedPolaritySyncPulseType = BILEVEL_POSITIVE")}},
        {"DisplayShowsAnotherLevel",
         {T("Source = C2")},
         Levels("EdgeTriggerLevel[0]/Level = 1.5"),
         {T("CurrentTriggerThresholdLevels/UpperLevel = 1.5"),
          T("CurrentTriggerThresholdLevels/LowerLevel = 1.5"),
          T("CurrentTriggerThresholdLevels/NumberOfLevels = 1"),
          T("CurrentTriggerThresholdLevels/Source = C2")}},
        {"TwoLevelsAreShownAsOne",
         {T("Source = C2"), Levels("WindowTriggerLevelRange[0]/UpperLevel = 3")},
         T("Type = WINDOW"),
         {T("CurrentTriggerThresholdLevels/UpperLevel = 3"),
          T("CurrentTriggerThresholdLevels/LowerLevel = -1"),
          T("CurrentTriggerThresholdLevels/NumberOfLevels = 2")}},
        {"BusHasALevel",
         {},
         T("Type = PROTOCOL"),
         {T("CurrentTriggerThresholdLevels/Source = NONE"),
          T("CurrentTriggerThresholdLevels/NumberOfLevels = 0"),
          T("CurrentTriggerThresholdLevels/UpperLevel = 0-")}},
        {"SlewRateIgnoresItsTimes",
         {},
         T("SlewRateTriggerSettings/TimeRange[0]/LowerLimit = 5e-07"),
         {T("SlewRateTriggerSettings/UpperSlewRate = 4e+06"),
          T("SlewRateTriggerSettings/LowerSlewRate = 1e+06")}},
        {"ExternalLevelIgnoresTheProbe",
         {T("ExternalTriggerSettings/Attenuation = 10"), T("ExternalTriggerLevel/Level = 30")},
         T("ExternalTriggerSettings/Attenuation = 1"),
         {T("ExternalTriggerLevel/Level = 5"), T("ExternalTriggerLevel/LevelSet = USER")}},
    };
}
} // namespace

class TriggerRules : public testing::TestWithParam<t_RuleCase>
{
};

TEST_P(TriggerRules, Coupling)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Trigger, TriggerRules, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(TriggerWalk, SomeOrderOfWritesBreaksACouplingOrIsNotUndone)
{
    const auto violations = [](const CRuleTree& tree)
    {
        QStringList wrong;
        for (const char* type :
             {"Glitch", "Width", "Interval", "Pattern", "Runt", "SlewRate", "Window"})
        {
            const QString range = T(type) + QLatin1String("TriggerSettings/TimeRange[0]/");
            if (tree.Number(range + QLatin1String("LowerLimit")) >
                tree.Number(range + QLatin1String("UpperLimit")))
            {
                wrong.append(range);
            }
        }
        if (tree.Text(T("DataToClockTriggerSettings/ClockSource")) ==
            tree.Text(T("DataToClockTriggerSettings/DataSource[0]/Source")))
        {
            wrong.append(Of("data line is the clock"));
        }
        return wrong;
    };
    for (const UINT32 seed : {1U, 2U, 3U, 4U, 5U})
    {
        CheckWalk(seed, {}, {Of("Trigger"), Of("Vertical/Channel[0]")}, violations);
    }
}
