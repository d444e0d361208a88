// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// Channels, and all that uses them.
const t_Session kSourceSessions[] = {
    {"HiddenChannelIsForgotten",
     {{"Measurements/Measurement[0]/Source = C2; .SecondSource = C2; Trigger/Source = C2; "
       "Cursor/Source = C2; XY/SourceX = C2; .SourceY1 = C1; .SourceY2 = C3; "
       "Mathematics/SourceA = C2; Mask/MaskSettings/Source = C2; Spectrum/Source = C2; "
       "Harmonic/FundamentalSource = C2; SerialBus/I2CBusSettings/DataSource = C2; "
       "Vertical/ReferenceCurve/Source = C2; Counter/CounterChannel[0]/Source = C2; "
       "Vertical/Channel[1]/Enabled = OFF",
       "Measurements/Measurement[0]/Source = C1; .SecondSource = C1; Trigger/Source = C1; "
       "Cursor/Source = C1; XY/SourceX = C4; .SourceY1 = C1; .SourceY2 = C3; "
       "Mathematics/SourceA = C1; Mask/MaskSettings/Source = C1; Spectrum/Source = C1; "
       "FFT/Source = FFT1; Harmonic/FundamentalSource = C1; "
       "SerialBus/I2CBusSettings/ClockSource = C1; .DataSource = C3; "
       "Vertical/ReferenceCurve/Source = C1; Counter/CounterChannel[0]/Source = C1"},
      {"Vertical/Channel[1]/Enabled = ON",
       "Measurements/Measurement[0]/Source = C2; .SecondSource = C2; Trigger/Source = C2; "
       "Cursor/Source = C2; XY/SourceX = C2; .SourceY1 = C1; .SourceY2 = C3; "
       "Mathematics/SourceA = C2; Mask/MaskSettings/Source = C2; Spectrum/Source = C2; "
       "FFT/Source = FFT2; Harmonic/FundamentalSource = C2; "
       "SerialBus/I2CBusSettings/ClockSource = C1; .DataSource = C2; "
       "Vertical/ReferenceCurve/Source = C2; Counter/CounterChannel[0]/Source = C2"}}},
    {"LastAnalogChannelTakesTheQuantityWithIt",
     {{"Logic/Enabled = ON; Measurements/Measurement[0]/Source = C2; .Type = PEAK_TO_PEAK; "
       "Vertical/Channel[0]/Enabled = OFF; ..Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; "
       "..Channel[3]/Enabled = OFF",
       "Measurements/Measurement[0]/Source = D0; .Type = FREQUENCY; Spectrum/Source = C4; "
       "FFT/Source = FFT4!"},
      {"Vertical/Channel[1]/Enabled = ON",
       "Measurements/Measurement[0]/Source = C2; .Type = PEAK_TO_PEAK; Spectrum/Source = C2"}}},
    {"LineOfABusLosesItsChannelToAnother",
     {{"SerialBus/SPIBusSettings/ClockSource = C2; .MosiSource = C1; Vertical/Channel[0]/Enabled = "
       "OFF",
       "SerialBus/SPIBusSettings/ClockSource = C2; .SelectSource = C3; .MosiSource = C4"},
      {"SerialBus/SPIBusSettings/SelectSource = C4",
       "SerialBus/SPIBusSettings/MosiSource = C3; .ClockSource = C2"},
      {"Vertical/Channel[0]/Enabled = ON",
       "SerialBus/SPIBusSettings/MosiSource = C1; .SelectSource = C4; .ClockSource = C2"}}},
    {"EnabledChannelIsNotAcquired",
     {{"Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF; "
       "Horizontal/ZELMode = ZEL_C",
       "Horizontal/SampleRate = 5e+09; Vertical/AnalogSignalStreams/DroppedChannels = "},
      {"Vertical/Channel[2]/Enabled = ON",
       "Horizontal/ZELMode = ZEL_B; .SampleRate = 2.5e+09; "
       "Vertical/AnalogChannelMapping[2]/AssociatedSignalStream = S2; "
       "..AnalogSignalStreams/DroppedChannels = ZEL_C: C3"},
      {"Vertical/Channel[1]/Enabled = ON",
       "Horizontal/ZELMode = ZEL_A; .ZELMode.values = ZEL_A; "
       "Vertical/AnalogChannelMapping[1]/AssociatedSignalStream = S2; "
       "..AnalogSignalStreams/DroppedChannels = ZEL_B: C2, ZEL_C: C2 C3"},
      {"Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF",
       "Horizontal/ZELMode = ZEL_C; .SampleRate = 5e+09"}}},
    {"IdleSpectrumSlowsTheScope",
     {{"Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF; "
       "Horizontal/ZELMode = ZEL_C; Spectrum/HorizontalSpan = 1e6",
       "Horizontal/ZELMode = ZEL_C; DDC/State = OFF; FFT/SampleFrequency = 1562500"},
      {"FFT/State = ON",
       "Horizontal/ZELMode = ZEL_A; DDC/State = ON; FFT/SampleFrequency = 1562500"},
      {"FFT/State = OFF", "Horizontal/ZELMode = ZEL_C; DDC/State = OFF"}}},
    {"EmptyReferenceCurveIsASource",
     {{"Measurements/Measurement[0]/Source = C1",
       "Measurements/Measurement[0]/Source.values = C1|C2|C3|C4"},
      {"@Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength = 1000; ..Enabled = ON; "
       "Measurements/Measurement[0]/Source = R1",
       "Measurements/Measurement[0]/Source = R1"},
      {"Vertical/ReferenceCurve/Clear",
       "Vertical/ReferenceCurve/Enabled = OFF; Measurements/Measurement[0]/Source = C1"}}},
    {"MathematicsOfHiddenChannelsIsValid",
     {{"Mathematics/Enabled = ON; .UseExpression = ON; .Expression = C1*C3; "
       "Measurements/Measurement[0]/Source = M1; Cursor/Source = M1",
       "Mathematics/Unit = LEVEL_V_SQUARE"},
      {"Vertical/Channel[2]/Enabled = OFF",
       "Mathematics/Unit = LEVEL_V_SQUARE-; Measurements/Measurement[0]/Source = C1; "
       "Cursor/Source = C1"},
      {"Vertical/Channel[2]/Enabled = ON",
       "Mathematics/Unit = LEVEL_V_SQUARE; Measurements/Measurement[0]/Source = M1; "
       "Cursor/Source = M1"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Sources, Sessions, testing::ValuesIn(kSourceSessions), Sessions::Name);
