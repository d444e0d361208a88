// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// What a bus makes of its labels, and labels of its frames. A new label has the number 1.
const t_Session kBusSessions[] = {
    {"PictureOf720LinesIsSegmented",
     {{"Trigger/TvTriggerSettings/Standard = HD_1080P_24; .ScanMode = SEGMENTED; "
       ".LineField = FIELD_2; .Mode = ODD_FIELD",
       "Trigger/TvTriggerSettings/ScanMode = SEGMENTED"},
      {"Trigger/TvTriggerSettings/Standard = HD_720P_50",
       "Trigger/TvTriggerSettings/ScanMode = PROGRESSIVE; .ScanMode.values = PROGRESSIVE; "
       ".LineField = FRAME; .Mode = ALL_FIELDS; .Mode.values = ALL_FIELDS|ALL_LINES|LINE"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080P_30",
       "Trigger/TvTriggerSettings/ScanMode = SEGMENTED; .LineField = FIELD_2; .Mode = ODD_FIELD"}}},
    {"StandardHasScanModesOfAnother",
     {{"Trigger/TvTriggerSettings/Standard = NTSC",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"},
      {"Trigger/TvTriggerSettings/Standard = SECAM",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"},
      {"Trigger/TvTriggerSettings/Standard = PAL_M",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"},
      {"Trigger/TvTriggerSettings/Standard = SD_480P_60",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE"},
      {"Trigger/TvTriggerSettings/Standard = SD_576P_50",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE"},
      {"Trigger/TvTriggerSettings/Standard = HD_720P_60",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080I_50",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080I_60",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080P_25",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE|SEGMENTED"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080P_50",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE"},
      {"Trigger/TvTriggerSettings/Standard = HD_1080P_60",
       "Trigger/TvTriggerSettings/ScanMode.values = PROGRESSIVE"},
      {"Trigger/TvTriggerSettings/Standard = PAL",
       "Trigger/TvTriggerSettings/ScanMode.values = INTERLACED"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Bus, Sessions, testing::ValuesIn(kBusSessions), Sessions::Name);
