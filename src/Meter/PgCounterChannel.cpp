// SPDX-License-Identifier: MIT
#include "Meter/PgCounterChannel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Meter/PgCounterNumerics.h"
#include "Meter/PgStatistics.h"
#include "Names/CounterChannel.h"
#include "Names/CounterNumerics.h"
#include "Rules/ChannelRules.h"
#include "Rules/FunctionMemory.h"

using namespace NNames;

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

t_Couplings CPgCounterChannel::Rules() const
{
    using C = CPgCounterChannel;
    static constexpr auto rows = Table<Names>(
        On(Names::Level) >> Do<&C::EndAutoLevel>, OnAny() >> Derive<&C::FollowQuantity>,
        Changed(Names::Source, Names::MeasurementType, Names::PulsesPerRevolution) >>
            Do<&C::DropReadings>,
        Changed(Names::CounterNumerics / CounterNumerics::Readout,
                Names::CounterNumerics / CounterNumerics::Reference) >>
            Do<&C::FollowQuantity>,
        NRules::kSwitched >> Derive<&C::OfferInputs>, Fresh<&C::DropReadings>);
    return rows;
}

void CPgCounterChannel::OfferInputs()
{
    NRules::OfferInputs(*m_pSource);
}

void CPgCounterChannel::EndAutoLevel()
{
    KW_CHECKED(m_pAutoLevel->DbSet(eKW_ONOFF_OFF));
}

void CPgCounterChannel::DropReadings()
{
    m_pCounterNumerics->DropReading();
    m_pStatistics->Reset();
}

void CPgCounterChannel::FollowQuantity()
{
    const t_Quantity& quantity = kQuantities[m_pMeasurementType->Get()];
    KW_CHECKED(m_pCounterNumerics->GetPrUnit()->DbSet(quantity.unit));
    KW_CHECKED(m_pCounterNumerics->GetPrReference()->SetStep(quantity.step));
    NRules::FollowFunction(
        *m_pRememberedSettings, {{m_pMeasurementType->GetNameInfo(), m_pMeasurementType->Get()}},
        {m_pCounterNumerics->GetPrReadout(), m_pCounterNumerics->GetPrReference()});
}

void CPgCounterChannel::FollowInput(const NRules::t_Screen& input)
{
    NRules::PutOnScreen(*m_pLevel, input);
}
