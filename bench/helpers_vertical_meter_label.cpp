// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"
#include "MeterBase/MeterMeasurementBaseData.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <iterator>
#include <string>

namespace
{
using Common = CZELDatabaseHelperCommon;
using Vertical = CZELDatabaseHelperVertical;

/** Arguments change from call to call, so that neither compiler nor branch predictor knows them. */
template <typename T, std::size_t N>
class CCycle
{
public:
    explicit CCycle(const T (&values)[N]) : m_values(values) {}
    const T& Next() { return m_values[m_index++ % N]; }

private:
    const T (&m_values)[N];
    std::size_t m_index = 0;
};

constexpr double kScales[] = {0.3, 4.5e-3, 1.0, 720.0, 2.0, 9.9e-6, 55.0};
constexpr double kTemperatures[] = {-180.0, 25.0, 849.0, -1.0, 400.0};
constexpr double kResistances[] = {30.0, 110.0, 385.0, 99.0, 250.0};
constexpr double kMeterRanges[] = {0.1, 300.0, 10.0, 1.0, 30.0};
constexpr double kNominalRanges[] = {1.0, 1000.0, 10.0, 100.0};
constexpr KW_PROBE_TYPE kProbes[] = {eKW_PROBE_TYPE_VOLTAGE_10_TO_1, eKW_PROBE_TYPE_USER,
                                     eKW_PROBE_TYPE_CURRENT_1_V_PER_A};
constexpr double kCalFrequencies[] = {40e6, 1190.0, 150e3, 4.9e6};

void Vertical_NextHighestScale(benchmark::State& state)
{
    CCycle scales(kScales);
    for (auto _ : state)
        benchmark::DoNotOptimize(Vertical::GetNextHighestScale(scales.Next()));
}
BENCHMARK(Vertical_NextHighestScale);

void Vertical_NextLowestScale(benchmark::State& state)
{
    CCycle scales(kScales);
    for (auto _ : state)
        benchmark::DoNotOptimize(Vertical::GetNextLowestScale(scales.Next()));
}
BENCHMARK(Vertical_NextLowestScale);

void Meter_ProbeSettings(benchmark::State& state)
{
    CCycle probes(kProbes);
    KW_UNIT unit = eKW_UNIT_NONE;
    for (auto _ : state)
        benchmark::DoNotOptimize(Common::GetProbeSettingsDmm(
            eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT, {probes.Next(), 2.0, eKW_UNIT_LEVEL_V}, unit));
}
BENCHMARK(Meter_ProbeSettings);

void Probe_TemperatureToResistance(benchmark::State& state)
{
    CCycle temperatures(kTemperatures);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Common::ConvertTemperature2Resistance(eKW_PROBE_TYPE_PT100, temperatures.Next()));
}
BENCHMARK(Probe_TemperatureToResistance);

void Probe_ResistanceToTemperature(benchmark::State& state)
{
    CCycle resistances(kResistances);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Common::ConvertResistance2Temperature(eKW_PROBE_TYPE_PT100, resistances.Next()));
}
BENCHMARK(Probe_ResistanceToTemperature);

void Meter_RangeToVerticalScale(benchmark::State& state)
{
    CCycle ranges(kMeterRanges);
    for (auto _ : state)
        benchmark::DoNotOptimize(Common::ConvertMeterRange2VerticalScale(ranges.Next()));
}
BENCHMARK(Meter_RangeToVerticalScale);

void Calibration_FrequencySelection(benchmark::State& state)
{
    CCycle frequencies(kCalFrequencies);
    for (auto _ : state)
        benchmark::DoNotOptimize(Common::GetCalFrequency(frequencies.Next()));
}
BENCHMARK(Calibration_FrequencySelection);

void Meter_CatalogueBuild(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(CMeterMeasurementBaseData());
}
BENCHMARK(Meter_CatalogueBuild);

void Meter_CatalogueLookup(benchmark::State& state)
{
    CCycle ranges(kNominalRanges);
    CMeterMeasurementBaseData catalogue;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            catalogue.GetRangeSettings(eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT, ranges.Next()));
}
BENCHMARK(Meter_CatalogueLookup);

void Meter_VoltagePath(benchmark::State& state)
{
    CCycle ranges(kNominalRanges);
    double factor = 0.0;
    unsigned int pathCode = 0;
    for (auto _ : state)
    {
        Common::GetDMMVoltagePathSettings(eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT,
                                          eKW_PROBE_TYPE_VOLTAGE_10_TO_1, ranges.Next(), factor,
                                          pathCode);
        benchmark::DoNotOptimize(factor);
    }
}
BENCHMARK(Meter_VoltagePath);

struct t_SignalCase
{
    KW_SIGNAL_TRANSLATION_VALUE_TYPE type;
    UINT16 bitLength;
    double physical;
};
constexpr t_SignalCase kSignals[] = {
    {eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 12, 1234.0},
    {eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT, 16, -321.0},
    {eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT, 32, 12.75},
    {eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE, 64, 12.75},
};

void NameSignal(benchmark::State& state, const t_SignalCase& signal)
{
    state.SetLabel(GetStaticEnumNameInfo<KW_SIGNAL_TRANSLATION_VALUE_TYPE>()
                       .GetName(signal.type)
                       .toStdString());
}

void Label_RawValueOfSignal(benchmark::State& state)
{
    const t_SignalCase& signal = kSignals[state.range(0)];
    NameSignal(state, signal);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            getRawValue(signal.physical, signal.bitLength, signal.type, 0.25, 0.0));
}
BENCHMARK(Label_RawValueOfSignal)->DenseRange(0, std::size(kSignals) - 1);

void Label_PhysicalValueOfSignal(benchmark::State& state)
{
    const t_SignalCase& signal = kSignals[state.range(0)];
    NameSignal(state, signal);
    const std::string bits = getRawValue(signal.physical, signal.bitLength, signal.type, 0.25, 0.0);
    for (auto _ : state)
        benchmark::DoNotOptimize(getPhysicalValue(bits, signal.type, 0.25, 0.0));
}
BENCHMARK(Label_PhysicalValueOfSignal)->DenseRange(0, std::size(kSignals) - 1);

void Label_TextOfMessage(benchmark::State& state)
{
    CLabelListMessage message("Engine", "11", 0x123, 8);
    for (UINT32 bit = 0; bit < 64; bit += 8)
    {
        const CLabelListSignal signal(
            "Signal" + std::to_string(bit), bit, 8, eKW_ENDIANNESS_LITTLE_ENDIAN,
            eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 1.0, 0.0, 0.0, 255.0, "rpm");
        message.addSignal({signal.getSignalKey(), signal});
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(message.CreateMessageLabel());
    state.SetItemsProcessed(state.iterations() * 8);
}
BENCHMARK(Label_TextOfMessage);
} // namespace
