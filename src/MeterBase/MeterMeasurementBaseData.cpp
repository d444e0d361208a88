// SPDX-License-Identifier: MIT
#include "MeterBase/MeterMeasurementBaseData.h"

#include "ErrorReport.h"
#include "KWEnumerationsMeter.h"
#include "MatConstants.h"
#include "MeterBase/EvMeasurementBlocks.h"

namespace
{
constexpr char kRangeSource[] = "src/MeterBase";
constexpr char kLookupSource[] = "ifc/MeterBase";
} // namespace

CMeterMeasurementBaseData::CMeterMeasurementBaseData()
    : m_indexedTable{{0, {0.2, 2.8, 0.01, 0.986627}}, {1, {0.2, 2.8, 0.05, 0.986627}},
                     {2, {0.2, 1.2, 0.2, 0.993776}},  {3, {0.3, 1.3, 0.2, 0.999289}},
                     {4, {0.5, 1.5, 0.5, 0.99991}},   {5, {1.0, 1.25, 2.0, 0.999899}},
                     {6, {0.7, 0.8, 10.0, 0.9999}}}
{
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT] = std::make_shared<CEvMeasurementBlockVoltageDC>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_AC_VOLT] = std::make_shared<CEvMeasurementBlockVoltageAC>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_AD_VOLT] = std::make_shared<CEvMeasurementBlockVoltageAD>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_FREQ] = std::make_shared<CEvMeasurementBlockFrequency>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_CAPACITY] = std::make_shared<CEvMeasurementBlockCapacity>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_OHM] = std::make_shared<CEvMeasurementBlockResistance>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_CONTINUITY] = std::make_shared<CEvMeasurementBlockContinuity>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_DIODE] = std::make_shared<CEvMeasurementBlockDiode>();
    m_blocks[eKW_ZEL_DMM_MEAS_TYPE_TEMP] = std::make_shared<CEvMeasurementBlockTemperature>();
}

CMeterMeasurementBaseData::~CMeterMeasurementBaseData() = default;

t_RangeSettings CMeterMeasurementBaseData::GetRangeSettings(KW_ZEL_DMM_MEAS_TYPE type,
                                                            double rangeValue)
{
    const auto block = m_blocks.find(type);
    if (block == m_blocks.end())
    {
        KW_REPORT_ERROR(QStringLiteral("No valid measurement selected."), kLookupSource);
        return {};
    }
    return block->second->GetRangeSettings(GetRangeAsEnumValue(rangeValue));
}

KW_ZEL_METER_RANGE CMeterMeasurementBaseData::GetRangeAsEnumValue(double value)
{
    const CEnumNameInfo& table = GetStaticEnumNameInfo<KW_ZEL_METER_RANGE>();
    for (INT32 range = 0; range < table.GetEnumSize(); ++range)
    {
        if (CMatConstants::AreEqual(value, table.GetNumber(range).value_or(0.0)))
            return static_cast<KW_ZEL_METER_RANGE>(range);
    }
    KW_REPORT_ERROR(QStringLiteral("Invalid Range selected: ") + KW_ReportText(value),
                    kRangeSource);
    return static_cast<KW_ZEL_METER_RANGE>(-1);
}

double CMeterMeasurementBaseData::GetRangeAsDoubleValue(KW_ZEL_METER_RANGE range)
{
    const auto nominal = GetStaticEnumNameInfo<KW_ZEL_METER_RANGE>().GetNumber(range);
    if (!nominal)
        KW_REPORT_ERROR(QStringLiteral("Invalid Range selected."), kRangeSource);
    return nominal.value_or(0.0);
}

const CMeterMeasurementBaseData::t_BlockMap& CMeterMeasurementBaseData::GetMeasurementBlocks() const
{
    return m_blocks;
}

const CMeterMeasurementBaseData::t_IndexedTable& CMeterMeasurementBaseData::GetIndexedTable() const
{
    return m_indexedTable;
}
