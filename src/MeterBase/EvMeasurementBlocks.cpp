// SPDX-License-Identifier: MIT
#include "MeterBase/EvMeasurementBlocks.h"

#include "KWEnumerationsMeter.h"
#include "MeterBase/MeterMeasurementBaseData.h"

namespace
{
using t_Ranges = CMeasurementBlockBase::t_RangeTable;

constexpr std::pair<INT32, INT32> kDcPath(0, 0);
constexpr std::pair<INT32, INT32> kAcPath(0, 1);

constexpr KW_ZEL_DMM_CURRENT kNoCurrent = eKW_ZEL_DMM_CURRENT_NONE;
constexpr KW_ZEL_DMM_CURRENT k1mA = eKW_ZEL_DMM_CURRENT_1_MILLI_A;
constexpr KW_ZEL_DMM_CURRENT k100uA = eKW_ZEL_DMM_CURRENT_100_MICRO_A;
constexpr KW_ZEL_DMM_CURRENT k10uA = eKW_ZEL_DMM_CURRENT_10_MICRO_A;
constexpr KW_ZEL_DMM_CURRENT k1uA = eKW_ZEL_DMM_CURRENT_1_MICRO_A;
constexpr KW_ZEL_DMM_CURRENT k100nA = eKW_ZEL_DMM_CURRENT_100_NANO_A;

/** Input path of the voltage ranges, which every measurement at the voltage input shares. */
struct t_VoltagePath
{
    KW_ZEL_METER_RANGE range;
    double divider;
    INT32 gain;
    INT32 gainStage;
};

constexpr t_VoltagePath kVoltagePaths[] = {
    {eKW_ZEL_METER_RANGE_1, 0.1, 10, 1},
    {eKW_ZEL_METER_RANGE_10, 0.1, 1, 0},
    {eKW_ZEL_METER_RANGE_100, 0.01, 1, 0},
    {eKW_ZEL_METER_RANGE_1_KILO, 0.001, 1, 0},
};

double Nominal(KW_ZEL_METER_RANGE range)
{
    return CMeterMeasurementBaseData::GetRangeAsDoubleValue(range);
}

/** Limits are the given multiples of the nominal range. */
t_Ranges VoltageRanges(double lowerLimit, double upperLimit)
{
    t_Ranges ranges;
    for (const auto& [range, divider, gain, gainStage] : kVoltagePaths)
    {
        const double nominal = Nominal(range);
        ranges[range] = {
            nominal,   lowerLimit * nominal, upperLimit * nominal, divider, gain, gainStage, 1.0,
            kNoCurrent};
    }
    return ranges;
}

t_Ranges FrequencyRanges()
{
    t_Ranges ranges = VoltageRanges(0.0, 1.0);
    for (auto& [range, settings] : ranges)
    {
        settings.lowerLimit = 0.01;
        settings.upperLimit = 250000.0;
    }
    return ranges;
}

struct t_ResistancePath
{
    KW_ZEL_METER_RANGE range;
    double divider;
    INT32 gain;
    INT32 gainStage;
    KW_ZEL_DMM_CURRENT currentSource;
};

constexpr t_ResistancePath kResistancePaths[] = {
    {eKW_ZEL_METER_RANGE_1_KILO, 1.0, 1, 0, k1mA},
    {eKW_ZEL_METER_RANGE_10_KILO, 1.0, 1, 0, k100uA},
    {eKW_ZEL_METER_RANGE_100_KILO, 1.0, 1, 0, k10uA},
    {eKW_ZEL_METER_RANGE_1_MEGA, 1.0, 1, 0, k1uA},
    {eKW_ZEL_METER_RANGE_10_MEGA, 1.0, 1, 0, k100nA},
    {eKW_ZEL_METER_RANGE_100_MEGA, 0.1, 10, 1, k100nA},
};

t_Ranges ResistanceRanges()
{
    t_Ranges ranges;
    for (const auto& [range, divider, gain, gainStage, currentSource] : kResistancePaths)
    {
        const double nominal = Nominal(range);
        ranges[range] = {nominal, -nominal, nominal, divider, gain, gainStage, 1.0, currentSource};
    }
    return ranges;
}

struct t_CapacityPath
{
    KW_ZEL_METER_RANGE range;
    double rangeFactor;
    KW_ZEL_DMM_CURRENT currentSource;
};

constexpr t_CapacityPath kCapacityPaths[] = {
    {eKW_ZEL_METER_RANGE_10_NANO, 1.0, k10uA},  {eKW_ZEL_METER_RANGE_100_NANO, 1.0, k10uA},
    {eKW_ZEL_METER_RANGE_1_MICRO, 2.0, k10uA},  {eKW_ZEL_METER_RANGE_10_MICRO, 2.0, k100uA},
    {eKW_ZEL_METER_RANGE_100_MICRO, 2.0, k1mA}, {eKW_ZEL_METER_RANGE_1_MILLI, 4.0, k1mA},
    {eKW_ZEL_METER_RANGE_10_MILLI, 16.0, k1mA},
};

t_Ranges CapacityRanges()
{
    t_Ranges ranges;
    for (const auto& [range, rangeFactor, currentSource] : kCapacityPaths)
    {
        const double nominal = Nominal(range);
        ranges[range] = {nominal, 0.0, nominal, 0.1, 10, 1, rangeFactor, currentSource};
    }
    return ranges;
}
} // namespace

