// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonic.h"

#include "Harmonic/PgHarmonicChannelStatusHistory.h"
#include "Harmonic/PgHarmonicUIResults.h"
#include "Harmonic/PgaHarmonicChannelUIResult.h"
#include "Harmonic/PgaHarmonicSelected.h"
#include "KWEnumerationsHarmonics.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"
#include "Timebase/PgHorizontal.h"

namespace
{
/** Periods of the fundamental in the window of an analysis at 50 Hz (IEC 61000-4-7). */
constexpr double kPeriods = 10.0;
} // namespace

KW_ACCEPTANCE CPgHarmonic::OnPropertySet(const CDbPropBase* property)
{
    if (m_pFundamental->Get() == eKW_FUNDAMENTAL_AUTO &&
        (property == m_pFundamental || property == m_pFundamentalSource))
    {
        NRules::Invalidate({m_pFundamentalFrequency});
    }
    UpdateGroup();
    return CPgHarmonicBase::OnPropertySet(property);
}

void CPgHarmonic::OnPropertyDbSet(const CDbPropBase* property)
{
    // A measured fundamental is delivered as a result.
    if (property == m_pFundamentalFrequency)
    {
        UpdateSelected();
    }
}

KW_ACCEPTANCE CPgHarmonic::OnFunction(const CDbFunction* function)
{
    if (function == m_pAutoSet)
    {
        return FitTimebase();
    }
    if (function == m_pResetAverage)
    {
        KW_CHECKED(m_pHarmonicUIResults->GetPrAveragesDone()->DbSet(0));
    }
    if (function == m_pResetHistory)
    {
        ResetHistory();
    }
    return CPgHarmonicBase::OnFunction(function);
}

void CPgHarmonic::UpdateGroup()
{
    UpdateFundamental();
    UpdateSelected();
    const CPgaHarmonicChannelUIResult& channels =
        *m_pHarmonicUIResults->GetPgHarmonicChannelUIResult();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        channels.ItemDirect(i)->UpdateVisibility(*this);
    }
}

void CPgHarmonic::OnTreeCreated()
{
    CPgHarmonicBase::OnTreeCreated();
    NRules::Invalidate({m_pFundamentalFrequency});
}

UINT32 CPgHarmonic::HighestOrder() const
{
    const std::optional<double> number =
        m_pNumberOfHarmonics->GetNameInfo().GetNumber(m_pNumberOfHarmonics->GetAsInt());
    return KWMath::ToInteger<UINT32>(number.value_or(0.0));
}

bool CPgHarmonic::IsShown(UINT32 order) const
{
    const bool isOdd = order % 2 == 1;
    switch (m_pHarmonicSelection->Get())
    {
    case eKW_HMA_HARMONIC_SELECTION_ODD:
        return order <= HighestOrder() && isOdd;
    case eKW_HMA_HARMONIC_SELECTION_EVEN:
        return order <= HighestOrder() && !isOdd && order != 0;
    case eKW_HMA_HARMONIC_SELECTION_ODD_NON_TRIPLEN:
        return order <= HighestOrder() && isOdd && order % 3 != 0;
    default:
        return order <= HighestOrder();
    }
}

void CPgHarmonic::UpdateFundamental()
{
    const std::optional<double> fixed =
        m_pFundamental->GetNameInfo().GetNumber(m_pFundamental->GetAsInt());
    if (m_pFundamental->Get() != eKW_FUNDAMENTAL_AUTO)
    {
        NRules::WriteResult(*m_pFundamentalFrequency, fixed.value_or(m_pUserFundamental->Get()));
    }
}

void CPgHarmonic::UpdateSelected()
{
    for (INT32 i = 0; i < m_pHarmonicSelected->GetCount(); ++i)
    {
        m_pHarmonicSelected->ItemDirect(i)->Follow(HighestOrder(), *m_pFundamentalFrequency);
    }
}

KW_ACCEPTANCE CPgHarmonic::FitTimebase()
{
    CPgZEL* const root = CPgZEL::Of(*this);
    const double fundamental = m_pFundamentalFrequency->Get();
    const bool isKnown = m_pFundamentalFrequency->GetValidity() == eKW_VALIDITY_VALID;
    if (root == nullptr || !isKnown || !(fundamental > 0.0))
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    CDbPropNumDouble* const time = root->GetPgHorizontal()->GetPrAcquisitionTime();
    const KW_ACCEPTANCE code =
        time->Set(KWMath::Bound(time->GetMin(), kPeriods / fundamental, time->GetMax()));
    // A time scale that shows more than ten periods is what was asked for.
    return code > eKW_ACC_WARNING ? code : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

void CPgHarmonic::ResetHistory()
{
    const CPgaHarmonicChannelUIResult& channels =
        *m_pHarmonicUIResults->GetPgHarmonicChannelUIResult();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        channels.ItemDirect(i)->ResetHistory();
    }
}
