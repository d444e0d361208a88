// SPDX-License-Identifier: MIT
#include "Meter/PgMeterMeasurement.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsUnits.h"
#include "Names/MeterMeasurement.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

#include <algorithm>

using namespace NNames;

namespace
{
struct t_UnitOfReading
{
    KW_UNIT unit;
    KW_ZEL_DMM_UNIT ofReading;
};

constexpr t_UnitOfReading kUnitsOfReadings[] = {
    {eKW_UNIT_LEVEL_V, eKW_ZEL_DMM_UNIT_VOLT},
    {eKW_UNIT_METER_V, eKW_ZEL_DMM_UNIT_VOLT},
    {eKW_UNIT_LEVEL_A, eKW_ZEL_DMM_UNIT_AMPERE},
    {eKW_UNIT_METER_A, eKW_ZEL_DMM_UNIT_AMPERE},
    {eKW_UNIT_METER_OHM, eKW_ZEL_DMM_UNIT_OHM},
    {eKW_UNIT_FIELD_FARAD, eKW_ZEL_DMM_UNIT_FARAD},
    {eKW_UNIT_FREQ_HZ, eKW_ZEL_DMM_UNIT_HERTZ},
    {eKW_UNIT_TEMPERATURE_DEG, eKW_ZEL_DMM_UNIT_CELSIUS},
    {eKW_UNIT_TEMPERATURE_F, eKW_ZEL_DMM_UNIT_FAHRENHEIT},
    {eKW_UNIT_TEMPERATURE_K, eKW_ZEL_DMM_UNIT_KELVIN}};
} // namespace

t_Couplings CPgMeterMeasurement::Rules() const
{
    using M = CPgMeterMeasurement;
    static constexpr auto rows =
        Table<Names>(Changed(Names::Type) >> Do<&M::DropReadings>, Fresh<&M::DropReadings>);
    return rows;
}

void CPgMeterMeasurement::Follow(KW_UNIT atInput, std::optional<KW_UNIT> ofFunction)
{
    NRules::SetAvailable({m_pType}, !ofFunction);
    const bool isOther = WriteUnit(ofFunction ? *ofFunction : UnitOfQuantity(atInput));
    if (isOther)
    {
        DropReadings();
    }
}

void CPgMeterMeasurement::DropReadings()
{
    ResetStatistics();
    NRules::Invalidate({m_pActual, m_pRelative, m_pResolution, m_pTimeStamp});
    KW_CHECKED(m_pStatus->DbSet(eKW_ZEL_METER_STATUS_NO_READING));
    KW_CHECKED(m_pLimit->DbSet(eKW_ZEL_LIMIT_INSIDE));
}

void CPgMeterMeasurement::JudgeReading(double lowest, double highest)
{
    const bool isValid = m_pActual->GetValidity() == eKW_VALIDITY_VALID;
    KW_CHECKED(
        m_pLimit->DbSet(!isValid || (m_pActual->Get() >= lowest && m_pActual->Get() <= highest)
                            ? eKW_ZEL_LIMIT_INSIDE
                        : m_pActual->Get() > highest ? eKW_ZEL_LIMIT_OVERFLOW
                                                     : eKW_ZEL_LIMIT_UNDERFLOW));
}

void CPgMeterMeasurement::ResetStatistics()
{
    NRules::Invalidate({m_pMinimum, m_pMaximum, m_pAverage, m_pStandardDeviation});
    KW_CHECKED(m_pCount->DbSet(0));
}

KW_UNIT CPgMeterMeasurement::UnitOfQuantity(KW_UNIT atInput) const
{
    switch (m_pType->Get())
    {
    case eKW_ZEL_METER_TYPE_FREQUENCY:
        return eKW_UNIT_FREQ_HZ;
    case eKW_ZEL_METER_TYPE_CREST:
        return eKW_UNIT_NONE;
    default:
        return atInput;
    }
}

bool CPgMeterMeasurement::WriteUnit(KW_UNIT unit)
{
    const auto* const row =
        std::find_if(std::begin(kUnitsOfReadings), std::end(kUnitsOfReadings),
                     [unit](const t_UnitOfReading& pair) { return pair.unit == unit; });
    const bool wasValid = m_pUnit->GetValidity() == eKW_VALIDITY_VALID;
    if (row == std::end(kUnitsOfReadings))
    {
        NRules::Invalidate({m_pUnit});
        return wasValid;
    }
    const bool isOther = !wasValid || m_pUnit->Get() != row->ofReading;
    KW_CHECKED(m_pUnit->DbSet(row->ofReading));
    return isOther;
}
