// SPDX-License-Identifier: MIT
#include "Buffers.h"
#include "Enumerations.h"

#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"

#include <complex>
#include <pybind11/complex.h>
#include <pybind11/functional.h>
#include <pybind11/stl.h>

namespace
{
/** Runs a calculation: some read a setting, all may report, which is a warning here. */
template <typename Work>
auto Calculate(Work&& work)
{
    CReports reports;
    auto result = Released(work);
    if (!Answer(eKW_ACC_OK, reports, Py_None))
    {
        throw py::error_already_set();
    }
    return result;
}

/** A function as Python calls it. */
template <typename Result, typename... Arguments>
auto Wrap(Result (*function)(Arguments...))
{
    return [function](std::decay_t<Arguments>... arguments)
    { return Calculate([&] { return std::decay_t<Result>(function(arguments...)); }); };
}

using t_Common = CZELDatabaseHelperCommon;
using t_Fft = CZELDatabaseHelperFFT;
using t_Ddc = CZELDatabaseHelperDDC;
using t_Horizontal = CZELDatabaseHelperHorizontal;
using t_Vertical = CZELDatabaseHelperVertical;

py::object Window(KW_WINDOW_TYPE type, UINT32 length)
{
    // More than a spectrum has points is no window, but would ask for memory.
    if (length > (1U << 24U))
    {
        throw py::value_error("a window has at most 2^24 samples");
    }
    auto weights = Calculate(
        [&]
        {
            const auto weight = t_Fft::GetWindowFunction(type, length);
            t_Numbers<double> result;
            result.numbers.reserve(length);
            for (UINT32 k = 0; k < length; ++k)
            {
                result.numbers.push_back(weight(k));
            }
            return result;
        });
    return ArrayOf(py::cast(std::move(weights)));
}

void AddCommon(py::module_& module)
{
    using Probe = t_Common::ProbeSettings;
    py::class_<Probe>(module, "ProbeSettings", "What a probe means for a channel or the meter.")
        .def_readonly("factor", &Probe::factor)
        .def_readonly("unit", &Probe::unit)
        .def_readonly("attributes", &Probe::attributes);
    py::class_<t_Common>(module, "Common", "Probes, temperature sensors, meter paths, formats.")
        .def_static("overload_factor", Wrap(&t_Common::GetOverloadFactor))
        .def_static("convert_probe_factor", Wrap(&t_Common::ConvertProbeFactor), py::arg("factor"),
                    py::arg("unit"))
        .def_static("probe_unit", Wrap(&t_Common::GetProbeUnit), py::arg("unit"))
        .def_static("probe_factor_unit", Wrap(&t_Common::GetProbeFactorUnit), py::arg("unit"))
        .def_static(
            "probe_settings_scope",
            [](KW_PROBE_TYPE type, double factor, KW_UNIT unit) {
                return Calculate(
                    [&] {
                        return t_Common::GetProbeSettingsScope({type, factor, unit});
                    });
            },
            py::arg("type"), py::arg("user_factor") = 1.0, py::arg("user_unit") = 28)
        .def_static(
            "probe_settings_meter",
            [](KW_ZEL_DMM_MEAS_TYPE measurement, KW_PROBE_TYPE type, double factor, KW_UNIT unit)
            {
                return Calculate(
                    [&]
                    {
                        KW_UNIT result{};
                        auto probe = t_Common::GetProbeSettingsDmm(measurement,
                                                                   {type, factor, unit}, result);
                        return std::pair(probe, result);
                    });
            },
            py::arg("measurement"), py::arg("type"), py::arg("user_factor") = 1.0,
            py::arg("user_unit") = 28)
        .def_static("from_celsius", Wrap(&t_Common::ConvertTempCelsius), py::arg("celsius"),
                    py::arg("unit"))
        .def_static("to_celsius", Wrap(&t_Common::ConvertTemp2Celsius), py::arg("value"),
                    py::arg("unit"))
        .def_static("temperature_to_resistance", Wrap(&t_Common::ConvertTemperature2Resistance),
                    py::arg("probe"), py::arg("celsius"))
        .def_static("resistance_to_temperature", Wrap(&t_Common::ConvertResistance2Temperature),
                    py::arg("probe"), py::arg("resistance"))
        .def_static("meter_current", Wrap(&t_Common::GetDMMCurrent), py::arg("path"))
        .def_static("meter_range_to_scale", Wrap(&t_Common::ConvertMeterRange2VerticalScale),
                    py::arg("range"))
        .def_static("counter_range_to_scale", Wrap(&t_Common::ConvertCounterRange2VerticalScale),
                    py::arg("range"))
        .def_static("meter_sample_rate", Wrap(&t_Common::GetSamplingRateADC))
        .def_static(
            "meter_voltage_path",
            [](KW_ZEL_DMM_MEAS_TYPE measurement, KW_PROBE_TYPE probe, double range)
            {
                return Calculate(
                    [&]
                    {
                        double factor = 1.0;
                        unsigned int code = 0;
                        t_Common::GetDMMVoltagePathSettings(measurement, probe, range, factor,
                                                            code);
                        return std::pair(factor, code);
                    });
            },
            py::arg("measurement"), py::arg("probe"), py::arg("range"))
        .def_static("low_pass_gain_db", Wrap(&t_Common::GetLfGain_dB), py::arg("gain"))
        .def_static("calibration_frequency",
                    Wrap(static_cast<double (*)(KW_ZEL_CAL_FREQ)>(&t_Common::GetCalFrequency)),
                    py::arg("selection"))
        .def_static("calibration_selection",
                    Wrap(static_cast<KW_ZEL_CAL_FREQ (*)(double)>(&t_Common::GetCalFrequency)),
                    py::arg("frequency"))
        .def_static("bytes_per_sample", Wrap(&t_Common::GetNOfBytesPerSample), py::arg("format"))
        .def_static("sample_size", Wrap(&t_Common::GetSampleSize), py::arg("format"));
}

void AddFft(py::module_& module)
{
    py::class_<t_Fft>(module, "FFT", "Sizes, windows, magnitudes and display ranges of spectra.")
        .def_static("size", Wrap(&t_Fft::GetFFTSize), py::arg("span"))
        .def_static("window", &Window, py::arg("type"), py::arg("length"))
        .def_static("window_coefficients", Wrap(&t_Fft::GetWindowCoeff), py::arg("type"))
        .def_static("window_factor", Wrap(&t_Fft::GetWindowFactor), py::arg("type"))
        .def_static("window_length_factor", Wrap(&t_Fft::GetWindowLengthFactor), py::arg("type"))
        .def_static("magnitude_db", Wrap(&t_Fft::ConvertMagnitudeDBFunction), py::arg("input"),
                    py::arg("unit"), py::arg("impedance") = 50.0, py::arg("inverse") = false)
        .def_static(
            "magnitude",
            [](std::complex<float> sample) {
                return t_Fft::Abs({sample.real(), sample.imag()});
            },
            py::arg("sample"))
        .def_static("frequency_range", Wrap(&t_Fft::GetFrequencyRange), py::arg("scaling"),
                    py::arg("minimum_frequency"), py::arg("sample_rate"), py::arg("bandwidth"))
        .def_static("input_unit", Wrap(&t_Fft::GetInputUnitFromProbeSettingsScope),
                    py::arg("probe"), py::arg("user_unit"))
        .def_static("analog_source", Wrap(&t_Fft::GetAnalogSourceChannel), py::arg("channel"))
        .def_static("source", Wrap(&t_Fft::GetSourceChannel), py::arg("channel"));
}

void AddDdc(py::module_& module)
{
    using Rate = DDC::DecimationRate;
    py::class_<Rate>(module, "DecimationRate", "Decimation of each stage.")
        .def_readonly("total", &Rate::m_R_DDC)
        .def_readonly("fixed", &Rate::m_R_Fixed)
        .def_readonly("cic1", &Rate::m_R_CIC1)
        .def_readonly("fir", &Rate::R_FIR)
        .def_readonly("row", &Rate::m_LUTRow);
    using Nco = DDC::NcoFrequency;
    py::class_<Nco>(module, "NcoFrequency", "Settings of the two oscillators.")
        .def_readonly("coarse", &Nco::m_CoarseFrequency)
        .def_readonly("coarse_increment", &Nco::m_CoarseIncrement)
        .def_readonly("fine", &Nco::m_FineFrequency)
        .def_readonly("fine_increment", &Nco::m_FineIncrement);
    using Gain = DDC::Gain;
    py::class_<Gain>(module, "Gain", "Gain of the chain.")
        .def_readonly("total", &Gain::m_Gain_DDC)
        .def_readonly("scale", &Gain::m_Gain_Scale)
        .def_readonly("shift", &Gain::m_Gain_Shift)
        .def_readonly("cic1", &Gain::m_Gain_CIC1)
        .def_readonly("fir", &Gain::m_Gain_FIR);
    using Registers = DDC::HWSettings;
    py::class_<Registers>(module, "Registers", "Register values.")
        .def_readonly("cic1_rate", &Registers::m_CIC1Rate)
        .def_readonly("cic1_shift", &Registers::m_CIC1Shift)
        .def_readonly("coarse_phase", &Registers::m_CoarsePhase)
        .def_readonly("fine_phase", &Registers::m_FinePhase);
    py::class_<t_Ddc>(module, "DDC", "The digital down-converter of narrow spans.")
        .def_static("decimation", Wrap(&t_Ddc::CalculateDecimation), py::arg("span"))
        .def_static("decimation_by_table", Wrap(&t_Ddc::CalculateDecimationWithLUT),
                    py::arg("span"))
        .def_static("decimation_computed", Wrap(&t_Ddc::CalculateDecimationManually),
                    py::arg("span"))
        .def_static("table_row", Wrap(&t_Ddc::SearchRowIndexInLUT), py::arg("span"))
        .def_static("cic1_rate", Wrap(&t_Ddc::SearchDecimationRateCic1), py::arg("rate_ratio"))
        .def_static("nco_frequency", Wrap(&t_Ddc::CalculateNcoFrequency), py::arg("center"),
                    py::arg("decimation"))
        .def_static("frequency_shift", Wrap(&t_Ddc::CalculateFrequencyShift), py::arg("nco"))
        .def_static("gain", Wrap(&t_Ddc::CalculateGain), py::arg("rate"), py::arg("nco"))
        .def_static("registers", Wrap(&t_Ddc::CalculateHWSettingsDDC), py::arg("rate"),
                    py::arg("nco"));
}

py::tuple DecimationAndLength(double time, double rate, KW_ZEL_ACQUISITION_MODE mode,
                              KW_ZEL_HISTORY_DEPTH depth, KW_ZEL_RECORD_LENGTH selection)
{
    unsigned int decimation = 0;
    double length = 0.0;
    Calculate(
        [&]
        {
            return t_Horizontal::CalculateDecimationFactorAndRecordLength(
                time, rate, mode, depth, selection, decimation, length);
        });
    return py::make_tuple(decimation, length);
}

py::tuple SlowDecimationAndLength(double time, double analogRate, double digitalRate,
                                  KW_ZEL_ACQUISITION_MODE mode, KW_ZEL_HISTORY_DEPTH depth,
                                  KW_ZEL_RECORD_LENGTH selection)
{
    unsigned int analog = 0;
    unsigned int digital = 0;
    double analogLength = 0.0;
    double digitalLength = 0.0;
    Calculate(
        [&]
        {
            t_Horizontal::CalculateDecimationFactorAndRecordLengthAnalogAndDigitalSlowOrRollMode(
                time, analogRate, digitalRate, mode, depth, selection, analog, digital,
                analogLength, digitalLength);
            return true;
        });
    return py::make_tuple(py::make_tuple(analog, analogLength),
                          py::make_tuple(digital, digitalLength));
}

py::tuple LimitDecimation(double factor)
{
    bool isLimited = false;
    const unsigned int limited = t_Horizontal::LimitDecimationFactor(factor, isLimited);
    return py::make_tuple(limited, isLimited);
}

/** What follows from the length of a record. */
struct t_RecordFacts
{
    UINT32 recordLength = 0;
    UINT32 traceLength = 0;
    double interpolationFactor = 1.0;
    bool isHardwareInterpolation = false;
    double resolution = 0.0;
};

t_RecordFacts Dependent(double samples, UINT32 selector, double time, double requiredPoints)
{
    return Calculate(
        [&]
        {
            t_RecordFacts facts;
            t_Horizontal::CalculateDependentHorizontalSettings(
                samples, selector, time, requiredPoints, facts.recordLength, facts.traceLength,
                facts.interpolationFactor, facts.isHardwareInterpolation, facts.resolution);
            return facts;
        });
}

py::tuple Boundaries(double time, UINT16 percent, double position, double resolution)
{
    double left = 0.0;
    double right = 0.0;
    t_Horizontal::CalculateHorizontalBoundaries(time, percent, position, resolution, left, right);
    return py::make_tuple(left, right);
}

py::tuple ZoomBoundaries(double width, double centre)
{
    double left = 0.0;
    double right = 0.0;
    t_Horizontal::CalculateHorizontalBoundariesZoom(width, centre, left, right);
    return py::make_tuple(left, right);
}

py::tuple Zoom(UINT32 length, double zoom, double interpolation, UINT32 minimum)
{
    unsigned int points = 0;
    double factor = 1.0;
    Calculate(
        [&]
        {
            return t_Horizontal::CalculateZoomParameter(length, zoom, interpolation, minimum,
                                                        points, factor);
        });
    return py::make_tuple(points, factor);
}

void AddHorizontal(py::module_& module)
{
    py::class_<t_RecordFacts>(module, "RecordFacts", "What follows from the length of a record.")
        .def_readonly("record_length", &t_RecordFacts::recordLength)
        .def_readonly("trace_length", &t_RecordFacts::traceLength)
        .def_readonly("interpolation_factor", &t_RecordFacts::interpolationFactor)
        .def_readonly("is_hardware_interpolation", &t_RecordFacts::isHardwareInterpolation)
        .def_readonly("resolution", &t_RecordFacts::resolution);
    py::class_<t_Horizontal>(module, "Horizontal", "Calculations of the time base.")
        .def_static("sample_rate", Wrap(&t_Horizontal::GetSampleRate), py::arg("mode"))
        .def_static("effective_decimation", Wrap(&t_Horizontal::CalculateDecimationFactorEffective),
                    py::arg("mode"), py::arg("decimation"))
        .def_static("history_traces", Wrap(&t_Horizontal::GetNumberOfHistoryTraces),
                    py::arg("depth"))
        .def_static("sample_budget", Wrap(&t_Horizontal::GetMaxNumOfSamplesAfterDecimation),
                    py::arg("sample_rate"), py::arg("acquisition_mode"), py::arg("history_depth"),
                    py::arg("record_length"))
        .def_static("decimation_factor", Wrap(&t_Horizontal::CalculateDecimationFactor),
                    py::arg("samples"), py::arg("max_points"))
        .def_static("decimation_and_length", &DecimationAndLength, py::arg("acquisition_time"),
                    py::arg("sample_rate"), py::arg("acquisition_mode"), py::arg("history_depth"),
                    py::arg("record_length"))
        .def_static("slow_decimation_and_length", &SlowDecimationAndLength,
                    py::arg("acquisition_time"), py::arg("analog_rate"), py::arg("digital_rate"),
                    py::arg("acquisition_mode"), py::arg("history_depth"), py::arg("record_length"))
        .def_static("limited_decimation", &LimitDecimation, py::arg("factor"))
        .def_static("record_facts", &Dependent, py::arg("samples"), py::arg("selector"),
                    py::arg("acquisition_time"), py::arg("required_points"))
        .def_static("adjusted_record_length", Wrap(&t_Horizontal::AdjustRecordLength),
                    py::arg("samples"))
        .def_static("interpolation_factor", Wrap(&t_Horizontal::CalculateInterpolationFactor),
                    py::arg("record_length"), py::arg("required_points"))
        .def_static("pre_trigger_samples", Wrap(&t_Horizontal::CalculateNbPreTriggerSamples),
                    py::arg("acquisition_time"), py::arg("record_length"), py::arg("left"))
        .def_static("boundaries", &Boundaries, py::arg("acquisition_time"),
                    py::arg("reference_percent"), py::arg("position"), py::arg("resolution"))
        .def_static("right", Wrap(&t_Horizontal::GetRightHorizontalBoudary), py::arg("left"),
                    py::arg("width"))
        .def_static("zoom_boundaries", &ZoomBoundaries, py::arg("width"), py::arg("centre"))
        .def_static("zoom_points", &Zoom, py::arg("record_length"), py::arg("zoom_factor"),
                    py::arg("interpolation_factor"), py::arg("minimum_points"));
}

void AddVertical(py::module_& module)
{
    py::class_<t_Vertical>(module, "Vertical", "The amplitude side of the screen.")
        .def_static("value_range", Wrap(&t_Vertical::GetPhysicalValueRange), py::arg("scale"),
                    py::arg("divisions"))
        .def_static("value_offset", Wrap(&t_Vertical::GetPhysicalValueOffset), py::arg("offset"),
                    py::arg("position"), py::arg("scale"))
        .def_static("next_higher_scale",
                    Wrap(static_cast<double (*)(const double&)>(&t_Vertical::GetNextHighestScale)),
                    py::arg("scale"))
        .def_static("range_between", Wrap(&t_Vertical::GetRangeFromTopBottom), py::arg("top"),
                    py::arg("bottom"))
        .def_static("offset_between", Wrap(&t_Vertical::GetOffsetFromTopBottom), py::arg("top"),
                    py::arg("bottom"))
        .def_static(
            "scale_for_range",
            Wrap(static_cast<double (*)(const double&, UINT32)>(&t_Vertical::GetNextHighestScale)),
            py::arg("range"), py::arg("divisions"))
        .def_static("next_lower_scale", Wrap(&t_Vertical::GetNextLowestScale), py::arg("scale"));
}
} // namespace

