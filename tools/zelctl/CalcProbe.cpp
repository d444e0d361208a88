// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsHardware.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

namespace
{
using CommonHelper = CZELDatabaseHelperCommon;

/** The unit that a temperature is written in; Celsius when none is. */
KW_UNIT GetTemperatureUnit(const std::string& text)
{
    const char last = text.empty() ? '\0' : text.back();
    return last == 'K' ? eKW_UNIT_TEMPERATURE_K
                       : (last == 'F' ? eKW_UNIT_TEMPERATURE_F : eKW_UNIT_TEMPERATURE_DEG);
}

void Temperature(const CArguments& in, CFigures& out)
{
    const double celsius = CommonHelper::ConvertResistance2Temperature(
        in.Enum<KW_PROBE_TYPE>("probe"), in.Number("resistance", eKW_UNIT_IMPEDANCE_OHM));
    for (const KW_UNIT unit :
         {eKW_UNIT_TEMPERATURE_DEG, eKW_UNIT_TEMPERATURE_F, eKW_UNIT_TEMPERATURE_K})
    {
        out.Add(QStringLiteral("temperature in ") + KW_GetUnitText(unit),
                CommonHelper::ConvertTempCelsius(celsius, unit), unit);
    }
}

void Resistance(const CArguments& in, CFigures& out)
{
    const KW_UNIT unit = GetTemperatureUnit(in.Text("temperature"));
    const double celsius = CommonHelper::ConvertTemp2Celsius(in.Number("temperature", unit), unit);
    out.Add("resistance",
            CommonHelper::ConvertTemperature2Resistance(in.Enum<KW_PROBE_TYPE>("probe"), celsius),
            eKW_UNIT_IMPEDANCE_OHM);
}

CommonHelper::ProbeSettingsDb GetProbe(const CArguments& in)
{
    return {in.Enum<KW_PROBE_TYPE>("probe"), in.Number("--factor"), in.Enum<KW_UNIT>("--unit")};
}

void Probe(const CArguments& in, CFigures& out)
{
    const auto settings = CommonHelper::GetProbeSettingsScope(GetProbe(in));
    out.Add("factor", settings.factor)
        .Add("unit", GetEnumText(settings.unit))
        .Add("measured unit", GetEnumText(CommonHelper::GetProbeUnit(settings.unit)));
}

void MeterProbe(const CArguments& in, CFigures& out)
{
    KW_UNIT resultUnit = eKW_UNIT_NONE;
    const auto settings = CommonHelper::GetProbeSettingsDmm(
        in.Enum<KW_ZEL_DMM_MEAS_TYPE>("measurement"), GetProbe(in), resultUnit);
    out.Add("factor", settings.factor)
        .Add("unit", GetEnumText(settings.unit))
        .Add("unit of the reading", GetEnumText(resultUnit));
}

void ProbeFactor(const CArguments& in, CFigures& out)
{
    const auto unit = in.Enum<KW_UNIT>("unit");
    out.Add("multiplier", CommonHelper::ConvertProbeFactor(in.Number("factor"), unit));
}

void ProbeFactorUnit(const CArguments& in, CFigures& out)
{
    out.Add("unit", GetEnumText(CommonHelper::GetProbeFactorUnit(in.Enum<KW_UNIT>("measured"))));
}

void Calibration(const CArguments& in, CFigures& out)
{
    const double wanted = in.Number("frequency", eKW_UNIT_FREQ_HZ);
    const KW_ZEL_CAL_FREQ selection = CommonHelper::GetCalFrequency(wanted);
    out.Add("selection", GetEnumText(selection))
        .Add("frequency", CommonHelper::GetCalFrequency(selection), eKW_UNIT_FREQ_HZ);
}

void LowPassGain(const CArguments& in, CFigures& out)
{
    out.Add("gain", CommonHelper::GetLfGain_dB(in.Enum<KW_ZEL_LPF_GAIN>("step")),
            eKW_UNIT_LEVEL_DB);
}

void Overload(const CArguments&, CFigures& out)
{
    out.Add("relative to full scale", CommonHelper::GetOverloadFactor());
}
} // namespace

t_CalculationGroup GetProbeCalculations()
{
    const t_Argument thermometer{"probe", "Platinum thermometer, of KW_PROBE_TYPE"};
    const t_Argument probe{"probe", "KW_PROBE_TYPE"};
    const t_Argument factor{"--factor", "Factor of a user-defined probe", "1"};
    const t_Argument unit{"--unit", "KW_UNIT of a user-defined probe", "LEVEL_V"};
    return {"Probes and calibration",
            {{"temperature",
              "Temperature of a platinum thermometer",
              {"ConvertResistance2Temperature", "ConvertTempCelsius"},
              {thermometer, {"resistance", "Resistance in Ω"}},
              &Temperature,
              {"PT100 138.5"}},
             {"resistance",
              "Resistance of a platinum thermometer",
              {"ConvertTemperature2Resistance", "ConvertTemp2Celsius"},
              {thermometer, {"temperature", "Temperature in °C, or with its unit °F or K"}},
              &Resistance,
              {"PT1000 212°F"}},
             {"probe",
              "What a probe means for a channel",
              {"GetProbeSettingsScope", "GetProbeUnit"},
              {probe, factor, unit},
              &Probe,
              {"VOLTAGE_10_TO_1", "USER --factor 2.5 --unit LEVEL_A"}},
             {"meterprobe",
              "What a probe means for the meter",
              {"GetProbeSettingsDmm"},
              {{"measurement", "KW_ZEL_DMM_MEAS_TYPE"}, probe, factor, unit},
              &MeterProbe,
              {"DC_VOLT VOLTAGE_10_TO_1"}},
             {"probefactor",
              "Probe factor as a multiplier",
              {"ConvertProbeFactor"},
              {{"factor", "Factor as it is entered"}, {"unit", "KW_UNIT that it is entered in"}},
              &ProbeFactor,
              {"0.1 LEVEL_V_A"}},
             {"probefactorunit",
              "Unit in which the factor of a probe is entered",
              {"GetProbeFactorUnit"},
              {{"measured", "KW_UNIT of what the probe measures"}},
              &ProbeFactorUnit,
              {"LEVEL_A"}},
             {"calfrequency",
              "Calibration signal that fits a frequency",
              {"GetCalFrequency"},
              {{"frequency", "Frequency in Hz"}},
              &Calibration,
              {"5MHz"}},
             {"lowpassgain",
              "Gain correction of the low-pass filter",
              {"GetLfGain_dB"},
              {{"step", "KW_ZEL_LPF_GAIN"}},
              &LowPassGain,
              {"STEP_0"}},
             {"overload",
              "Level that counts as an overload",
              {"GetOverloadFactor"},
              {},
              &Overload,
              {""}}}};
}
