// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsUnits.h"

namespace
{
using HorizontalHelper = CZELDatabaseHelperHorizontal;

const t_Argument kMode{"--mode", "KW_ZEL_MODE", "ZEL_A"};
const t_Argument kAcquisition{"--acquisition", "KW_ZEL_ACQUISITION_MODE", "SAMPLE"};
const t_Argument kHistory{"--history", "KW_ZEL_HISTORY_DEPTH", "100"};
const t_Argument kRecord{"--record", "KW_ZEL_RECORD_LENGTH", "AUTO"};

void SampleRate(const CArguments& in, CFigures& out)
{
    out.Add("sample rate", HorizontalHelper::GetSampleRate(in.Enum<KW_ZEL_MODE>("mode")),
            eKW_UNIT_SAMPLES_S);
}

void Decimation(const CArguments& in, CFigures& out)
{
    const double seconds = in.Number("time", eKW_UNIT_FREQ_SEC);
    const auto mode = in.Enum<KW_ZEL_MODE>("--mode");
    const auto acquisition = in.Enum<KW_ZEL_ACQUISITION_MODE>("--acquisition");
    const auto history = in.Enum<KW_ZEL_HISTORY_DEPTH>("--history");
    const auto record = in.Enum<KW_ZEL_RECORD_LENGTH>("--record");
    const double rate = HorizontalHelper::GetSampleRate(mode);
    unsigned int decimation = 0;
    double length = 0.0;
    HorizontalHelper::CalculateDecimationFactorAndRecordLength(seconds, rate, acquisition, history,
                                                               record, decimation, length);
    out.Add("sample rate", rate, eKW_UNIT_SAMPLES_S)
        .Add("samples", seconds * rate, eKW_UNIT_SAMPLES)
        .Add(
            "sample budget",
            HorizontalHelper::GetMaxNumOfSamplesAfterDecimation(rate, acquisition, history, record),
            eKW_UNIT_SAMPLES)
        .Add("decimation", decimation)
        .Add("effective decimation",
             static_cast<double>(
                 HorizontalHelper::CalculateDecimationFactorEffective(mode, decimation)))
        .Add("record length", length, eKW_UNIT_SAMPLES)
        .Add("whole record length", HorizontalHelper::AdjustRecordLength(length), eKW_UNIT_SAMPLES);
}

void SlowDecimation(const CArguments& in, CFigures& out)
{
    unsigned int analog = 0;
    unsigned int digital = 0;
    double analogLength = 0.0;
    double digitalLength = 0.0;
    HorizontalHelper::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
        in.Number("time", eKW_UNIT_FREQ_SEC),
        HorizontalHelper::GetSampleRate(in.Enum<KW_ZEL_MODE>("--mode")),
        HorizontalHelper::GetSampleRate(in.Enum<KW_ZEL_MODE>("--digitalmode")),
        in.Enum<KW_ZEL_ACQUISITION_MODE>("--acquisition"),
        in.Enum<KW_ZEL_HISTORY_DEPTH>("--history"), in.Enum<KW_ZEL_RECORD_LENGTH>("--record"),
        analog, digital, analogLength, digitalLength);
    out.Add("analog decimation", analog)
        .Add("analog record length", analogLength, eKW_UNIT_SAMPLES)
        .Add("digital decimation", digital)
        .Add("digital record length", digitalLength, eKW_UNIT_SAMPLES);
}

void DecimationFactor(const CArguments& in, CFigures& out)
{
    const double factor = HorizontalHelper::CalculateDecimationFactor(
        in.Number("samples", eKW_UNIT_SAMPLES), in.Whole<UINT32>("points", eKW_UNIT_SAMPLES));
    bool limited = false;
    const unsigned int whole = HorizontalHelper::LimitDecimationFactor(factor, limited);
    out.Add("factor", factor).Add("decimation", whole).AddTruth("limited", limited);
}

