// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWEnumerationsDataFormats.h"
#include "KWEnumerationsHardware.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"

#include <QtGlobal>
#include <initializer_list>

/**
 * Probes, temperature sensors, meter paths, calibration signals and sample formats.
 *
 * Stateless; every function may be called from any thread. An illegal value is reported once, as
 * an error from "src/IKWFunctionZELHelpers" that carries the reporting function's signature, and
 * answered with the fallback named at the function: nothing throws. Unless a function says so, it
 * allocates nothing when there is nothing to report. Numbers of enumeration values (probe factors,
 * test currents, frequencies, sizes) are those of the enumerations' tables.
 */
class KW_EXPORT CZELDatabaseHelperCommon
{
public:
    /** A probe as the settings store it. */
    struct ProbeSettingsDb
    {
        KW_PROBE_TYPE type; ///< the other two count for the user-defined probe only
        double userFactor;  ///< of a user-defined probe, from the input voltage to the quantity
        KW_UNIT userUnit;   ///< of a user-defined probe: volt (28) or ampere (42)
    };

    /** What a probe means for the channel or meter that it is connected to. */
    struct ProbeSettings
    {
        double factor = 1.0;                 ///< from the input voltage to the measured quantity
        KW_UNIT unit = eKW_UNIT_LEVEL_V_DIV; ///< tells voltage, current and meter results apart
        UINT32 attributes = 0; ///< for the caller's use; carried from scope to meter unchanged
    };

    // Probes ---------------------------------------------------------------------------------

    /** Signal level that counts as an overload, relative to full scale: 1.1. */
    static double GetOverloadFactor();

    /** A probe factor as a multiplier: `factor` for unit 91 (V/V), 1 / factor for unit 95 (V/A,
        where a factor of zero gives an infinity of its sign). Any other unit reports "Unknown
        probe unit= " and its number, and gives `factor`. */
    static double ConvertProbeFactor(const double& factor, KW_UNIT factorUnit);

    /** Unit measured by a probe: 77 gives volt (28), 78 gives ampere (42). Any other unit reports
        "Unknown probe factor unit= " and its number, and gives volt. Takes the units that
        GetProbeSettingsScope answers, not those of GetProbeFactorUnit. */
    static KW_UNIT GetProbeUnit(KW_UNIT factorUnit);

    /** Unit in which the factor of a probe is entered: volt (28) gives V/V (91), ampere (42) gives
        V/A (95). Any other unit reports "Unknown probe unit= " and its number, and gives V/V. */
    static KW_UNIT GetProbeFactorUnit(KW_UNIT measuredUnit);

    /** Settings that a probe implies for a channel. Voltage probes (types 0 to 5) have their
        attenuation and unit 77, current probes (7 to 12) their amperes per volt and unit 78, the
        user-defined probe (18) the user's factor with unit 77 for volt and 78 for ampere. A
        user-defined probe of another unit reports "Unknown probe unit= " and its number, and has
        unit 77; any other type, thermometers included, reports "Unknown probe type= " and its
        number, and has factor 1 and unit 77. */
    static ProbeSettings GetProbeSettingsScope(const ProbeSettingsDb& probe);

    /**
     * Settings that a probe implies for the meter.
     *
     * Voltages (types 0 to 2) and frequency (6) take the probe as GetProbeSettingsScope does, in
     * the meter's units 106 (volt, for 77) and 107 (ampere, for 78). All others ignore the probe's
     * factor: capacitance is in unit 51, continuity and resistance in 108, the diode test in 28.
     * Temperature (8) is in degrees Celsius for probe type 13, Fahrenheit for 14, and for every
     * other sensor in the unit that the meter is set to (Celsius while no tree is alive): that
     * read follows the tree's rules for enumerations and never builds a tree. Any other
     * measurement type reports "Invalid measurement type!" and gives factor 1 and unit 65.
     *
     * @param[out] resultUnit unit of the reading: the settings' unit, but hertz (56) for frequency
     */
    static ProbeSettings GetProbeSettingsDmm(KW_ZEL_DMM_MEAS_TYPE measType,
                                             const ProbeSettingsDb& probe, KW_UNIT& resultUnit);

    // Temperature ----------------------------------------------------------------------------

    /** A temperature in °C as one in `target`: 32 + T × 1.8 for Fahrenheit (85), T + 273.15 for
        kelvin (86); any other unit leaves it unchanged. */
    static double ConvertTempCelsius(const double& celsius, KW_UNIT target);

    /** A temperature in `unit` as one in °C: (v − 32) / 1.8 for Fahrenheit (85), v − 273.15 for
        kelvin (86); any other unit leaves it unchanged. */
    static double ConvertTemp2Celsius(const double& value, KW_UNIT unit);

    /**
     * Resistance in ohm of a platinum thermometer (types 15 to 17) at a temperature in °C, by the
     * Callendar–Van Dusen equation with A = 3.9083e-3, B = −5.775e-7 and C = −4.183e-12.
     *
     * From 0 to 850 °C R = (−c2 + u²) / c3 with u = −c1 + T × c4, the completed square of
     * R0 × (1 + A × T + B × T²) in the sensor's own coefficients. Everywhere else
     * R = (1 + T × A + ((T − R0) × C × T³ + T² × B)) × R0. The third-order term holds (T − R0):
     * that is the standard's (T − 100) for the Pt100 only, and wanted for the other two as well,
     * because the instrument's calibration data were taken with it. The coefficients are rounded:
     * at 0 °C the result is R0 within 5e-7 of it.
     *
     * Any other probe type reports "Unsupported temperature probe." and gives 0.0.
     */
    static double ConvertTemperature2Resistance(KW_PROBE_TYPE probeType, double celsius);

