// SPDX-License-Identifier: MIT
#include "MeterBase/MeasurementBlockBase.h"

#include "KWEnumerationsMeter.h"

CMeasurementBlockBase::CMeasurementBlockBase(const std::string& name)
    : m_name(name), m_measurementSettings(-1, -1)
{
}

CMeasurementBlockBase::~CMeasurementBlockBase() = default;

t_RangeSettings CMeasurementBlockBase::GetRangeSettings(KW_ZEL_METER_RANGE range)
{
    return m_ranges[range];
}

CMeasurementBlockBase::t_RangeTable CMeasurementBlockBase::GetRangeTable()
{
    return m_ranges;
}

std::string CMeasurementBlockBase::GetName() const
{
    return m_name;
}

std::pair<INT32, INT32> CMeasurementBlockBase::GetMeasurementSettings() const
{
    return m_measurementSettings;
}
