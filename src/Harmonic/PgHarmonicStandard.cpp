// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicStandard.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "Harmonic/HarmonicLimits.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicLimitCurrent.h"
#include "Harmonic/PgHarmonicLimitUser.h"
#include "KWEnumerationsHarmonics.h"
#include "Names/HarmonicLimitUser.h"
#include "Names/HarmonicStandard.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgHarmonicStandard::Rules() const
{
    using User = HarmonicLimitUser;
    constexpr auto user = Names::HarmonicLimitUser;
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgHarmonicStandard::UpdateLimits>,
                     On(user / User::Scale, user / User::HighestOrder, user / User::ThdLimit,
                        user / User::OddLimit, user / User::TriplenLimit, user / User::EvenLimit,
                        user / User::OrderLimits, user / User::CopyStandard) >>
                         Derive<&CPgHarmonicStandard::UpdateLimits>);
    return rows;
}

void CPgHarmonicStandard::UpdateLimits()
{
    const NHarmonicLimits::t_Limits limits =
        m_pStandard->Get() == eKW_HMA_STANDARD_USER
            ? m_pHarmonicLimitUser->Limits()
            : NHarmonicLimits::OfStandard(m_pStandard->Get(),
                                          {.power = m_pRatedPower->Get(),
                                           .current = m_pRatedCurrent->Get(),
                                           .powerFactor = m_pPowerFactor->Get(),
                                           .shortCircuitRatio = m_pShortCircuitRatio->Get()});
    const CPgHarmonicLimitCurrent& current = *m_pHarmonicLimitCurrent;
    KW_CHECKED(current.GetPrUnit()->DbSet(NHarmonicUnits::OfStandard(m_pStandard->Get())));
    KW_CHECKED(current.GetPrScale()->DbSet(limits.scale));
    KW_CHECKED(current.GetPrHighestOrder()->DbSet(
        limits.orders.empty() ? 0U : limits.orders.rbegin()->first));
    KW_CHECKED(current.GetPrOrderLimits()->DbSet(NHarmonicLimits::ToText(limits.orders)));
    if (limits.thd)
    {
        NRules::WriteResult(*current.GetPrThdLimit(), *limits.thd);
    }
    else
    {
        NRules::Invalidate({current.GetPrThdLimit()});
    }
}