    /**
     * Temperature in °C of a platinum thermometer (types 15 to 17) of the given resistance in ohm:
     * from R0 up the root of the quadratic above, (c1 + sqrt(c2 + c3 × R)) / c4, below R0 a
     * polynomial of the fifth order in R. At R0 the result is 0 °C within 2e-4. A resistance
     * beyond the quadratic's vertex (7.6 × R0) gives NaN; a resistance of NaN gives 0.0.
     *
     * Any other probe type reports "Unsupported temperature probe." and gives 0.0.
     */
    static double ConvertResistance2Temperature(KW_PROBE_TYPE probeType, const double& resistance);

    // Meter ----------------------------------------------------------------------------------

    /** Calibrated current in ampere of a test current path; 1.0 for path 0, which has none. An
        illegal path reports "Invalid current path: " and its number, and gives 1.0. */
    static double GetDMMCurrent(KW_ZEL_DMM_CURRENT path);

    /** Vertical scale, in units per division, on which a channel serves as a meter of the given
        range: 0.525 × range for 0.1, 0.3, 1, 3, … 100, and 109.5 for 300. The last one breaks the
        rule and is wanted: the highest range has a scale of its own, exactly this. The range is
        compared in whole thousandths, rounded half away from zero. Any other range reports
        "Invalid Range: " and the range, and gives 0.0. */
    static double ConvertMeterRange2VerticalScale(const double& range);

    /** The same for the counter. Reports carry the signature of ConvertMeterRange2VerticalScale. */
    static double ConvertCounterRange2VerticalScale(const double& range);

    /** Sample rate of the meter's A/D converter in samples per second: 1e6, 2e6 or 4e6, as the
        meter is set (1e6 while no tree is alive). An illegal setting reports "Invalid ADC sample
        rate" and gives 1.0. Reads one enumeration by the tree's rules and never builds a tree. */
    static double GetSamplingRateADC();

    /**
     * Settings of the meter's voltage input: AC, DC and AC+DC voltage (types 0 to 2) and frequency
     * (6), in the ranges 1, 10, 100 and 1000 V. Builds a meter catalogue, hence allocates.
     *
     * @param range nominal range as the catalogue of that measurement type has it
     * @param[out] factor measured quantity per volt at the converter: probe factor / (divider ×
     *             gain). The factor of a user-defined probe is not known here and counts as 1.
     * @param[out] pathCode switches of the path: bits 0 and 1 the tap of the divider (1 for ÷10,
     *             2 for ÷100, 3 for ÷1000), bit 2 the ×10 stage, bit 3 the AC path
     *
     * Each failure is one report and leaves factor 1.0 and code 0: "Invalid measurement type!" for
     * all other types, "Invalid Range selected: " and the range when it is no decade (from
     * "src/MeterBase"), "Invalid Range: " and the range when the input lacks it. An unknown probe
     * type is reported as in GetProbeSettingsScope, and its factor of 1 used.
     */
    static void GetDMMVoltagePathSettings(const KW_ZEL_DMM_MEAS_TYPE& measType,
                                          const KW_PROBE_TYPE& probeType, const double& range,
                                          double& factor, unsigned int& pathCode);

    // Signals and formats --------------------------------------------------------------------

    /** Gain correction of the low-pass filter in dB. An illegal value reports "Undefined enum
        value." and gives 0.0. */
    static double GetLfGain_dB(KW_ZEL_LPF_GAIN gain);

    /** Frequency of the calibration signal in Hz, 0.0 for off. An illegal value reports "Undefined
        enum value." and gives 0.0. */
    static double GetCalFrequency(KW_ZEL_CAL_FREQ selection);

    /** The calibration signal that fits a frequency in Hz: the first selection F, highest first,
        with |F − frequency| / F below 0.1. When none fits, reports "No cal frequency matches the
        required frequency." and gives selection 0 (off). */
    static KW_ZEL_CAL_FREQ GetCalFrequency(double frequency);

    /** Bytes per sample of a block transfer; 0 for text, whose samples have no fixed size. An
        illegal format reports "unsupported format: " and its number, and gives 0. */
    static unsigned int GetNOfBytesPerSample(KW_DATAFORMAT format);

    /** Bytes per sample of a signal in memory. An illegal format reports "Unsupported sample
        format." and gives 1, so that it can serve as a divisor. */
    static unsigned int GetSampleSize(KW_SIGNAL_FORMAT format);

    // Limits ---------------------------------------------------------------------------------

    /**
     * Moves both limits of a numeric property, in the order that never leaves the minimum above
     * the maximum: the minimum first when the present minimum lies above the new maximum, else the
     * maximum first. The comparison is plain, as the property's own check of its limits is.
     *
     * TProperty is anything with GetMin(), SetMin(v) and SetMax(v); the last two answer a
     * KW_ACCEPTANCE. A code above 1 of either call is reported as "Error (code) by database
     * access: " and the statement, and returned; after a refused first call the second is skipped
     * and the limits are as they were. Otherwise the second call's code is returned.
     */
    template <typename TProperty, typename TValue>
    static KW_ACCEPTANCE SetMinMax(TProperty* pProperty, TValue min, TValue max)
    {
        const bool minFirst = pProperty->GetMin() > max;
        KW_ACCEPTANCE eAcc = eKW_ACC_OK;
        for (const bool isMin : {minFirst, !minFirst})
        {
            eAcc = isMin ? pProperty->SetMin(min) : pProperty->SetMax(max);
            if (!KW_IsAccepted(eAcc))
            {
                ReportRefusedLimit(eAcc, isMin, __LINE__, Q_FUNC_INFO);
                break;
            }
        }
        return eAcc;
    }

private:
    static void ReportRefusedLimit(KW_ACCEPTANCE eAcc, bool isMin, int line, const char* function);
};
