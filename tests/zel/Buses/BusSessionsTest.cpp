// SPDX-License-Identifier: MIT
#include "zel/RuleTree.h"

namespace
{
// What a bus makes of its labels, and labels of its frames. A new label has the number 1.
const t_Session kBusSessions[] = {
    {"LabelOfOneBusIsThatOfAnother",
     {{"+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
       "+ SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem; "
       "+ SerialBus/I2CBusSettings/LabelListSettings/SerialBusLabelItem; "
       "+ SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem",
       "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = "
       "11; .IdentifierLength.values = 11|29; .PayloadLength.max = 8; "
       "SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = "
       "6; .IdentifierLength.values = 6; .Identifier.max = 63; .PayloadLength.max = 8; "
       "SerialBus/I2CBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = "
       "7; .IdentifierLength.values = 7|10; .PayloadLength.max = 64; "
       "SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = "
       "8; .IdentifierLength.values = 0|4|8; .PayloadLength = 2"}}},
    {"SignalsAreCutForGoodWithClassicalFrames",
     {{"SerialBus/CANBusSettings/Standard = CAN_FD; + .LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/PayloadLength = 64; + .SignalTranslation; "
       ".SignalTranslation[Signal1]/StartBit = 400; .BitLength = 16",
       ""},
      {"SerialBus/CANBusSettings/Standard = CAN",
       ".LabelListSettings/SerialBusLabelItem[Label1]/PayloadLength = 8; "
       ".SignalTranslation[Signal1]/StartBit = 63; .BitLength = 1"},
      {"SerialBus/CANBusSettings/Standard = CAN_FD",
       ".LabelListSettings/SerialBusLabelItem[Label1]/PayloadLength = 64; "
       ".SignalTranslation[Signal1]/StartBit = 400; .BitLength = 16"}}},
    {"FrameHasTwoNames",
     {{"+2 SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/Name = Engine; ..SerialBusLabelItem[Label2]/Name = Brake",
       "..SerialBusLabelItem[Label1]/Enabled = ON; ..SerialBusLabelItem[Label2]/Enabled = OFF; "
       ".Enabled.values = OFF; ..NumberOfLabels = 2"},
      {".SerialBusLabelItem[Label2]/Identifier = 256", ".Enabled = ON; .Enabled.values = OFF|ON"},
      {"..SerialBusLabelItem[Label1]/IdentifierLength = 29; .Identifier = 256",
       ".Enabled = ON; ..SerialBusLabelItem[Label2]/Enabled = ON"},
      {"..SerialBusLabelItem[Label1]/IdentifierLength = 11",
       ".Enabled = OFF; ..SerialBusLabelItem[Label2]/Enabled = ON"},
      {".Enabled = OFF", "..SerialBusLabelItem[Label1]/Enabled = ON; "
                         "..SerialBusLabelItem[Label2]/Enabled.values = OFF"}}},
    {"BigEndianSignalIsCountedFromItsLastBit",
     {{"+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/PayloadLength = 2; + .SignalTranslation; "
       ".SignalTranslation[Signal1]/Endianness = BIG_ENDIAN; .StartBit = 7; .BitLength = 16",
       ".StartBit = 7; .BitLength = 16; .BitLength.max = 16; .StartBit.max = 15"},
      {".StartBit = 0", ".BitLength = 9"},
      {".StartBit = 15", ".BitLength = 8"},
      {"..PayloadLength = 8; .SignalTranslation[Signal1]/ValueType = FLOAT",
       ".StartBit = 15; .StartBit.max = 39; .BitLength = 32"}}},
    {"ConstantFrameIsShorterThanItsNibbles",
     {{"SerialBus/SENTBusSettings/PausePulse = CONSTANT_FRAME",
       ".FrameLength = 282; .FrameLength.min = 272; .FrameLength.max = 920"},
      {".DataNibbles = 8", ".FrameLength = 326; .FrameLength.max = 944"},
      {".DataNibbles = 3", ".FrameLength = 282"}}},
    {"PatternHasMoreNibblesThanTheFrame",
     {{"Trigger/SENTBusTriggerSettings/Type = FAST_DATA; "
       ".DataPatternRelation[0]/Pattern = 111100001111000011110000",
       ".Pattern = 111100001111000011110000"},
      {"SerialBus/SENTBusSettings/DataNibbles = 3",
       "Trigger/SENTBusTriggerSettings/DataPatternRelation[0]/Pattern = 000011110000"}}},
    {"SentSignalLeavesItsNibbles",
     {{"+ SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/IdentifierLength = 0; .PayloadLength = 3; "
       "+ .SignalTranslation; .SignalTranslation[Signal1]/StartBit = 12; .BitLength = 12",
       "..PayloadLength.max = 3"},
      {"...DataNibbles = 5", ".LabelListSettings/SerialBusLabelItem[Label1]/PayloadLength = 3; "
                             ".SignalTranslation[Signal1]/BitLength = 8"},
      {"SerialBus/SENTBusSettings/DataNibbles = 6",
       ".LabelListSettings/SerialBusLabelItem[Label1]/SignalTranslation[Signal1]/BitLength = 12"},
      {"..IdentifierLength = 4; ...SerialMessageFormat = SHORT",
       ".LabelListSettings/SerialBusLabelItem[Label1]/PayloadLength = 1"}}},
    {"FrameShowsBitsInPlaceOfValues",
     {{"+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/Name = Engine; .Identifier = 256; + .SignalTranslation; "
       ".SignalTranslation[Signal1]/Name = Speed; .Endianness = BIG_ENDIAN; .StartBit = 7; "
       ".BitLength = 16; .Factor = 0.25; .Unit = rpm; + SerialBus/CANBusResults/CANBusFrame; "
       "@.CANBusFrame[0]/Identifier = 256; @.Data = 000011001011001000000011",
       ".Label = Engine; .Signals = Speed = 812.5 rpm"},
      {"SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/"
       "SignalTranslation[Signal1]/Offset = 10; "
       ".Unit = 1/min; ..Name = Motor",
       "SerialBus/CANBusResults/CANBusFrame[0]/Label = Motor; .Signals = Speed = 822.5 1/min"},
      {"@.Data = 00001100", ".Label = Motor; .Signals = -"},
      {"@.Data = 0000000000000000", ".Signals = Speed = 10 1/min"},
      {"SerialBus/CANBusSettings/LabelListSettings/Enabled = OFF",
       "SerialBus/CANBusResults/CANBusFrame[0]/Label = ; .Signals = -"},
      {"SerialBus/CANBusSettings/LabelListSettings/Enabled = ON",
       "SerialBus/CANBusResults/CANBusFrame[0]/Signals = Speed = 10 1/min"},
      {"SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/IdentifierLength = "
       "29",
       "SerialBus/CANBusResults/CANBusFrame[0]/Label = ; .Signals = -"}}},
    {"GearIsANumber",
     {{"+ SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem; "
       "+ .SerialBusLabelItem[Label1]/SignalTranslation; "
       ".SignalTranslation[Signal1]/Name = Gear; .BitLength = 4; .ValueType = ENUM; "
       "+ .SignalTranslationEnumValues; + SerialBus/LINBusResults/LINBusFrame; "
       "@.LINBusFrame[0]/Data = 00000011",
       ".Signals = Gear = 3"},
      {"SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/"
       "SignalTranslation[Signal1]/SignalTranslationEnumValues[Value1]/RawValue = 3; "
       ".Label = Drive",
       "SerialBus/LINBusResults/LINBusFrame[0]/Signals = Gear = 3 (Drive)"},
      {"SerialBus/LINBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/"
       "SignalTranslation[Signal1]/ValueType = SIGNED_INT; "
       ".SignalTranslationEnumValues[Value1]/RawValue = 15; .Label = Fault; "
       "@SerialBus/LINBusResults/LINBusFrame[0]/Data = 00001111",
       ".Signals = Gear = -1 (Fault)"}}},
    {"PageThatIsNotSelectedIsMissed",
     {{"+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
       "+ .SerialBusLabelItem[Label1]/SignalTranslation; "
       ".SignalTranslation[Signal1]/Name = Mode; + ..SignalTranslation; "
       ".SignalTranslation[Signal2]/Name = Oil; .StartBit = 8; .ActiveWhen = Mode = 1-3; "
       "+ SerialBus/CANBusResults/CANBusFrame; @.CANBusFrame[0]/Data = 00000100",
       ".Signals = Mode = 4"},
      {"@.Data = 00000001", ".Signals = -"},
      {"@.Data = 00000000", ".Signals = Mode = 0"},
      {"SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/"
       "SignalTranslation[Signal2]/ActiveWhen = ",
       "SerialBus/CANBusResults/CANBusFrame[0]/Signals = -"}}},
    {"DeviceHasNoName",
     {{"+ SerialBus/I2CBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/Identifier = 72; .Name = Thermometer; "
       "+ SerialBus/I2CBusResults/I2CBusFrame; @.I2CBusFrame[0]/Address = 72",
       ".Label = Thermometer; .Signals = "},
      {"@.AddressType = 10_BIT", ".Label = ; .Signals = -"}}},
    {"FastFrameHasNoSignals",
     {{"+ SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem; "
       ".SerialBusLabelItem[Label1]/IdentifierLength = 0; .PayloadLength = 3; .Name = Sensor; "
       "+ .SignalTranslation; .SignalTranslation[Signal1]/Name = Low; .StartBit = 12; "
       ".BitLength = 12; + SerialBus/SENTBusResults/SENTBusFrame; "
       "@.SENTBusFrame[0]/Data = 000000000000000100100011",
       ".Label = Sensor; .Signals = Low = 801"},
      {"@.Type = SHORT_SERIAL", ".Label = ; .Signals = -"}}},
    {"PictureOf720LinesIsSegmented",
     {{"Trigger/TvTriggerSettings/Standard = HD_1080P_24; .ScanMode = SEGMENTED; "
       ".LineField = FIELD_2; .Mode = ODD_FIELD",
       ".ScanMode = SEGMENTED"},
      {".Standard = HD_720P_50",
       ".ScanMode = PROGRESSIVE; .ScanMode.values = PROGRESSIVE; .LineField = FRAME; "
       ".Mode = ALL_FIELDS; .Mode.values = ALL_FIELDS|ALL_LINES|LINE"},
      {".Standard = HD_1080P_30",
       ".ScanMode = SEGMENTED; .LineField = FIELD_2; .Mode = ODD_FIELD"}}},
    {"StandardHasScanModesOfAnother",
     {{"Trigger/TvTriggerSettings/Standard = NTSC", ".ScanMode.values = INTERLACED"},
      {".Standard = SECAM", ".ScanMode.values = INTERLACED"},
      {".Standard = PAL_M", ".ScanMode.values = INTERLACED"},
      {".Standard = SD_480P_60", ".ScanMode.values = PROGRESSIVE"},
      {".Standard = SD_576P_50", ".ScanMode.values = PROGRESSIVE"},
      {".Standard = HD_720P_60", ".ScanMode.values = PROGRESSIVE"},
      {".Standard = HD_1080I_50", ".ScanMode.values = INTERLACED"},
      {".Standard = HD_1080I_60", ".ScanMode.values = INTERLACED"},
      {".Standard = HD_1080P_25", ".ScanMode.values = PROGRESSIVE|SEGMENTED"},
      {".Standard = HD_1080P_50", ".ScanMode.values = PROGRESSIVE"},
      {".Standard = HD_1080P_60", ".ScanMode.values = PROGRESSIVE"},
      {".Standard = PAL", ".ScanMode.values = INTERLACED"}}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Bus, Sessions, testing::ValuesIn(kBusSessions), Sessions::Name);
