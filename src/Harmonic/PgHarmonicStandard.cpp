// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicStandard.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "Harmonic/HarmonicLimits.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicLimitCurrent.h"
#include "Harmonic/PgHarmonicLimitUser.h"
#include "KWEnumerationsHarmonics.h"
#include "KWEnumerationsUnits.h"
#include "Names/Harmonic.h"
#include "Names/HarmonicLimitUser.h"
#include "Names/HarmonicStandard.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

namespace
{
void WriteLimit(CDbPropNumDouble& result, const std::optional<double>& limit)
{
    if (limit)
    {
        NRules::WriteResult(result, *limit);
    }
    else
    {
        NRules::Invalidate({&result});
    }
}
} // namespace

t_Couplings CPgHarmonicStandard::Rules() const
{
    using User = HarmonicLimitUser;
    constexpr auto user = Names::HarmonicLimitUser;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&CPgHarmonicStandard::UpdateLimits>,
        On(user / User::Scale, user / User::HighestOrder, user / User::ThdLimit,
           user / User::OddLimit, user / User::TriplenLimit, user / User::EvenLimit,
           user / User::OrderLimits, user / User::PwhdLimit, user / User::CopyStandard) >>
            Derive<&CPgHarmonicStandard::UpdateLimits>,
        Changed(ZEL::Harmonic / Harmonic::Fundamental, ZEL::Harmonic / Harmonic::UserFundamental) >>
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
                                           .shortCircuitRatio = m_pShortCircuitRatio->Get(),
                                           .frequency = SupplyFrequency()});
    const CPgHarmonicLimitCurrent& current = *m_pHarmonicLimitCurrent;
    const bool hasLimits = !limits.orders.empty() || limits.thd || limits.pwhd;
    KW_CHECKED(current.GetPrUnit()->DbSet(hasLimits ? NHarmonicUnits::OfStandard(m_pStandard->Get())
                                                    : eKW_UNIT_NOT_DEFINED));
    KW_CHECKED(current.GetPrScale()->DbSet(limits.scale));
    KW_CHECKED(current.GetPrHighestOrder()->DbSet(
        limits.orders.empty() ? 0U : limits.orders.rbegin()->first));
    KW_CHECKED(current.GetPrOrderLimits()->DbSet(NHarmonicLimits::ToText(limits.orders)));
    WriteLimit(*current.GetPrThdLimit(), limits.thd);
    WriteLimit(*current.GetPrPwhdLimit(), limits.pwhd);
}

double CPgHarmonicStandard::SupplyFrequency() const
{
    constexpr double kUnknown = 60.0;
    const auto& fundamental = *At(ZEL::Harmonic / Harmonic::Fundamental);
    const std::optional<double> fixed = fundamental.GetNameInfo().GetNumber(fundamental.GetAsInt());
    return fundamental.Get() == eKW_FUNDAMENTAL_AUTO
               ? kUnknown
               : fixed.value_or(At(ZEL::Harmonic / Harmonic::UserFundamental)->Get());
}
