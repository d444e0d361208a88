// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "Figures.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"

#include <cmath>
#include <limits>

namespace
{
/** A figure that the library takes as a whole number of a narrower type. */
template <typename T>
T ReadWhole(const std::string& text, KW_UNIT unit, const char* name)
{
    const double value = ReadArgument(text, unit, name);
    const bool fits = value >= 0 && value <= static_cast<double>(std::numeric_limits<T>::max());
    if (!fits || value != std::floor(value))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("%1 is a whole number 0 … %2, not \"%3\"")
                                          .arg(QLatin1String(name))
                                          .arg(std::numeric_limits<T>::max())
                                          .arg(ToText(text)));
    }
    return static_cast<T>(value);
}

struct t_SampleRate
{
    std::string mode;

    void Declare(CLI::App& command) { command.add_option("mode", mode, "KW_ZEL_MODE")->required(); }

    t_Answer Run(CSession& session) const
    {
        CFigures figures(session, "samplerate");
        const auto value = ReadArgument<KW_ZEL_MODE>(mode);
        return figures
            .Add("sample rate", CZELDatabaseHelperHorizontal::GetSampleRate(value),
                 eKW_UNIT_SAMPLES_S)
            .Send();
    }
};

struct t_Decimation
{
    std::string time;
    std::string mode = "ZEL_A";
    std::string acquisition = "SAMPLE";
    std::string depth = "100";
    std::string recordLength = "AUTO";

    void Declare(CLI::App& command)
    {
        command.add_option("time", time, "Acquisition time in s")->required();
        command.add_option("--mode", mode, "KW_ZEL_MODE")->capture_default_str();
        command.add_option("--acquisition", acquisition, "KW_ZEL_ACQUISITION_MODE")
            ->capture_default_str();
        command.add_option("--history", depth, "KW_ZEL_HISTORY_DEPTH")->capture_default_str();
        command.add_option("--record", recordLength, "KW_ZEL_RECORD_LENGTH")->capture_default_str();
    }

    t_Answer Run(CSession& session) const;
};

t_Answer t_Decimation::Run(CSession& session) const
{
    using Helper = CZELDatabaseHelperHorizontal;
    CFigures figures(session, "decimation");
    const double seconds = ReadArgument(time, eKW_UNIT_FREQ_SEC, "TIME");
    const auto zelMode = ReadArgument<KW_ZEL_MODE>(mode);
    const auto acquisitionMode = ReadArgument<KW_ZEL_ACQUISITION_MODE>(acquisition);
    const auto historyDepth = ReadArgument<KW_ZEL_HISTORY_DEPTH>(depth);
    const auto selection = ReadArgument<KW_ZEL_RECORD_LENGTH>(recordLength);
    const double rate = Helper::GetSampleRate(zelMode);
    unsigned int decimation = 0;
    double length = 0.0;
    Helper::CalculateDecimationFactorAndRecordLength(seconds, rate, acquisitionMode, historyDepth,
                                                     selection, decimation, length);
    return figures.Add("sample rate", rate, eKW_UNIT_SAMPLES_S)
        .Add("samples", seconds * rate, eKW_UNIT_SAMPLES)
        .Add("sample budget",
             Helper::GetMaxNumOfSamplesAfterDecimation(rate, acquisitionMode, historyDepth,
                                                       selection),
             eKW_UNIT_SAMPLES)
        .Add("decimation", decimation)
        .Add("effective decimation",
             static_cast<double>(Helper::CalculateDecimationFactorEffective(zelMode, decimation)))
        .Add("record length", length, eKW_UNIT_SAMPLES)
        .Add("whole record length", Helper::AdjustRecordLength(length), eKW_UNIT_SAMPLES)
        .Send();
}

struct t_Boundaries
{
    std::string time;
    std::string reference = "50%";
    std::string position = "0s";
    std::string resolution = "0s";

    void Declare(CLI::App& command)
    {
        command.add_option("time", time, "Acquisition time in s")->required();
        command.add_option("--reference", reference, "Reference point in % from the left edge")
            ->capture_default_str();
        command.add_option("--position", position, "Horizontal position in s")
            ->capture_default_str();
        command
            .add_option("--resolution", resolution, "Time between two points in s; 0 is continuous")
            ->capture_default_str();
    }

