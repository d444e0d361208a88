// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// Channels, and all that uses them.
const t_Session kSourceSessions[] = {
    {"HiddenChannelLosesItsMeasurement",
     {{"Measurements/Measurement[0]/Source = C2; .Type = PEAK_TO_PEAK; "
       "Vertical/Channel[1]/Enabled = OFF",
       "Measurements/Measurement[0]/Source = C1; .Type = PEAK_TO_PEAK"},
      {"Vertical/Channel[1]/Enabled = ON", "Measurements/Measurement[0]/Source = C2"}}},
    {"LastAnalogChannelTakesTheQuantityWithIt",
     {{"Logic/Enabled = ON; Measurements/Measurement[0]/Source = C2; .Type = PEAK_TO_PEAK; "
       "Vertical/Channel[0]/Enabled = OFF; ..Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; "
       "..Channel[3]/Enabled = OFF",
       "Measurements/Measurement[0]/Source = D0; .Type = FREQUENCY"},
      {"Vertical/Channel[1]/Enabled = ON",
       "Measurements/Measurement[0]/Source = C2; .Type = PEAK_TO_PEAK"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Sources, Sessions, testing::ValuesIn(kSourceSessions), Sessions::Name);
