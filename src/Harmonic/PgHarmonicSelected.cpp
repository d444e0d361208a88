// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicSelected.h"

#include "Harmonic/PgHarmonic.h"
#include "Harmonic/PgHarmonicUIResults.h"
#include "Harmonic/PgaHarmonicChannelUIResult.h"
#include "Harmonic/PgaHarmonicMagnitudeUIResult.h"
#include "KWEnumerationsReadings.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

KW_ACCEPTANCE CPgHarmonicSelected::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pOrder)
    {
        OnOtherHarmonic();
    }
    return CPgHarmonicSelectedBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgHarmonicSelected::OnFunction(const CDbFunction* function)
{
    if (function == m_pSelectNext)
    {
        return SelectShown(1);
    }
    if (function == m_pSelectPrevious)
    {
        return SelectShown(-1);
    }
    if (function == m_pSelectLargest)
    {
        return SelectLargest();
    }
    return CPgHarmonicSelectedBase::OnFunction(function);
}

void CPgHarmonicSelected::Follow(UINT32 highestOrder, const CDbPropNumDouble& fundamental)
{
    const UINT32 order = m_pOrder->Get();
    NRules::SetLimits(*m_pOrder, 0U, highestOrder);
    if (m_pOrder->Get() != order)
    {
        OnOtherHarmonic();
    }
    UpdateFrequency(fundamental);
}

void CPgHarmonicSelected::UpdateFrequency(const CDbPropNumDouble& fundamental)
{
    if (fundamental.GetValidity() == eKW_VALIDITY_VALID)
    {
        NRules::WriteResult(*m_pFrequency, m_pOrder->Get() * fundamental.Get());
    }
    else
    {
        NRules::Invalidate({m_pFrequency});
    }
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectShown(INT32 direction)
{
    const CPgHarmonic* const harmonic = NRules::Above<CPgHarmonic>(*this);
    if (harmonic == nullptr)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const auto highest = static_cast<INT32>(harmonic->HighestOrder());
    auto order = static_cast<INT32>(m_pOrder->Get()) + direction;
    while (order >= 0 && order <= highest && !harmonic->IsShown(static_cast<UINT32>(order)))
    {
        order += direction;
    }
    return order >= 0 && order <= highest ? Select(static_cast<UINT32>(order))
                                          : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON);
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectLargest()
{
    const CPgHarmonic* const harmonic = NRules::Above<CPgHarmonic>(*this);
    const CPgHarmonicMagnitudeUIResult* largest = nullptr;
    if (harmonic != nullptr)
    {
        const CPgaHarmonicMagnitudeUIResult& results =
            *harmonic->GetPgHarmonicUIResults()
                 ->GetPgHarmonicChannelUIResult()
                 ->ItemDirect(NRules::IndexInArray(*this))
                 ->GetPgHarmonicMagnitudeUIResult();
        for (INT32 i = 0; i < results.GetCount(); ++i)
        {
            const CPgHarmonicMagnitudeUIResult* const result = results.ItemDirect(i);
            const bool isCandidate = result->GetPrOrder()->Get() > 1 &&
                                     result->GetPrOrder()->Get() <= m_pOrder->GetMax() &&
                                     result->GetPrMagnitude()->GetValidity() == eKW_VALIDITY_VALID;
            if (isCandidate && (largest == nullptr ||
                                result->GetPrMagnitude()->Get() > largest->GetPrMagnitude()->Get()))
            {
                largest = result;
            }
        }
    }
    return largest != nullptr ? Select(largest->GetPrOrder()->Get())
                              : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON);
}

KW_ACCEPTANCE CPgHarmonicSelected::Select(UINT32 order)
{
    const bool isOther = order != m_pOrder->Get();
    const KW_ACCEPTANCE code = NRules::MoveTo(*m_pOrder, order);
    if (isOther)
    {
        OnOtherHarmonic();
    }
    return code;
}

void CPgHarmonicSelected::OnOtherHarmonic()
{
    NRules::Invalidate({m_pMagnitude, m_pPhase, m_pLimitValue});
    KW_CHECKED(m_pLimit->DbSet(eKW_ZEL_LIMIT_INSIDE));
    if (const CPgHarmonic* const harmonic = NRules::Above<CPgHarmonic>(*this))
    {
        UpdateFrequency(*harmonic->GetPrFundamentalFrequency());
    }
}
