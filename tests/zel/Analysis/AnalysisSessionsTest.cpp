// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// What was measured, and what is changed meanwhile.
const t_Session kAnalysisSessions[] = {
    {"VoltsBecomeAmperes",
     {{"Measurements/Measurement[0]/Source = C2; @.Actual = 2; @.Mean = 2; @.Count = 5; @.Limit = "
       "INSIDE; @Cursor/CursorMeasurements/CursorMeasurement[0]/Result = 1",
       "Measurements/Measurement[0]/Actual = 2; .Actual.unit = LEVEL_V; .LowerLimit.unit = "
       "LEVEL_V"},
      {"Vertical/Channel[1]/ProbeType = CURRENT_10_V_PER_A",
       "Measurements/Measurement[0]/Unit = LEVEL_A; .Actual = 2-; .Actual.unit = LEVEL_A; "
       ".LowerLimit.unit = LEVEL_A; .Mean = 2-; .Count = 0; .Limit = INSIDE-; "
       "Cursor/CursorMeasurements/CursorMeasurement[0]/Result = 1"},
      {"Vertical/Channel[0]/ProbeType = VOLTAGE_100_TO_1",
       "Cursor/CursorMeasurements/CursorMeasurement[0]/Result = 1-"}}},
    {"ReadingOfAHiddenChannelIsThatOfAnother",
     {{"Measurements/Measurement[0]/Source = C2; @.Actual = 3; "
       "@Cursor/CursorMeasurements/CursorMeasurement[1]/Result = 1; Vertical/Channel[1]/Enabled = "
       "OFF",
       "Measurements/Measurement[0]/Source = C1; .Actual = 3-; "
       "Cursor/CursorMeasurements/CursorMeasurement[1]/Result = 1"},
      {"Vertical/Channel[0]/Enabled = OFF",
       "Cursor/CursorMeasurements/CursorMeasurement[1]/Source = C3; .Result = 1-"},
      {"@Measurements/Measurement[0]/Actual = 3; Vertical/Channel[1]/Enabled = ON",
       "Measurements/Measurement[0]/Source = C2; .Actual = 3-"}}},
    {"StatisticsAreOfTwoStretches",
     {{"@Measurements/Measurement[2]/Maximum = 7; @.Count = 9; Measurements/GateStart = -1e-7",
       "Measurements/Measurement[2]/Maximum = 7-; .Count = 0"},
      {"@Cursor/CursorMeasurements/CursorMeasurement[1]/Result = 1; Cursor/X1 = -1e-7",
       "Cursor/CursorMeasurements/CursorMeasurement[1]/Result = 1-"}}},
    {"SumIsReadAsProduct",
     {{"Mathematics/Enabled = ON; .Type = SUBTRACT; Measurements/Measurement[0]/Source = M1; "
       "@.Actual = 3; Cursor/CursorMeasurements/CursorMeasurement[0]/Source = M1; @.Result = 3; "
       "Mathematics/Type = ADD",
       "Measurements/Measurement[0]/Actual = 3-; .Unit = LEVEL_V; "
       "Cursor/CursorMeasurements/CursorMeasurement[0]/Result = 3-"}}},
    {"LimitTestIsOfOtherLimits",
     {{"@Measurements/Measurement[0]/Actual = 2; @.Limit = OVERFLOW; .UpperLimit = 5",
       "Measurements/Measurement[0]/Actual = 2; .Limit = OVERFLOW-"}}},
    {"PowerOfTwoVoltages",
     {{"Measurements/Measurement[0]/Type = ACTIVE_POWER; @.Actual = 5; @.Count = 1",
       "Measurements/Measurement[0]/SecondSource = C2; .Unit = NOT_DEFINED; .Actual = 5-; .Count "
       "= 0"},
      {"Vertical/Channel[3]/ProbeType = CURRENT_1_V_PER_A; @Measurements/Measurement[0]/Actual = 5",
       "Measurements/Measurement[0]/SecondSource = C4; .SecondSource.values = C4; .Unit = "
       "LEVEL_W; .Actual = 5; .Actual.unit = LEVEL_W"},
      {"Measurements/Measurement[0]/Source = C4; .Type = POWER_FACTOR",
       "Measurements/Measurement[0]/SecondSource = C2; .SecondSource.values = C1|C2|C3; .Unit = "
       "NONE"},
      {"Vertical/Channel[3]/ProbeType = VOLTAGE_1_TO_1",
       "Measurements/Measurement[0]/Unit = NOT_DEFINED"}}},
    {"DigitalTraceHasLevels",
     {{"Logic/Enabled = ON; Cursor/Source = D0; .X2 = 3e-7; .SetAsReference",
       "Cursor/DeltaY = 4-; .DeltaY.unit = NOT_DEFINED; .Slope = 1e+07-; .Y1.unit = NONE; "
       ".ReferenceY = 4; .DeltaX = 5e-07"},
      {"Cursor/Coupled = ON; .Y1 = 0", "Cursor/Y2 = 2"},
      {"Cursor/Source = C1", "Cursor/DeltaY = 2; .DeltaY.unit = LEVEL_V; .Y1.unit = LEVEL_V"}}},
    {"VoltsAreSubtractedFromAmperes",
     {{"Cursor/SecondSourceEnabled = ON; Vertical/Channel[1]/ProbeType = CURRENT_1_V_PER_A",
       "Cursor/Y2.unit = LEVEL_A; .DeltaY.unit = NOT_DEFINED; .DeltaY = 4-"}}},
    {"PresetKeepsWhatWasMeasured",
     {{"@Measurements/Measurement[0]/Actual = 2; @.Count = 5; Preset",
       "Measurements/Measurement[0]/Actual = 2-; .Count = 0"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Analysis, Sessions, testing::ValuesIn(kAnalysisSessions), Sessions::Name);
