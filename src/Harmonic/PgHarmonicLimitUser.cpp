// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicLimitUser.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "Names/Harmonic.h"
#include "Names/HarmonicLimitCurrent.h"
#include "Names/HarmonicLimitUser.h"
#include "Names/HarmonicStandard.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgHarmonicLimitUser::Rules() const
{
    using U = CPgHarmonicLimitUser;
    static constexpr auto rows = Table<Names>(On(Names::OrderLimits) >> Do<&U::CheckOrderLimits>,
                                              On(Names::CopyStandard) >> Do<&U::CopyStandard>);
    return rows;
}

KW_ACCEPTANCE CPgHarmonicLimitUser::CheckOrderLimits() const
{
    bool isComplete = true;
    NHarmonicLimits::FromText(m_pOrderLimits->Get(), isComplete);
    return isComplete ? eKW_ACC_OK : eKW_ACC_WARNING;
}

NHarmonicLimits::t_Limits CPgHarmonicLimitUser::Limits() const
{
    bool isComplete = true;
    NHarmonicLimits::t_Limits limits{m_pScale->Get(),
                                     NHarmonicLimits::FromText(m_pOrderLimits->Get(), isComplete),
                                     m_pThdLimit->Get(), std::nullopt};
    if (m_pPwhdLimit->Get() < m_pPwhdLimit->GetMax())
    {
        limits.pwhd = m_pPwhdLimit->Get();
    }
    limits.orders.erase(limits.orders.upper_bound(m_pHighestOrder->Get()), limits.orders.end());
    for (UINT32 n = 2; n <= m_pHighestOrder->Get(); ++n)
    {
        const CDbPropNumDouble& limit = n % 2 == 0   ? *m_pEvenLimit
                                        : n % 3 == 0 ? *m_pTriplenLimit
                                                     : *m_pOddLimit;
        if (limit.Get() < NHarmonicLimits::kNoLimit)
        {
            limits.orders.emplace(n, limit.Get());
        }
    }
    return limits;
}

KW_ACCEPTANCE CPgHarmonicLimitUser::CopyStandard()
{
    using Current = HarmonicLimitCurrent;
    constexpr auto current =
        ZEL::Harmonic / Harmonic::HarmonicStandard / HarmonicStandard::HarmonicLimitCurrent;
    const UINT32 highestOrder = At(current / Current::HighestOrder)->Get();
    if (highestOrder == 0)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const CDbPropNumDouble& thd = *At(current / Current::ThdLimit);
    const CDbPropNumDouble& pwhd = *At(current / Current::PwhdLimit);
    const bool hasThd = thd.GetValidity() == eKW_VALIDITY_VALID;
    const bool hasPwhd = pwhd.GetValidity() == eKW_VALIDITY_VALID;
    KW_CHECKED(m_pScale->DbSet(At(current / Current::Scale)->Get()));
    KW_CHECKED(m_pHighestOrder->DbSet(highestOrder));
    KW_CHECKED(m_pThdLimit->DbSet(hasThd ? thd.Get() : m_pThdLimit->GetMax()));
    KW_CHECKED(m_pPwhdLimit->DbSet(hasPwhd ? pwhd.Get() : m_pPwhdLimit->GetMax()));
    KW_CHECKED(m_pOrderLimits->DbSet(At(current / Current::OrderLimits)->Get()));
    // Orders that the standard leaves out stay without a limit.
    for (CDbPropNumDouble* const limit : {m_pOddLimit, m_pTriplenLimit, m_pEvenLimit})
    {
        KW_CHECKED(limit->DbSet(NHarmonicLimits::kNoLimit));
    }
    return eKW_ACC_OK;
}
