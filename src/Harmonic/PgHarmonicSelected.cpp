// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicSelected.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/HarmonicOrders.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicChannelUIResult.h"
#include "Harmonic/PgaHarmonicMagnitudeUIResult.h"
#include "Names/Harmonic.h"
#include "Names/HarmonicSelected.h"
#include "Names/HarmonicUIResults.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgHarmonicSelected::Rules() const
{
    using S = CPgHarmonicSelected;
    static constexpr auto rows = Table<Names>(
        On(Names::Order) >> Do<&S::OnOtherHarmonic>, On(Names::SelectNext) >> Do<&S::SelectNext>,
        On(Names::SelectPrevious) >> Do<&S::SelectPrevious>,
        On(Names::SelectLargest) >> Do<&S::SelectLargest>,
        Delivered(Names::LimitValue, Names::Limit) >> Do<&S::DropUntested>);
    return rows;
}

void CPgHarmonicSelected::Follow()
{
    const UINT32 order = m_pOrder->Get();
    NRules::SetLimits(*m_pOrder, 0U, NHarmonicOrders::Highest(*this));
    if (m_pOrder->Get() != order)
    {
        OnOtherHarmonic();
    }
    UpdateFrequency();
}

void CPgHarmonicSelected::UpdateFrequency()
{
    const CDbPropNumDouble& fundamental = *At(ZEL::Harmonic / Harmonic::FundamentalFrequency);
    if (fundamental.GetValidity() == eKW_VALIDITY_VALID)
    {
        NRules::WriteResult(*m_pFrequency, m_pOrder->Get() * fundamental.Get());
    }
    else
    {
        NRules::Invalidate({m_pFrequency});
    }
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectNext()
{
    return SelectShown(1);
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectPrevious()
{
    return SelectShown(-1);
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectShown(INT32 direction)
{
    const auto highest = static_cast<INT32>(NHarmonicOrders::Highest(*this));
    auto order = static_cast<INT32>(m_pOrder->Get()) + direction;
    while (order >= 0 && order <= highest &&
           !NHarmonicOrders::IsShown(*this, static_cast<UINT32>(order)))
    {
        order += direction;
    }
    return order >= 0 && order <= highest ? Select(static_cast<UINT32>(order))
                                          : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON);
}

KW_ACCEPTANCE CPgHarmonicSelected::SelectLargest()
{
    const CPgHarmonicMagnitudeUIResult* largest = nullptr;
    const CPgaHarmonicMagnitudeUIResult& results =
        *At(ZEL::Harmonic / Harmonic::HarmonicUIResults /
            HarmonicUIResults::HarmonicChannelUIResult / NRules::IndexInArray(*this))
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
    DropMeasured();
    UpdateFrequency();
}

void CPgHarmonicSelected::UpdateUnits()
{
    const KW_UNIT shown = NHarmonicUnits::OfMagnitudes(*this, NRules::IndexInArray(*this));
    KW_CHECKED(m_pMagnitude->SetUnit(shown));
    KW_CHECKED(m_pLimitValue->SetUnit(shown));
}

void CPgHarmonicSelected::DropTest()
{
    NRules::Invalidate({m_pLimitValue, m_pLimit});
}

void CPgHarmonicSelected::DropUntested()
{
    if (!NHarmonicUnits::HasLimits(*this, NRules::IndexInArray(*this)))
    {
        DropTest();
    }
}