void HistoryTraces(const CArguments& in, CFigures& out)
{
    out.Add("traces",
            HorizontalHelper::GetNumberOfHistoryTraces(in.Enum<KW_ZEL_HISTORY_DEPTH>("depth")));
}

void Interpolation(const CArguments& in, CFigures& out)
{
    out.Add("interpolation factor",
            HorizontalHelper::CalculateInterpolationFactor(in.Number("length", eKW_UNIT_SAMPLES),
                                                           in.Number("points", eKW_UNIT_SAMPLES)));
}

void Trace(const CArguments& in, CFigures& out)
{
    unsigned int recordLength = 0;
    unsigned int traceLength = 0;
    double factor = 0.0;
    bool byHardware = false;
    double resolution = 0.0;
    HorizontalHelper::CalculateDependentHorizontalSettings(
        in.Number("samples", eKW_UNIT_SAMPLES), in.IsSet("--hardware") ? 1U : 0U,
        in.Number("time", eKW_UNIT_FREQ_SEC), in.Number("points", eKW_UNIT_SAMPLES), recordLength,
        traceLength, factor, byHardware, resolution);
    out.Add("record length", recordLength, eKW_UNIT_SAMPLES)
        .Add("trace length", traceLength, eKW_UNIT_SAMPLES)
        .Add("interpolation factor", factor)
        .AddTruth("hardware interpolation", byHardware)
        .Add("resolution", resolution, eKW_UNIT_FREQ_SEC);
}

void PreTrigger(const CArguments& in, CFigures& out)
{
    out.Add("pre-trigger samples",
            HorizontalHelper::CalculateNbPreTriggerSamples(
                in.Number("time", eKW_UNIT_FREQ_SEC),
                in.Whole<unsigned int>("length", eKW_UNIT_SAMPLES),
                in.Number("left", eKW_UNIT_FREQ_SEC)),
            eKW_UNIT_SAMPLES);
}

void Boundaries(const CArguments& in, CFigures& out)
{
    double left = 0.0;
    double right = 0.0;
    HorizontalHelper::CalculateHorizontalBoundaries(
        in.Number("time", eKW_UNIT_FREQ_SEC),
        in.Whole<unsigned short>("--reference", eKW_UNIT_COUNT_PCT),
        in.Number("--position", eKW_UNIT_FREQ_SEC), in.Number("--resolution", eKW_UNIT_FREQ_SEC),
        left, right);
    out.Add("left", left, eKW_UNIT_FREQ_SEC).Add("right", right, eKW_UNIT_FREQ_SEC);
}

void ZoomBoundaries(const CArguments& in, CFigures& out)
{
    double left = 0.0;
    double right = 0.0;
    HorizontalHelper::CalculateHorizontalBoundariesZoom(in.Number("width", eKW_UNIT_FREQ_SEC),
                                                        in.Number("--center", eKW_UNIT_FREQ_SEC),
                                                        left, right);
    out.Add("left", left, eKW_UNIT_FREQ_SEC).Add("right", right, eKW_UNIT_FREQ_SEC);
}

void RightBoundary(const CArguments& in, CFigures& out)
{
    out.Add("right",
            HorizontalHelper::GetRightHorizontalBoudary(in.Number("left", eKW_UNIT_FREQ_SEC),
                                                        in.Number("width", eKW_UNIT_FREQ_SEC)),
            eKW_UNIT_FREQ_SEC);
}

void Zoom(const CArguments& in, CFigures& out)
{
    unsigned int points = 0;
    double factor = 0.0;
    const bool done = HorizontalHelper::CalculateZoomParameter(
        in.Whole<unsigned int>("length", eKW_UNIT_SAMPLES), in.Number("zoom"),
        in.Number("--interpolation"), in.Whole<unsigned int>("--minimum", eKW_UNIT_SAMPLES), points,
        factor);
    out.Add("points", points, eKW_UNIT_SAMPLES)
        .Add("interpolation factor", factor)
        .AddTruth("possible", done);
}
} // namespace