void AddHelpers(py::module_& module)
{
    py::class_<t_Numbers<double>>(module, "Doubles", "Numbers, by the buffer protocol.",
                                  py::buffer_protocol())
        .def_buffer(&t_Numbers<double>::Info);
    AddCommon(module);
    AddFft(module);
    AddDdc(module);
    AddHorizontal(module);
    AddVertical(module);
    namespace App = NApplicationDefinitions;
    module.def("is_analog_channel", Wrap(&App::IsAnalogChannel), py::arg("channel"))
        .def("is_digital_channel", Wrap(&App::IsDigitalChannel), py::arg("channel"))
        .def("is_serial_bus_channel", Wrap(&App::IsSerialBusChannel), py::arg("channel"))
        .def("is_hardware_input", Wrap(&App::IsHardwareInputChannel), py::arg("channel"))
        .def("is_acquisition_channel", Wrap(&App::IsAcquisitionChannel), py::arg("channel"))
        .def("is_analog_trigger", Wrap(&App::IsAnalogTrigger), py::arg("type"))
        .def("is_serial_bus_trigger", Wrap(&App::IsSerialBusTrigger), py::arg("type"))
        .def("is_logic_trigger", Wrap(&App::IsLogicTrigger), py::arg("type"))
        .def("requires_logic_trigger", Wrap(&App::RequiresLTG), py::arg("type"),
             py::arg("channel"));
}