    t_Answer Run(CSession& session) const
    {
        CFigures figures(session, "boundaries");
        double left = 0.0;
        double right = 0.0;
        CZELDatabaseHelperHorizontal::CalculateHorizontalBoundaries(
            ReadArgument(time, eKW_UNIT_FREQ_SEC, "TIME"),
            ReadWhole<unsigned short>(reference, eKW_UNIT_COUNT_PCT, "REFERENCE"),
            ReadArgument(position, eKW_UNIT_FREQ_SEC, "POSITION"),
            ReadArgument(resolution, eKW_UNIT_FREQ_SEC, "RESOLUTION"), left, right);
        return figures.Add("left", left, eKW_UNIT_FREQ_SEC)
            .Add("right", right, eKW_UNIT_FREQ_SEC)
            .Send();
    }
};

struct t_Scale
{
    std::string value;
    std::string divisions;

    void Declare(CLI::App& command)
    {
        command.add_option("value", value, "Scale in V/div, or with --divisions a range in V")
            ->required();
        command.add_option("--divisions", divisions, "Divisions that must show the range");
    }

    t_Answer Run(CSession& session) const
    {
        using Helper = CZELDatabaseHelperVertical;
        CFigures figures(session, "scale");
        if (!divisions.empty())
        {
            const double range = ReadArgument(value, eKW_UNIT_LEVEL_V, "VALUE");
            const auto count = ReadWhole<UINT32>(divisions, eKW_UNIT_DIV, "DIVISIONS");
            return figures
                .Add("smallest scale", Helper::GetNextHighestScale(range, count),
                     eKW_UNIT_LEVEL_V_DIV)
                .Send();
        }
        const double scale = ReadArgument(value, eKW_UNIT_LEVEL_V_DIV, "VALUE");
        return figures.Add("next highest", Helper::GetNextHighestScale(scale), eKW_UNIT_LEVEL_V_DIV)
            .Add("next lowest", Helper::GetNextLowestScale(scale), eKW_UNIT_LEVEL_V_DIV)
            .Send();
    }
};

struct t_Window
{
    std::string type;
    std::string length;

    void Declare(CLI::App& command)
    {
        command.add_option("type", type, "KW_WINDOW_TYPE")->required();
        command.add_option("--length", length, "Also the weights of a window of so many samples");
    }

    t_Answer Run(CSession& session) const
    {
        using Helper = CZELDatabaseHelperFFT;
        CFigures figures(session, "window");
        const auto window = ReadArgument<KW_WINDOW_TYPE>(type);
        int index = 0;
        for (const double coefficient : Helper::GetWindowCoeff(window))
        {
            figures.Add(QStringLiteral("a%1").arg(index++), coefficient);
        }
        figures.Add("bandwidth in bins", Helper::GetWindowFactor(window));
        figures.Add("length factor", Helper::GetWindowLengthFactor(window));
        const auto samples =
            length.empty() ? 0 : ReadWhole<UINT32>(length, eKW_UNIT_SAMPLES, "LENGTH");
        const auto weight = length.empty() ? std::function<double(UINT32)>()
                                           : Helper::GetWindowFunction(window, samples);
        for (UINT32 k = 0; k < samples; ++k)
        {
            figures.Add(QStringLiteral("w[%1]").arg(k), weight(k));
        }
        return figures.Send();
    }
};

struct t_Magnitude
{
    std::string value;
    std::string unit;
    std::string input = "VOLTAGE";
    std::string impedance = "50";
    bool inverse = false;

    void Declare(CLI::App& command)
    {
        command.add_option("value", value, "RMS magnitude in V or A; with --inverse a level in dB")
            ->required();
        command.add_option("unit", unit, "KW_FFT_MAGN_UNIT of the level")->required();
        command.add_option("--input", input, "KW_FFT_INPUT_UNIT")->capture_default_str();
        command.add_option("--impedance", impedance, "Reference impedance of dBm in Ω")
            ->capture_default_str();
        command.add_flag("--inverse", inverse, "From the level back to the magnitude");
    }

    t_Answer Run(CSession& session) const;
};

KW_UNIT GetLevelUnit(KW_FFT_MAGN_UNIT unit)
{
    switch (unit)
    {
    case eKW_FFT_MAGN_UNIT_DBM:
        return eKW_UNIT_LEVEL_DBM;
    case eKW_FFT_MAGN_UNIT_DBV:
        return eKW_UNIT_LEVEL_DBV;
    default:
        return eKW_UNIT_LEVEL_DBA;
    }
}

