// SPDX-License-Identifier: MIT
#include "SpectrumTree.h"
#include "zel/RuleTree.h"

namespace
{
// The axis is 0 … 625 MHz at first, or 100 Hz … 625 MHz when it is logarithmic. The length factor
// of the Hann window is 7.64; a span of 1 MHz decimates by 5 × 16 × ⌊825 / 80⌋ = 800 to 1.5625
// MSa/s, one of 825 Hz by 1,000,000. 8 V peak to peak are 2.83 V, 9.03 dBV and 22.04 dBm in 50 Ω.
const t_Rule kSpectrumRules[] = {
    {"SpanMovesTheCenter", "", "Spectrum/HorizontalSpan = 1e6",
     ".HorizontalStart = 3.12e+08; .HorizontalStop = 3.13e+08"},
    {"SpanIsTooWideForTheCenter", "Spectrum/HorizontalCenter = 1e8", ".HorizontalSpan = 3e8",
     ".HorizontalStart = 0; .HorizontalStop = 2e+08", eKW_ACC_ABOVE_MAXIMUM},
    {"SpanDoesNotComeBack", "Spectrum/HorizontalCenter = 1e8", ".HorizontalCenter = 3e8",
     ".HorizontalStart = 0; .HorizontalStop = 6e+08"},
    {"StopLeavesAnOldSpan", "Spectrum/HorizontalStop = 1e6", ".HorizontalCenter = 3e8",
     ".HorizontalStart = 299500000; .HorizontalStop = 300500000"},
    {"StartLeavesAnOldSpan", "Spectrum/HorizontalStart = 6.24e8", ".HorizontalCenter = 3e8",
     ".HorizontalStart = 299500000; .HorizontalStop = 300500000"},
    {"SpanIsTooNarrow", "", "Spectrum/HorizontalSpan = 824",
     ".HorizontalStart = 0; .HorizontalStop = 6.25e+08", eKW_ACC_BELOW_MINIMUM},
    {"StopIsBelowTheStart", "Spectrum/HorizontalStart = 2e8", ".HorizontalStop = 1e8",
     ".HorizontalStart = 99999175; .HorizontalStop = 1e+08"},
    {"StartIsAboveTheStop", "Spectrum/HorizontalStop = 1e8", ".HorizontalStart = 2e8",
     ".HorizontalStart = 2e+08; .HorizontalStop = 200000825"},
    {"StopIsBeyondTheRange", "", "Spectrum/HorizontalStop = 6.3e8",
     ".HorizontalStart = 0; .HorizontalStop = 6.25e+08", eKW_ACC_ABOVE_MAXIMUM},
    {"NarrowAxisStaysAtItsCenter", "Spectrum/HorizontalStop = 825", ".HorizontalCenter = 412.5",
     ".HorizontalStart = 0; .HorizontalStop = 825"},
    {"LastCenterIsBeyondTheRange", "", "Spectrum/HorizontalCenter = 624999587.5",
     ".HorizontalStart = 624999175; .HorizontalStop = 6.25e+08"},
    {"LogarithmicStartPushesNothing",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStop = 1e6", ".HorizontalStart = 5e5",
     ".HorizontalStart = 5e+05; .HorizontalStop = 5e+06"},
    {"LogarithmicStopPushesNothing",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e6", ".HorizontalStop = 2e6",
     ".HorizontalStart = 2e+05; .HorizontalStop = 2e+06"},
    {"LogarithmicStartLeavesNoDecade", "Spectrum/HorizontalScaling = LOGARITHMIC",
     ".HorizontalStart = 6.3e7", ".HorizontalStart = 100; .HorizontalStop = 6.25e+08",
     eKW_ACC_ABOVE_MAXIMUM},
    {"LogarithmicStopLeavesNoDecade", "Spectrum/HorizontalScaling = LOGARITHMIC",
     ".HorizontalStop = 999", ".HorizontalStart = 100; .HorizontalStop = 6.25e+08",
     eKW_ACC_BELOW_MINIMUM},
    {"LogarithmicCenterIsNoFactor",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e4; .HorizontalStop = 1e6",
     ".HorizontalCenter = 1e6", ".HorizontalStart = 1e+05; .HorizontalStop = 1e+07"},
    {"LogarithmicCenterLeavesTheRange",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e4; .HorizontalStop = 1e6",
     ".HorizontalCenter = 1e8", ".HorizontalStart = 1e+07; .HorizontalStop = 6.25e+08",
     eKW_ACC_WARNING},
    {"LogarithmicSpanIsLessThanADecade",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e4; .HorizontalStop = 1e6",
     ".HorizontalSpan = 2.4e5", ".HorizontalStart = 10000; .HorizontalStop = 1e+06",
     eKW_ACC_BELOW_MINIMUM},
    {"LogarithmicSpanIsOffCenter",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e4; .HorizontalStop = 1e6",
     ".HorizontalSpan = 1.5e6", ".HorizontalStart.6 = 6637.3; .HorizontalStop.6 = 1.50664e+06"},
    {"LogarithmicAxisBeginsAtZero", "", "Spectrum/HorizontalScaling = LOGARITHMIC",
     ".HorizontalStart = 100; .HorizontalStop = 6.25e+08; .HorizontalCenter.6 = 250000"},
    {"LinearAxisLosesTheCenter", "Spectrum/HorizontalScaling = LOGARITHMIC",
     ".HorizontalScaling = LINEAR", ".HorizontalStart = 0; .HorizontalStop.6 = 500000"},
    {"GridLeavesNoDecade", "Spectrum/HorizontalStop = 5e5; .HorizontalStart = 1e5", ".ChangeGrid",
     ".HorizontalScaling = LOGARITHMIC; .HorizontalStart = 50000; DDC/Center = 275000; .Span = "
     "450000"},
    {"GridLeavesAnOldSpan",
     "Spectrum/HorizontalStop = 5e5; .HorizontalStart = 1e5; .ChangeGrid; .ChangeGrid",
     ".HorizontalCenter = 3e8", ".HorizontalSpan.6 = 316228"},
    {"LeftKeyNarrowsTheSpan", "Spectrum/HorizontalStart = 9e7; .HorizontalStop = 1.1e8",
     ".OnPressHorizontalRangeLeft", ".HorizontalStart = 7.5e+07; .HorizontalStop = 1.25e+08"},
    {"RightKeyWidensTheSpan", "Spectrum/HorizontalStart = 9e7; .HorizontalStop = 1.1e8",
     ".OnPressHorizontalRangeRight", ".HorizontalStart = 9.5e+07; .HorizontalStop = 1.05e+08"},
    {"WidestSpanIsWidened", "Spectrum/HorizontalStop = 1.1e8", ".OnPressHorizontalRangeLeft",
     ".HorizontalStart = 0; .HorizontalStop = 1.1e+08", eKW_ACC_WARNING,
     "property value is higher than property max value"},
    {"DecadeIsNarrowed",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e6; .HorizontalStop = 1e7",
     ".OnPressHorizontalRangeRight", ".HorizontalStart = 1e+06; .HorizontalStop = 1e+07",
     eKW_ACC_WARNING, "property value is lower than property min value"},
    {"OnlySpanIsWidened", "Spectrum/HorizontalStop = 825", ".OnPressHorizontalRangeLeft",
     ".HorizontalStart = 0; .HorizontalStop = 825", eKW_ACC_WARNING, "min and max are equal: 825"},
    {"LeftKeyGoesRight", "Spectrum/HorizontalStart = 9e7; .HorizontalStop = 1.1e8",
     ".OnPressHorizontalPosLeft", ".HorizontalStart = 8.8e+07; .HorizontalStop = 1.08e+08"},
    {"RightKeyLeavesTheRange", "Spectrum/HorizontalStart = 5e8; .HorizontalStop = 6.2e8",
     ".OnPressHorizontalPosRight", ".HorizontalStart = 5.05e+08; .HorizontalStop = 6.25e+08"},
    {"WholeRangeIsShifted", "", "Spectrum/OnPressHorizontalPosRight",
     ".HorizontalStart = 0; .HorizontalStop = 6.25e+08", eKW_ACC_WARNING},
    {"DecadeIsShiftedByHertz",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e3; .HorizontalStop = 1e4",
     ".OnPressHorizontalPosRight", ".HorizontalStart.6 = 1258.93; .HorizontalStop.6 = 12589.3"},
    {"FullSpanIsNotFull",
     "Spectrum/HorizontalScaling = LOGARITHMIC; .HorizontalStart = 1e3; .HorizontalStop = 1e4",
     ".HorizontalFullSpan", ".HorizontalStart = 100; .HorizontalStop = 6.25e+08"},
    {"AutoSetShowsAnotherBand", "Spectrum/HorizontalStart = 1e3; .HorizontalStop = 1e4",
     ".HorizontalAutoSet", ".HorizontalStart = 0; .HorizontalStop = 6e+08"},
    {"AutoSetIgnoresTheFilterOfTheInput", "Vertical/Channel[0]/BandwidthLimit = MHZ_20",
     "Spectrum/HorizontalAutoSet", ".HorizontalStop = 2e+07"},
    {"BandwidthOfAHundredthHasAnotherFFT", "Spectrum/RBWRatio = 1_TO_100; .HorizontalSpan = 3e6",
     ".HorizontalSpan = 1e6", ".RBW = 10000; FFT/FFTSize = 2048"},
    {"BandwidthOfAThousandthHasAnotherFFT", "Spectrum/RBWRatio = 1_TO_1000; .HorizontalSpan = 3e6",
     ".HorizontalSpan = 1e6", ".RBW = 1000; FFT/FFTSize = 16384"},
    {"BandwidthOfATenthHasAnotherFFT", "Spectrum/RBWRatio = 1_TO_10; .HorizontalSpan = 3e6",
     ".HorizontalSpan = 1e6", ".RBW = 1e+05; FFT/FFTSize = 128"},
    {"BandwidthOfTheNarrowestSpanHasAnotherFFT",
     "Spectrum/RBWRatio = 1_TO_1000; .HorizontalSpan = 3e6", ".HorizontalSpan = 825",
     ".RBW = 0.825; FFT/FFTSize = 16384"},
    {"BandwidthOfTheWidestSpanHasAnotherFFT", "Spectrum/RBWRatio = 1_TO_10; .HorizontalSpan = 3e6",
     ".HorizontalSpan = 6.25e8", ".RBW = 62500000; FFT/FFTSize = 256"},
    {"WrittenBandwidthStaysAutomatic", "Spectrum/HorizontalSpan = 1e7", ".RBW = 100000",
     ".AutoRBW = OFF; .RBW = 1e+05"},
    {"BandwidthIsWiderThanATenth", "Spectrum/HorizontalSpan = 1e7; .RBW = 5e5",
     ".HorizontalSpan = 1e6", ".AutoRBW = OFF; .RBW = 1e+05; .RBW.max = 1e+05"},
    {"RatioOverridesTheUser", "Spectrum/HorizontalSpan = 1e6; .RBW = 100000",
     ".RBWRatio = 1_TO_1000", ".RBW = 1e+05"},
    {"AutomaticBandwidthIgnoresTheRatio",
     "Spectrum/HorizontalSpan = 1e6; .RBW = 100000; .RBWRatio = 1_TO_1000", ".AutoRBW = ON",
     ".RBW = 1000"},
    {"WindowFactorsAreThoseOfAnotherWindow", "", "Spectrum/WindowType = FLATTOP",
     ".WindowFactor = 3.84; .WindowLengthFactor = 3.84; FFT/WindowType = FLATTOP"},
    {"FFTIsSilentlyTooSmall", "Spectrum/HorizontalSpan = 1e8", ".RBWRatio = 1_TO_1000",
     "FFT/FFTSize = 65536; Spectrum/RBW = 1e+05", eKW_ACC_OK,
     "force fft size to 65536 Sa, but minimum required is 95500 Sa (DDC is off): fs_adc = "
     "1.25e+09, rbw = 100000, wlf = 7.64, fftsize >= wlf * fs_adc / rbw"},
    {"RateOfTheScopeIsHidden", "", "Horizontal/ZELMode = ZEL_C",
     "Spectrum/FFTSampleFrequency = 5e+09"},
    {"BasicFFTKeepsTheBandwidth", "", "Spectrum/Mode = FFT",
     "FFT/FFTSize = 65536; Spectrum/RBW = 145721.435546875; DDC/State = OFF; .Span = 6.25e+08"},
    {"BasicFFTFollowsTheSpan", "Spectrum/Mode = FFT", ".HorizontalSpan = 1e6",
     "FFT/FFTSize = 65536", eKW_ACC_WARNING, "center/span was changed in basic fft"},
    {"BasicFFTFollowsTheCenter", "Spectrum/Mode = FFT", ".HorizontalCenter = 1e8",
     "FFT/FFTSize = 65536", eKW_ACC_WARNING, "center/span was changed in basic fft"},
    {"BasicFFTRefusesAStop", "Spectrum/Mode = FFT", ".HorizontalStop = 2e8",
     "FFT/FFTSize = 65536; DDC/State = OFF"},
    {"BasicFFTHasAnyBandwidth", "Spectrum/Mode = FFT", ".RBW = 5e5",
     ".FFTFrequencySpan = MEDIUM; FFT/FFTSize = 65536", eKW_ACC_WARNING},
    {"CoarseBandwidthKeepsTheLargeFFT", "Spectrum/Mode = FFT", ".RBW = 1165771.484375",
     ".FFTFrequencySpan = NARROW; FFT/FFTSize = 8192"},
    {"BasicFFTIgnoresTheRate", "Spectrum/Mode = FFT; .FFTFrequencySpan = NARROW",
     "Horizontal/ZELMode = ZEL_C", "Spectrum/RBW = 4663085.9375"},
    {"FFTLeavesTheMeter", "Control/SMMode/OperationMode = METER; .SwitchMode", "FFT/State = ON",
     "Control/SMMode/OperationMode = SCOPE_YT; .ActiveMode = SCOPE_YT"},
    {"SpectrumLeavesTheMeter", "Control/SMMode/OperationMode = METER; .SwitchMode",
     "Spectrum/Mode = FFT", "Control/SMMode/OperationMode = SCOPE_YT; .ActiveMode = SCOPE_YT"},
    {"SpanEntersUnasked", "Control/SMMode/OperationMode = METER; .SwitchMode",
     "Spectrum/HorizontalSpan = 1e6", "Control/SMMode/ActiveMode = METER"},
    {"AverageIsCompleteTooEarly", "FFT/AverageLength = 8", "@.AveragesDone = 7",
     "Spectrum/AverageComplete = OFF"},
    {"AverageIsNeverComplete", "FFT/AverageLength = 8", "@.AveragesDone = 8",
     "Spectrum/AverageComplete = ON"},
    {"NextRunGoesOnAveraging",
     "FFT/AverageLength = 8; @.AveragesDone = 8; @Spectrum/ClippingAverage = ON",
     "Spectrum/ResetNextRun",
     ".AverageComplete = OFF; .ClippingAverage = OFF; FFT/AveragesDone = 0"},
    {"AverageHasAnyLength", "", "FFT/AverageLength = 100", ".AverageLength = 64", eKW_ACC_WARNING,
     "Average Length is invalid"},
    {"NeededConverterMixesNothing", "", "Spectrum/HorizontalSpan = 1e6",
     "DDC/State = ON; .GainCorrection = 2; FFT/InputFormat = COMPLEX_FLOAT; DDC/Gain.6 = "
     "3.41284e+07"},
    {"NeededConverterIsSwitchedOff", "Spectrum/HorizontalSpan = 1e6", "DDC/State = OFF",
     ".State = ON; .GainCorrection = 2; .SampleDezimationFactor = 800", eKW_ACC_WARNING},
    {"BasicFFTLeavesTheConverterOn", "Spectrum/HorizontalSpan = 1e6", ".Mode = FFT",
     "DDC/State = OFF; .Gain = 1; .GainCorrection = 1; .FrequencyShift = 0"},
    {"AnalysisLeavesTheConverterOff", "Spectrum/HorizontalSpan = 1e6; .Mode = FFT", ".Mode = SPA",
     "DDC/State = ON; .Gain.6 = 3.41284e+07"},
    {"EndOfDebuggingLeavesTheAnalysis",
     "Spectrum/HorizontalSpan = 1e6; .HorizontalSpan = 6.25e8; .Mode = SPA; DDC/State = ON; .Span "
     "= 1e5",
     ".State = OFF",
     ".Span = 6.25e+08; .Center = 312500000; .SampleDezimationFactor = 1; .Gain = 1; "
     ".FrequencyShift = 0; .GainCorrection = 1",
     eKW_ACC_OK,
     "DDC Center/Span was directly changed to Center = 312500 kHz and Span = 100 kHz (that is only "
     "allowed for debugging purpose)"},
    {"EndOfDebuggingLeavesTheBasicFFT",
     "Spectrum/HorizontalSpan = 1e6; .HorizontalSpan = 6.25e8; .Mode = FFT; DDC/State = ON; .Span "
     "= 1e5",
     ".State = OFF",
     ".Span = 6.25e+08; .Center = 312500000; .SampleDezimationFactor = 1; .Gain = 1; "
     ".FrequencyShift = 0; .GainCorrection = 1",
     eKW_ACC_OK,
     "DDC Center/Span was directly changed to Center = 312500 kHz and Span = 100 kHz (that is only "
     "allowed for debugging purpose)"},
    {"VoltageProbeDoesNotReachTheUnits",
     "Spectrum/MagnitudeUnit = DBV; Vertical/Channel[2]/Label = x; .ProbeType = VOLTAGE_100_TO_1",
     "Spectrum/Source = C3",
     ".InputUnit = VOLTAGE; .MagnitudeUnit = DBV; FFT/Source = FFT3; DDC/Source = C3"},
    {"CurrentProbeDoesNotReachTheUnits",
     "Spectrum/MagnitudeUnit = DBV; Vertical/Channel[2]/Label = x; .ProbeType = "
     "CURRENT_10_MV_PER_A",
     "Spectrum/Source = C3",
     ".InputUnit = CURRENT; .MagnitudeUnit = DBA; FFT/Source = FFT3; DDC/Source = C3"},
    {"CurrentOfTheUserDoesNotReachTheUnits",
     "Spectrum/MagnitudeUnit = DBV; Vertical/Channel[2]/Label = x; .ProbeUserUnit = LEVEL_A; "
     ".ProbeType = USER",
     "Spectrum/Source = C3",
     ".InputUnit = CURRENT; .MagnitudeUnit = DBA; FFT/Source = FFT3; DDC/Source = C3"},
    {"VoltageOfTheUserDoesNotReachTheUnits",
     "Spectrum/MagnitudeUnit = DBV; Vertical/Channel[2]/Label = x; .ProbeUserUnit = LEVEL_V; "
     ".ProbeType = USER",
     "Spectrum/Source = C3",
     ".InputUnit = VOLTAGE; .MagnitudeUnit = DBV; FFT/Source = FFT3; DDC/Source = C3"},
    {"ProbeOfAnotherChannelReachesTheUnits", "Spectrum/MagnitudeUnit = DBV",
     "Vertical/Channel[2]/ProbeType = CURRENT_1_V_PER_A",
     "Spectrum/InputUnit = VOLTAGE; .MagnitudeUnit = DBV"},
    {"ProbeOfTheSourceIsNotSeen", "Spectrum/MagnitudeUnit = DBM",
     "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
     "Spectrum/InputUnit = CURRENT; .MagnitudeUnit = DBM; .VerticalStop.unit = LEVEL_DBM"},
    {"CurrentIsShownInVolts", "Vertical/Channel[0]/ProbeType = CURRENT_1_V_PER_A",
     "Spectrum/MagnitudeUnit = DBV", ".MagnitudeUnit = DBM", eKW_ACC_NOT_ENABLED},
    {"FFTHasASourceOfItsOwn", "", "FFT/Source = FFT3", "Spectrum/Source = C3; DDC/Source = C3"},
    {"ConverterHasASourceOfItsOwn", "", "DDC/Source = C2",
     "Spectrum/Source = C2; FFT/Source = FFT2"},
    {"SourceThatCanNotTriggerIsSilent", "Vertical/Channel[3]/Enabled = OFF", "Spectrum/Source = C4",
     "FFT/Source = FFT4", eKW_ACC_OK, "new source is not applicable as trigger source"},
    {"DecibelsOfAMilliwattHaveAnotherAxis",
     "Spectrum/VerticalScaling = LOGARITHMIC; .MagnitudeUnit = DBM; .VerticalRefPoint = 100",
     ".VerticalRefLevel = 0",
     ".VerticalStart.6 = -80; .VerticalStop.6 = 0; .VerticalStop.unit = LEVEL_DBM; "
     ".VerticalRefLevel.unit = LEVEL_DBM"},
    {"DecibelsOfAVoltHaveAnotherAxis",
     "Spectrum/VerticalScaling = LOGARITHMIC; .MagnitudeUnit = DBV; .VerticalRefPoint = 50",
     ".VerticalRefLevel = -10",
     ".VerticalStart.6 = -50; .VerticalStop.6 = 30; .VerticalStop.unit = LEVEL_DBV; "
     ".VerticalRefLevel.unit = LEVEL_DBV"},
    {"TwentyDecibelsHasAnotherAxis",
     "Spectrum/VerticalScaling = LINEAR; .MagnitudeUnit = DBV; .VerticalRefPoint = 100",
     ".VerticalRefLevel = 20",
     ".VerticalStart.6 = 0; .VerticalStop.6 = 10; .VerticalStop.unit = LEVEL_V; "
     ".VerticalRefLevel.unit = LEVEL_DBV"},
    {"HalfTheHeightHasAnotherAxis",
     "Spectrum/VerticalScaling = LINEAR; .MagnitudeUnit = DBV; .VerticalRefPoint = 50",
     ".VerticalRefLevel = 0",
     ".VerticalStart.6 = 0; .VerticalStop.6 = 2; .VerticalStop.unit = LEVEL_V; "
     ".VerticalRefLevel.unit = LEVEL_DBV"},
    {"AWattInto50OhmHasAnotherAxis",
     "Spectrum/VerticalScaling = LINEAR; .MagnitudeUnit = DBM; .VerticalRefPoint = 100",
     ".VerticalRefLevel = 30",
     ".VerticalStart.6 = 0; .VerticalStop.6 = 7.07107; .VerticalStop.unit = LEVEL_V; "
     ".VerticalRefLevel.unit = LEVEL_DBM"},
    {"NoHeightHasAnotherAxis",
     "Spectrum/VerticalScaling = LINEAR; .MagnitudeUnit = DBV; .VerticalRefPoint = 0",
     ".VerticalRefLevel = 0",
     ".VerticalStart.6 = 0; .VerticalStop.6 = 1e+08; .VerticalStop.unit = LEVEL_V; "
     ".VerticalRefLevel.unit = LEVEL_DBV"},
    {"LargestSignalIsCutOff", "", "Spectrum/VerticalAutoSet", ".VerticalStop = 30"},
    {"LargestVoltageIsCutOff", "Spectrum/MagnitudeUnit = DBV", ".VerticalAutoSet",
     ".VerticalStop = 10"},
    {"FreeCursorFollows", "", "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1e8",
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 468750000; "
     "Spectrum/SpectrumCursors/DeltaHorizontal = 368750000"},
    {"CoupledCursorStays",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1e8; "
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 3e8; "
     "Spectrum/SpectrumCursors/Coupled = ON",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1.5e8",
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 3.5e+08; "
     "Spectrum/SpectrumCursors/DeltaHorizontal = 2e+08"},
    {"FirstOfCoupledCursorsStays", "Spectrum/SpectrumCursors/Coupled = ON",
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Vertical = -10",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Vertical = -10"},
    {"CoupledCursorLeavesTheScreen",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1e8; "
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 3e8; "
     "Spectrum/SpectrumCursors/Coupled = ON",
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 1.5e8",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 0; "
     "Spectrum/SpectrumCursors/DeltaHorizontal = 1.5e+08",
     eKW_ACC_OK, "property value is lower than property min value"},
    {"ResetMovesBothCursors",
     "Spectrum/SpectrumCursors/Coupled = ON; Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal "
     "= 1e8",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Reset",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 156250000; "
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 412500000; "
     "Spectrum/SpectrumCursors/DeltaHorizontal = 256250000"},
    {"CursorsMissTheScreen", "Spectrum/HorizontalStop = 4e8",
     "Spectrum/SpectrumCursors/SetToScreen",
     "Spectrum/SpectrumCursors/SpectrumCursor[0]/Horizontal = 1e+08; "
     "Spectrum/SpectrumCursors/SpectrumCursor[1]/Horizontal = 3e+08; "
     "Spectrum/SpectrumCursors/DeltaHorizontal = 2e+08"},
    {"NoMarkerIsTheReference",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20",
     "Spectrum/SpectrumMarkers/SetReference", ".SpectrumMarker[1]/DeltaMagnitude = 0-",
     eKW_ACC_NOTHING_TO_ACT_ON},
    {"ReferenceIsAnotherMarker",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20; "
     "Spectrum/SpectrumMarkers/SelectedMarker = Spectrum/SpectrumMarkers/SpectrumMarker[1]",
     "Spectrum/SpectrumMarkers/SetReference",
     ".ReferenceMarker/Frequency = 2e+08; .Magnitude = -20; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/DeltaMagnitude = 0; .DeltaFrequency = 0"},
    {"DeliveredMagnitudeMovesNoDifference",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20; "
     "Spectrum/SpectrumMarkers/SelectedMarker = Spectrum/SpectrumMarkers/SpectrumMarker[1]; "
     ".SetReference",
     "@Spectrum/SpectrumMarkers/SpectrumMarker[1]/Magnitude = -35", ".DeltaMagnitude = -15"},
    {"MovedMarkerKeepsItsDifference",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20; "
     "Spectrum/SpectrumMarkers/SelectedMarker = Spectrum/SpectrumMarkers/SpectrumMarker[1]; "
     ".SetReference",
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 1e8", ".DeltaFrequency = -1e+08"},
    {"MovedReferenceKeepsTheDifferences",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20; "
     "Spectrum/SpectrumMarkers/SelectedMarker = Spectrum/SpectrumMarkers/SpectrumMarker[1]; "
     ".SetReference",
     "Spectrum/SpectrumMarkers/ReferenceMarker/Frequency = 3e8",
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/DeltaFrequency = -1e+08"},
    {"SomeMarkerStays", "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker",
     "Spectrum/SpectrumMarkers/RemoveAll", ".SpectrumMarker.count = 0"},
    {"MarkerIsOffTheCenter",
     "+ Spectrum/SpectrumMarkers/SpectrumMarker; + .SpectrumMarker; "
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/Frequency = 2e8; @.Magnitude = -20",
     "Spectrum/SpectrumMarkers/SpectrumMarker[1]/SetCenter", "Spectrum/HorizontalCenter = 2e+08"},
};

/** Walks look at the tree that there is: the one of this tree of its own. */
void CheckSpectrum(const CRuleTree&, CFindings& findings)
{
    const std::string wrong = SpectrumViolations(t_SpectrumTree());
    findings.Check(wrong.empty(), wrong.c_str());
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Spectrum, Rules, testing::ValuesIn(kSpectrumRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(
    Spectrum, Walks,
    testing::Values(t_Walk{
        "", "Spectrum Spectrum FFT Horizontal", CheckSpectrum, 10,
        "only allowed for debugging|changed in basic fft|property (max|min) value|are equal|"
        "not applicable as trigger|force fft size|Average Length|reference point|register"}));
