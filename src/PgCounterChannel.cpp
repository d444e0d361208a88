// SPDX-License-Identifier: MIT
#include "PgCounterChannel.h"

#include "PgCounter.h"
#include "PgCounterNumerics.h"
#include "PgStatistics.h"

namespace
{
/** In the order of KW_ZEL_COUNTER_MEAS_TYPE. The catalogue of units has no revolutions per minute.
 */
constexpr KW_UNIT kUnitOfMeasurement[] = {
    eKW_UNIT_FREQ_HZ,  eKW_UNIT_FREQ_SEC,  eKW_UNIT_NOT_DEFINED, eKW_UNIT_NONE, eKW_UNIT_FREQ_SEC,
    eKW_UNIT_FREQ_SEC, eKW_UNIT_COUNT_PCT, eKW_UNIT_COUNT_PCT,   eKW_UNIT_COUNT};
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
    KW_CHECKED(
        m_pCounterNumerics->GetPrUnit()->DbSet(kUnitOfMeasurement[m_pMeasurementType->Get()]));
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
