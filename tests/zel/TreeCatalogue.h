// SPDX-License-Identifier: MIT
#pragma once

/** The catalogue of groups under the root, in order, children in brackets: [a] an array, [m] a map;
    what stands below an array or map is in each of its items. Levels, TimeRange and the label list
    stand under several parents. */
inline constexpr const char* kTreeCatalogue[] = {
    "Control(SMMode SMLogger SMMeter SMScope SMComplexSequence)",
    "Setup(SystemConstants SetupDateTime Display(UserInterfaceLanguage[m] "
    "UserInterfaceInfoIcons) BgDetection(FrontEndController[a] PowerController "
    "MultimeterController Mainboard ServiceI2CAccess) Selftest(SelftestDevice[a]) "
    "HwConfig(AsarSettings BatteryAndPower DRC RelativeHysteresisSettingsForBandwidth[a] "
    "PartialReconfiguration) Selfalignment(SelfalignmentResult[a] "
    "FrontEnd(FrontEndChannel[a](FrontEndParameter FrontEndClipping)) "
    "ADReceiver(ADReceiverChannel[a]) ADConverter(SADSlice[a](SADRadix SADInterleaveDelay) "
    "IsoChannel[a] IsoReference SdConfig ADConverterChannel[a] SADRadixAB[a])) RemoteControl "
    "Wireless(WirelessClient WirelessAccesspoint))",
    "Horizontal(SampleCounter)",
    "Vertical(AnalogSignalStreams(AnalogSignalStream[a](AnalogSignalStreamPart[a])) "
    "ReferenceCurve(ReferenceCurveAttributes) AnalogChannelMapping[a] Channel[a](ChannelType "
    "ChannelSourceTypes Levels(EdgeTriggerLevel[a] SlewRateTriggerLevelRange[a] "
    "RuntTriggerLevelRange[a] WindowTriggerLevelRange[a] LogicThresholdSettings[a] "
    "RelativeHysteresisLevel[a] HysteresisLevel[a])))",
    "Logger(LoggerTime[a] LoggerAttributes(LoggerChannel[a](LoggerChannelSource "
    "LoggerChannelScreenLayout LoggerCursorResults[a] LoggerCursorResultsDelta)) LoggerSlot[a] "
    "LoggerCursor LoggerZoom)",
    "Trigger(TimeoutBasedEventGeneration EdgeTriggerSettings "
    "GlitchTriggerSettings(TimeRange[a]) WidthTriggerSettings(TimeRange[a]) "
    "IntervalTriggerSettings(TimeRange[a]) PatternTriggerSettings(TimeRange[a] "
    "ChannelState[a]) StateTriggerSettings(ChannelState[a]) RuntTriggerSettings(TimeRange[a]) "
    "SlewRateTriggerSettings(TimeRange[a]) DataToClockTriggerSettings(DataSource[a]) "
    "SerialPatternTriggerSettings(DataSource[a]) TimeoutTriggerSettings TvTriggerSettings "
    "WindowTriggerSettings(TimeRange[a]) CurrentTriggerThresholdLevels TriggerHoldOff "
    "SPIBusTriggerSettings(DataPatternRelation[a]) "
    "I2CBusTriggerSettings(DataPatternRelation[a] IdentifierPatternRelation[a]) "
    "UARTBusTriggerSettings(DataPatternRelation[a]) "
    "CANBusTriggerSettings(DataPatternRelation[a] IdentifierPatternRelation[a]) "
    "LINBusTriggerSettings(DataPatternRelation[a] IdentifierPatternRelation[a]) "
    "SENTBusTriggerSettings(DataPatternRelation[a] IdentifierPatternRelation[a]) "
    "ExternalTriggerSettings ExternalTriggerLevel)",
    "Zoom",
    "Cursor(CursorMeasurements(CursorMeasurement[a]) RelativeHysteresisLevel[a])",
    "HistoryViewer",
    "Logic(LogicChannel[a] LogicThresholdSettings[a] ChannelDeskew[a])",
    "SerialBus(BusResults SPIBusSettings SPIBusResults(SPIBusFrame[a](SPIBusFrameDataWord[a])) "
    "I2CBusSettings(LabelListSettings(SerialBusLabelItem[m](SignalTranslation[m]("
    "SignalTranslationEnumValues[m])))) "
    "I2CBusResults(I2CBusFrame[a](I2CBusFrameDataByte[a])) "
    "UARTBusSettings(BusChannelSettings[a]) UARTBusResults(UARTBusDataWord[a] UARTBusFrame[a]) "
    "CANBusSettings(BusChannelSettings[a] "
    "LabelListSettings(SerialBusLabelItem[m](SignalTranslation[m](SignalTranslationEnumValues[m])))"
    ") "
    "CANBusResults(CANBusFrame[a](CANBusFrameByte[a])) LINBusSettings(BusChannelSettings[a] "
    "LabelListSettings(SerialBusLabelItem[m](SignalTranslation[m](SignalTranslationEnumValues[m])))"
    ") "
    "LINBusResults(LINBusFrame[a](LINBusFrameByte[a])) SENTBusSettings(BusChannelSettings[a] "
    "LabelListSettings(SerialBusLabelItem[m](SignalTranslation[m](SignalTranslationEnumValues[m])))"
    ") "
    "SENTBusResults(SENTBusFrame[a](SENTBusFrameNibble[a])) TrackInTable)",
    "Mathematics",
    "Mask(MaskChannelSetup[a] MaskSettings)",
    "Measurements(Measurement[a])",
    "Diagrams(DiagramWindow[a] DiagramWindowHw DiagramWindowApp)",
    "Counter(CounterChannel[a](Statistics CounterNumerics) MeterSourceChannel[a])",
    "Meter(MeterChannel[a](MeterMeasurement[a]) MeterSourceChannel[a])",
    "SaveRecall(SaveRecallSlot[a])",
    "Simulation(SimulationChannel[a] SimulationChannelDMM FrontendSimulation)",
    "Debug",
    "Performance(PerformanceOfMeasurements(PerformanceOfMeasurement[a]))",
    "Runs(CurrentRun)",
    "Print(OneTouch)",
    "XY",
    "DDC",
    "FFT",
    "Spectrum(SpectrumCursors(SpectrumCursor[a]) SpectrumMarkers(SpectrumMarker[a] "
    "ReferenceMarker))",
    "Harmonic(HarmonicRawResults(HarmonicChannelRawResult[a](HarmonicMagnitudeRawResult[a])) "
    "HarmonicSelected[a] "
    "HarmonicUIResults(HarmonicChannelUIResult[a](HarmonicMagnitudeUIResult[a] "
    "HarmonicChannelStatusCurrent HarmonicChannelStatusHistory)) "
    "HarmonicStandard(HarmonicLimitCurrent HarmonicLimitUser))",
    "Export(SignalExport)",
};