t_Answer t_Magnitude::Run(CSession& session) const
{
    CFigures figures(session, "magnitude");
    const auto magnitudeUnit = ReadArgument<KW_FFT_MAGN_UNIT>(unit);
    const auto inputUnit = ReadArgument<KW_FFT_INPUT_UNIT>(input);
    const KW_UNIT level = GetLevelUnit(magnitudeUnit);
    const KW_UNIT linear =
        inputUnit == eKW_FFT_INPUT_UNIT_CURRENT ? eKW_UNIT_LEVEL_A : eKW_UNIT_LEVEL_V;
    const auto convert = CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(
        inputUnit, magnitudeUnit, ReadArgument(impedance, eKW_UNIT_IMPEDANCE_OHM, "IMPEDANCE"),
        inverse);
    return figures
        .Add(inverse ? "magnitude" : "level",
             convert(ReadArgument(value, inverse ? level : linear, "VALUE")),
             inverse ? linear : level)
        .Send();
}

struct t_DownConversion
{
    std::string span;
    std::string center = "0";

    void Declare(CLI::App& command)
    {
        command.add_option("span", span, "Span in Hz")->required();
        command.add_option("center", center, "Center frequency in Hz")->capture_default_str();
    }

    t_Answer Run(CSession& session) const;
};

t_Answer t_DownConversion::Run(CSession& session) const
{
    using Helper = CZELDatabaseHelperDDC;
    CFigures figures(session, "ddc");
    const DDC::DecimationRate rate =
        Helper::CalculateDecimation(ReadArgument(span, eKW_UNIT_FREQ_HZ, "SPAN"));
    const DDC::NcoFrequency nco = Helper::CalculateNcoFrequency(
        ReadArgument(center, eKW_UNIT_FREQ_HZ, "CENTER"), rate.m_R_DDC);
    const DDC::Gain gain = Helper::CalculateGain(rate, nco);
    const DDC::HWSettings registers = Helper::CalculateHWSettingsDDC(rate, nco);
    return figures.Add("decimation", rate.m_R_DDC)
        .Add("fixed stage", rate.m_R_Fixed)
        .Add("CIC stage", rate.m_R_CIC1)
        .Add("FIR stage", rate.R_FIR)
        .Add("table row", rate.m_LUTRow)
        .Add("coarse frequency", nco.m_CoarseFrequency, eKW_UNIT_FREQ_HZ)
        .Add("coarse increment", nco.m_CoarseIncrement)
        .Add("fine frequency", nco.m_FineFrequency, eKW_UNIT_FREQ_HZ)
        .Add("fine increment", nco.m_FineIncrement)
        .Add("frequency shift", Helper::CalculateFrequencyShift(nco), eKW_UNIT_FREQ_HZ)
        .Add("gain", gain.m_Gain_DDC)
        .Add("gain of scale", gain.m_Gain_Scale)
        .Add("gain of shift", gain.m_Gain_Shift)
        .Add("gain of CIC", gain.m_Gain_CIC1)
        .Add("gain of FIR", gain.m_Gain_FIR)
        .Add("CIC rate register", registers.m_CIC1Rate)
        .Add("CIC shift register", registers.m_CIC1Shift)
        .Add("coarse phase register", registers.m_CoarsePhase)
        .Add("fine phase register", registers.m_FinePhase)
        .Send();
}
} // namespace

void AddSignalCalculations(CLI::App& calc, t_Run& run)
{
    AddCommand<t_SampleRate>(calc, run, "samplerate", "Sample rate of a sample-rate mode", "");
    AddCommand<t_Decimation>(calc, run, "decimation",
                             "Decimation and record length of an acquisition time",
                             "Example:\n  zelctl calc decimation 20ms --acquisition PEAK");
    AddCommand<t_Boundaries>(calc, run, "boundaries", "Screen boundaries relative to the trigger",
                             "Example:\n  zelctl calc boundaries 10us --reference 20%");
    AddCommand<t_Scale>(calc, run, "scale", "Neighbours on the ladder of vertical scales",
                        "Example:\n  zelctl calc scale 300mV/div");
    AddCommand<t_Window>(calc, run, "window", "Coefficients and weights of an FFT window",
                         "Example:\n  zelctl calc window HANN --length 8");
    AddCommand<t_Magnitude>(calc, run, "magnitude", "Level in dB of a magnitude, and back",
                            "Examples:\n  zelctl calc magnitude 223.6mV DBM\n"
                            "  zelctl calc magnitude --inverse 0dBm DBM");
    AddCommand<t_DownConversion>(calc, run, "ddc", "Down-converter settings of a span and center",
                                 "Example:\n  zelctl calc ddc 100kHz 10.7MHz");
}
