// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicLimitUser.h"

#include "CommonDatabase/Properties/DbPropText.h"
#include "Harmonic/PgHarmonicLimitCurrent.h"
#include "Harmonic/PgHarmonicStandard.h"
#include "Rules/NumberRules.h"

KW_ACCEPTANCE CPgHarmonicLimitUser::OnPropertySet(const CDbPropBase* property)
{
    bool isComplete = true;
    if (property == m_pOrderLimits)
    {
        NHarmonicLimits::FromText(m_pOrderLimits->Get(), isComplete);
    }
    if (CPgHarmonicStandard* const standard = NRules::Above<CPgHarmonicStandard>(*this))
    {
        standard->UpdateGroup();
    }
    return std::max<KW_ACCEPTANCE>(isComplete ? eKW_ACC_OK : eKW_ACC_WARNING,
                                   CPgHarmonicLimitUserBase::OnPropertySet(property));
}

KW_ACCEPTANCE CPgHarmonicLimitUser::OnFunction(const CDbFunction* function)
{
    return function == m_pCopyStandard ? CopyStandard()
                                       : CPgHarmonicLimitUserBase::OnFunction(function);
}

NHarmonicLimits::t_Limits CPgHarmonicLimitUser::Limits() const
{
    bool isComplete = true;
    NHarmonicLimits::t_Limits limits{m_pScale->Get(),
                                     NHarmonicLimits::FromText(m_pOrderLimits->Get(), isComplete),
                                     m_pThdLimit->Get()};
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
    CPgHarmonicStandard* const standard = NRules::Above<CPgHarmonicStandard>(*this);
    if (standard == nullptr ||
        standard->GetPgHarmonicLimitCurrent()->GetPrHighestOrder()->Get() == 0)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const CPgHarmonicLimitCurrent& current = *standard->GetPgHarmonicLimitCurrent();
    const bool hasThd = current.GetPrThdLimit()->GetValidity() == eKW_VALIDITY_VALID;
    KW_CHECKED(m_pScale->DbSet(current.GetPrScale()->Get()));
    KW_CHECKED(m_pHighestOrder->DbSet(current.GetPrHighestOrder()->Get()));
    KW_CHECKED(m_pThdLimit->DbSet(hasThd ? current.GetPrThdLimit()->Get() : m_pThdLimit->GetMax()));
    KW_CHECKED(m_pOrderLimits->DbSet(current.GetPrOrderLimits()->Get()));
    // Orders that the standard leaves out stay without a limit.
    for (CDbPropNumDouble* const limit : {m_pOddLimit, m_pTriplenLimit, m_pEvenLimit})
    {
        KW_CHECKED(limit->DbSet(NHarmonicLimits::kNoLimit));
    }
    standard->UpdateGroup();
    return eKW_ACC_OK;
}
