// SPDX-License-Identifier: MIT
#include "Meter/PgCounterChannel.h"

#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Meter/PgCounter.h"
#include "Meter/PgCounterNumerics.h"
#include "Meter/PgStatistics.h"
#include "Rules/ChannelRules.h"

namespace
{
struct t_Quantity
{
    KW_UNIT unit;
    double step; ///< of the reference
};

/** In the order of KW_ZEL_COUNTER_MEAS_TYPE. The catalogue of units has no revolutions per minute.
 */
constexpr t_Quantity kQuantities[] = {
    {eKW_UNIT_FREQ_HZ, 1.0},   {eKW_UNIT_FREQ_SEC, 1e-6}, {eKW_UNIT_NOT_DEFINED, 1.0},
    {eKW_UNIT_NONE, 0.001},    {eKW_UNIT_FREQ_SEC, 1e-6}, {eKW_UNIT_FREQ_SEC, 1e-6},
    {eKW_UNIT_COUNT_PCT, 0.1}, {eKW_UNIT_COUNT_PCT, 0.1}, {eKW_UNIT_COUNT, 1.0}};
} // namespace

KW_ACCEPTANCE CPgCounterChannel::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pLevel)
    {
        KW_CHECKED(m_pAutoLevel->DbSet(eKW_ONOFF_OFF));
    }
    if (property == m_pSource || property == m_pMeasurementType ||
        property == m_pPulsesPerRevolution)
    {
        m_pCounterNumerics->DropReading();
        m_pStatistics->Reset();
    }
    UpdateGroup();
    CPgCounter* const counter = NRules::Above<CPgCounter>(*this);
    if (counter != nullptr && property == m_pSource)
    {
        counter->UpdateGroup();
    }
    return CPgCounterChannelBase::OnPropertySet(property);
}

void CPgCounterChannel::UpdateGroup()
{
    const t_Quantity& quantity = kQuantities[m_pMeasurementType->Get()];
    KW_CHECKED(m_pCounterNumerics->GetPrUnit()->DbSet(quantity.unit));
    KW_CHECKED(m_pCounterNumerics->GetPrReference()->SetStep(quantity.step));
}

void CPgCounterChannel::OnTreeCreated()
{
    CPgCounterChannelBase::OnTreeCreated();
    m_pCounterNumerics->DropReading();
    m_pStatistics->Reset();
}

void CPgCounterChannel::FollowInput(const NRules::t_Screen& input)
{
    NRules::PutOnScreen(*m_pLevel, input);
}