CEvMeasurementBlockVoltageAC::CEvMeasurementBlockVoltageAC() : CMeasurementBlockBase("VOLT:AC")
{
    m_measurementSettings = kAcPath;
    m_ranges = VoltageRanges(0.0, 1.0);
}

CEvMeasurementBlockVoltageDC::CEvMeasurementBlockVoltageDC() : CMeasurementBlockBase("VOLT:DC")
{
    m_measurementSettings = kDcPath;
    m_ranges = VoltageRanges(-1.0, 1.0);
}

CEvMeasurementBlockVoltageAD::CEvMeasurementBlockVoltageAD() : CMeasurementBlockBase("VOLT:AD")
{
    m_measurementSettings = kAcPath;
    m_ranges = VoltageRanges(0.0, 1.0);
}

CEvMeasurementBlockCapacity::CEvMeasurementBlockCapacity() : CMeasurementBlockBase("CAP")
{
    m_measurementSettings = kDcPath;
    m_ranges = CapacityRanges();
}

CEvMeasurementBlockContinuity::CEvMeasurementBlockContinuity() : CMeasurementBlockBase("CONT")
{
    m_measurementSettings = kDcPath;
    m_ranges[eKW_ZEL_METER_RANGE_1_KILO] = {1000.0, -1000.0, 1000.0, 0.1, 10, 1, 128.0, k1mA};
}

CEvMeasurementBlockDiode::CEvMeasurementBlockDiode() : CMeasurementBlockBase("DIODE")
{
    m_measurementSettings = kDcPath;
    m_ranges[eKW_ZEL_METER_RANGE_10] = {10.0, 0.0, 3.0, 0.1, 1, 0, 1.0, k1mA};
}

CEvMeasurementBlockFrequency::CEvMeasurementBlockFrequency() : CMeasurementBlockBase("FREQ")
{
    m_measurementSettings = kAcPath;
    m_ranges = FrequencyRanges();
}

CEvMeasurementBlockResistance::CEvMeasurementBlockResistance() : CMeasurementBlockBase("RESI")
{
    m_measurementSettings = kDcPath;
    m_ranges = ResistanceRanges();
}

CEvMeasurementBlockTemperature::CEvMeasurementBlockTemperature() : CMeasurementBlockBase("TEMP")
{
    m_measurementSettings = kDcPath;
    m_ranges[eKW_ZEL_METER_RANGE_1_KILO] = {1000.0, -1000.0, 1000.0, 1.0, 1, 0, 1.0, k1mA};
}