t_CalculationGroup GetTimebaseCalculations()
{
    const t_Argument time{"time", "Acquisition time in s"};
    return {
        "Timebase",
        {{"samplerate",
          "Sample rate of a sample-rate mode",
          {"GetSampleRate"},
          {{"mode", "KW_ZEL_MODE"}},
          &SampleRate,
          {"ZEL_C"}},
         {"decimation",
          "Decimation and record length of an acquisition time",
          {"CalculateDecimationFactorAndRecordLength", "GetMaxNumOfSamplesAfterDecimation",
           "CalculateDecimationFactorEffective", "AdjustRecordLength"},
          {time, kMode, kAcquisition, kHistory, kRecord},
          &Decimation,
          {"20ms --acquisition PEAK"}},
         {"slowdecimation",
          "The same for analog and digital channels in slow and roll mode",
          {"CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode"},
          {time,
           kMode,
           {"--digitalmode", "KW_ZEL_MODE of the digital channels", "ZEL_A"},
           kAcquisition,
           kHistory,
           kRecord},
          &SlowDecimation,
          {"2s --acquisition PEAK"}},
         {"decimationfactor",
          "Decimation of a number of samples to a number of points",
          {"CalculateDecimationFactor", "LimitDecimationFactor"},
          {{"samples", "Samples before decimation"}, {"points", "Points that the memory holds"}},
          &DecimationFactor,
          {"25MSa 125kSa"}},
         {"historytraces",
          "Traces that the history keeps",
          {"GetNumberOfHistoryTraces"},
          {{"depth", "KW_ZEL_HISTORY_DEPTH"}},
          &HistoryTraces,
          {"1000"}},
         {"interpolation",
          "Interpolation of a short record",
          {"CalculateInterpolationFactor"},
          {{"length", "Record length"}, {"points", "Points that the display needs"}},
          &Interpolation,
          {"125 1250"}},
         {"trace",
          "Trace that is shown of a record",
          {"CalculateDependentHorizontalSettings"},
          {{"samples", "Record before interpolation"},
           time,
           {"points", "Points that the display needs"},
           {"--hardware", "Interpolate by hardware in any case", "", t_Argument::eTAKES::Flag}},
          &Trace,
          {"125 100ns 1250"}},
         {"pretrigger",
          "Samples between the left edge of the screen and the trigger",
          {"CalculateNbPreTriggerSamples"},
          {time, {"length", "Record length"}, {"left", "Left edge against the trigger in s"}},
          &PreTrigger,
          {"1us 1250 -0.5us"}},
         {"boundaries",
          "Screen boundaries relative to the trigger",
          {"CalculateHorizontalBoundaries"},
          {time,
           {"--reference", "Reference point in % from the left edge", "50%"},
           {"--position", "Horizontal position in s", "0s"},
           {"--resolution", "Time between two points in s; 0 is continuous", "0s"}},
          &Boundaries,
          {"10us --reference 20%"}},
         {"zoomboundaries",
          "Boundaries of a zoom window",
          {"CalculateHorizontalBoundariesZoom"},
          {{"width", "Width of the window in s"}, {"--center", "Middle of the window in s", "0s"}},
          &ZoomBoundaries,
          {"2us --center 3us"}},
         {"rightboundary",
          "Right boundary of a window",
          {"GetRightHorizontalBoudary"},
          {{"left", "Left boundary in s"}, {"width", "Width in s"}},
          &RightBoundary,
          {"-1us 10us"}},
         {"zoom",
          "Points and interpolation of a zoom window",
          {"CalculateZoomParameter"},
          {{"length", "Record length"},
           {"zoom", "Zoom factor"},
           {"--interpolation", "Interpolation factor of the record", "1"},
           {"--minimum", "Fewest points", "1"}},
          &Zoom,
          {"1250 50 --minimum 10"}}}};
}
