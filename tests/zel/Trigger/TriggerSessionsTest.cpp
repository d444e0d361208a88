// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
const t_Session kTriggerSessions[] = {
    {"RuntIsLookedForInBits",
     {{"Logic/Enabled = ON; Trigger/Source = D3; .Type = RUNT",
       "Trigger/Source = C1; .Source.values = C1|C2|C3|C4; .CurrentTriggerThresholdLevels/Source = "
       "C1; .NumberOfLevels = 2"},
      {"Trigger/Type = WINDOW; .Type = VIDEO", "Trigger/Source = C1"},
      {"Trigger/Type = WIDTH", "Trigger/Source = D3; .CurrentTriggerThresholdLevels/Source = NONE"},
      {"Trigger/Type = SLEWRATE; .Source = C2; .Type = EDGE", "Trigger/Source = C2"}}},
    {"RuntWithoutAnalogChannelsHasABit",
     {{"Logic/Enabled = ON; Trigger/Source = D3; Vertical/Channel[0]/Enabled = OFF; "
       "..Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF; ..Channel[3]/Enabled = OFF; "
       "Trigger/Type = RUNT",
       "Trigger/Source = NONE; .CurrentTriggerThresholdLevels/NumberOfLevels = 0"},
      {"Vertical/Channel[2]/Enabled = ON", "Trigger/Source = C3"},
      {"Trigger/Type = EDGE", "Trigger/Source = D3"}}},
    {"BusTriggerOutlivesItsBus",
     {{"SerialBus/Enabled = ON; .Protocol = CAN; Trigger/Type = PROTOCOL",
       "Trigger/Type = PROTOCOL; .Protocol = CAN"},
      {"SerialBus/Enabled = OFF",
       "Trigger/Type = EDGE; .CurrentTriggerThresholdLevels/Source = C1"},
      {"SerialBus/Enabled = ON", "Trigger/Type = PROTOCOL; .CurrentTriggerThresholdLevels/Source = "
                                 "NONE"},
      {"SerialBus/Enabled = OFF; Trigger/Type = GLITCH; SerialBus/Enabled = ON",
       "Trigger/Type = GLITCH"}}},
    {"TriggerWaitsForAnotherBusThanIsDecoded",
     {{"SerialBus/Enabled = ON; Trigger/Type = PROTOCOL; .Protocol = LIN",
       "SerialBus/Protocol = LIN; SerialBus/TrackInTable/SelectedIndex = -1"},
      {"SerialBus/Protocol = UART", "Trigger/Protocol = UART"},
      {"Trigger/ResetSettings", "Trigger/Type = EDGE; .Protocol = UART; SerialBus/Protocol = "
                                "UART"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Trigger, Sessions, testing::ValuesIn(kTriggerSessions), Sessions::Name);
