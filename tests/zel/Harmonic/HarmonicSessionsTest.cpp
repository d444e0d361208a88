// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
#define CHANNEL "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/"
#define RAW "Harmonic/HarmonicRawResults/HarmonicChannelRawResult[0]/"

const char kAnalysed[] =
    "+ " CHANNEL "HarmonicMagnitudeUIResult; @" CHANNEL "HarmonicMagnitudeUIResult[0]/Magnitude = "
    "4; @.Maximum = 5; @" CHANNEL "Thd = 7; @.HarmonicChannelStatusHistory/NumberOfAnalyses = 9; "
    "+ " RAW "HarmonicMagnitudeRawResult; @" RAW "HarmonicMagnitudeRawResult[0]/Magnitude = 2; "
    "@Harmonic/HarmonicSelected[0]/Magnitude = 4; @Harmonic/HarmonicUIResults/AveragesDone = 3";

const t_Session kHarmonicSessions[] = {
    {"HarmonicsOfAVoltageAreAmperes",
     {{kAnalysed,
       CHANNEL "HarmonicMagnitudeUIResult[0]/Magnitude = 4; .Magnitude.unit = COUNT_PCT; " RAW
               "HarmonicMagnitudeRawResult[0]/Magnitude.unit = LEVEL_V; "
               "Harmonic/HarmonicSelected[0]/Magnitude = 4"},
      {"Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A", CHANNEL "Thd = 7"},
      {"Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A", CHANNEL
       "Thd = 7-; .Unit = LEVEL_A; .Rms.unit = LEVEL_A; .HarmonicMagnitudeUIResult[0]/"
       "Maximum = 5-; " RAW "Unit = LEVEL_A; .HarmonicMagnitudeRawResult[0]/Magnitude = 2-; "
       ".Magnitude.unit = LEVEL_A; Harmonic/HarmonicSelected[0]/Magnitude = 4-; "
       "Harmonic/HarmonicUIResults/AveragesDone = 0"},
      {"Harmonic/ScaleSelection = ABSOLUTE",
       CHANNEL "HarmonicMagnitudeUIResult[0]/Magnitude.unit = LEVEL_A; "
               "Harmonic/HarmonicSelected[0]/LimitValue.unit = LEVEL_A; "
               "Harmonic/VerticalMaximum.unit = LEVEL_A"}}},
    {"PercentAreShownAsDecibels",
     {{kAnalysed, ""},
      {"Harmonic/ScaleSelection = DB_FUNDAMENTAL",
       CHANNEL "HarmonicMagnitudeUIResult[0]/Magnitude = 4-; .Magnitude.unit = LEVEL_DB; "
               "Harmonic/HarmonicUIResults/Scale = DB_FUNDAMENTAL; .AveragesDone = 0; " RAW
               "HarmonicMagnitudeRawResult[0]/Magnitude = 2"}}},
    {"HiddenChannelIsStillAnalysed",
     {{kAnalysed, ""},
      {"Vertical/Channel[1]/Enabled = OFF", CHANNEL "Thd = 7"},
      {"Vertical/Channel[0]/Enabled = OFF",
       CHANNEL "Thd = 7-; Harmonic/HarmonicSelected[0]/Magnitude = 4-"}}},
    {"FundamentalIsAnother",
     {{kAnalysed, ""},
      {"Harmonic/FundamentalSource = C2",
       RAW "HarmonicMagnitudeRawResult[0]/Magnitude = 2-; " CHANNEL
           "HarmonicChannelStatusHistory/NumberOfAnalyses = 0"}}},
    {"CurrentLimitsAreAppliedToAVoltage",
     {{"Harmonic/HarmonicStandard/Standard = EN61000_3_2_CLASS_A; "
       "@Harmonic/HarmonicSelected[0]/LimitValue = 2.3; @.Limit = OVERFLOW; "
       "@Harmonic/HarmonicUIResults/TestPassed = ON; @" CHANNEL
       "HarmonicChannelStatusCurrent/Passed = ON",
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/Unit = LEVEL_A; "
       "Harmonic/HarmonicSelected[0]/LimitValue = 2.3-; .Limit = OVERFLOW-; "
       "Harmonic/HarmonicUIResults/TestPassed = ON-; " CHANNEL
       "HarmonicChannelStatusCurrent/Passed = ON-"},
      {"Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A; "
       "@Harmonic/HarmonicSelected[0]/LimitValue = 2.3; @Harmonic/HarmonicUIResults/TestPassed = "
       "ON; @" CHANNEL "Thd = 4",
       "Harmonic/HarmonicSelected[0]/LimitValue = 2.3; Harmonic/HarmonicUIResults/TestPassed = "
       "ON"},
      {"Harmonic/HarmonicStandard/Standard = NONE; @Harmonic/HarmonicSelected[0]/Limit = INSIDE",
       "Harmonic/HarmonicSelected[0]/LimitValue = 2.3-; .Limit = INSIDE-; "
       "Harmonic/HarmonicUIResults/TestPassed = ON-; " CHANNEL "Thd = 4; "
       "Harmonic/HarmonicStandard/HarmonicLimitCurrent/Unit = NOT_DEFINED"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Harmonic, Sessions, testing::ValuesIn(kHarmonicSessions), Sessions::Name);
