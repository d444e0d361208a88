// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// 0 dBm in 50 Ω are -13.0103 dBV.
const t_Session kSpectrumSessions[] = {
    {"LevelsKeepTheirNumbersInAnotherUnit",
     {{"Spectrum/VerticalRefLevel = 13; .SpectrumMarkers/Threshold = -50; .ReferenceMarker/"
       "Magnitude = -7.25; Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical = -20; "
       "..SpectrumCursor[1]/Vertical = -26; Spectrum/MagnitudeUnit = DBV",
       "Spectrum/VerticalRefLevel.6 = -0.0103; .SpectrumMarkers/Threshold.6 = -63.0103; "
       ".Threshold.unit = LEVEL_DBV; .ReferenceMarker/Magnitude.6 = -20.2603; .Magnitude.unit = "
       "LEVEL_DBV; Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical.6 = -33.0103; "
       ".Vertical.unit = LEVEL_DBV; ..DeltaVertical.6 = -6; .DeltaVertical.unit = LEVEL_DB"},
      {"Spectrum/VerticalScaling = LINEAR",
       "Spectrum/VerticalRefLevel.6 = -0.0103; .SpectrumMarkers/Threshold.unit = LEVEL_DBV; "
       ".ReferenceMarker/Magnitude.unit = LEVEL_V; "
       "Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical.6 = 0.0223607; .Vertical.unit = "
       "LEVEL_V; ..DeltaVertical.unit = LEVEL_V"},
      {"Spectrum/MagnitudeUnit = DBM; .VerticalScaling = LOGARITHMIC",
       "Spectrum/VerticalRefLevel = 13; .SpectrumMarkers/Threshold = -50; "
       ".ReferenceMarker/Magnitude = -7.25; Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical = "
       "-20; ..SpectrumCursor[1]/Vertical = -26; ..DeltaVertical = -6"}}},
    {"VoltsComeBackWithALastDigit",
     {{"Spectrum/VerticalScaling = LINEAR; .SpectrumCursors/SpectrumCursor[0]/Vertical = 0.3; "
       "..SpectrumCursor[1]/Vertical = 0; Spectrum/VerticalScaling = LOGARITHMIC",
       "Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical.6 = 2.55273; "
       "..SpectrumCursor[1]/Vertical = -400"},
      {"Spectrum/VerticalScaling = LINEAR",
       "Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical = 0.3; ..SpectrumCursor[1]/Vertical "
       "= 0"}}},
    {"DecibelsOfAVoltAreForgotten",
     {{"+ Spectrum/SpectrumMarkers/SpectrumMarker; Spectrum/MagnitudeUnit = DBV; "
       "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
       "Spectrum/MagnitudeUnit = DBA; .SpectrumMarkers/Threshold.unit = LEVEL_DBA; "
       ".SpectrumMarker[0]/Magnitude.unit = LEVEL_DBA; "
       "Spectrum/SpectrumCursors/SpectrumCursor[1]/Vertical.unit = LEVEL_DBA"},
      {"Spectrum/VerticalScaling = LINEAR",
       "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude.unit = LEVEL_A; .DeltaMagnitude.unit "
       "= LEVEL_A"},
      {"Vertical/Channel[0]/ProbeType = VOLTAGE_1_TO_1; Spectrum/VerticalScaling = LOGARITHMIC",
       "Spectrum/MagnitudeUnit = DBV; .SpectrumMarkers/SpectrumMarker[0]/Magnitude.unit = "
       "LEVEL_DBV; .DeltaMagnitude.unit = LEVEL_DB"}}},
    {"MarkerReadsWhatIsGone",
     {{"+ Spectrum/SpectrumMarkers/SpectrumMarker",
       "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = 0-"},
      {"@Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = -30; ..ReferenceMarker/Enabled = "
       "ON; Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1",
       "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = -30; .DeltaMagnitude = -30"},
      {"Spectrum/SpectrumMarkers/SpectrumMarker[0]/Frequency = 1e8",
       "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = -30-; .DeltaMagnitude = -30-; "
       ".DeltaFrequency = -212500000"},
      {"@Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = -31; Spectrum/Impedance = 75",
       "Spectrum/SpectrumMarkers/SpectrumMarker[0]/Magnitude = -31-"}}},
    {"SpectraOfTwoInputsAreAveraged",
     {{"@FFT/AveragesDone = 5; @Spectrum/ClippingMaxHold = ON; Spectrum/Source = C2",
       "FFT/AveragesDone = 0; Spectrum/ClippingMaxHold = OFF"},
      {"@FFT/AveragesDone = 5; Vertical/Channel[0]/ProbeType = VOLTAGE_1_TO_1",
       "FFT/AveragesDone = 5"},
      {"Vertical/Channel[1]/ProbeType = VOLTAGE_1_TO_1", "FFT/AveragesDone = 0"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Spectrum, Sessions, testing::ValuesIn(kSpectrumSessions), Sessions::Name);
