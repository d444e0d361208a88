// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonic.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/PgHarmonicUIResults.h"
#include "Harmonic/PgaHarmonicChannelUIResult.h"
#include "Harmonic/PgaHarmonicSelected.h"
#include "KWEnumerationsHarmonics.h"
#include "Names/Harmonic.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

namespace
{
/** Periods of the fundamental in the window of an analysis at 50 Hz (IEC 61000-4-7). */
constexpr double kPeriods = 10.0;
} // namespace

t_Couplings CPgHarmonic::Rules() const
{
    using H = CPgHarmonic;
    static constexpr auto rows = Table<Names>(
        On(Names::Fundamental, Names::FundamentalSource) >> Do<&H::AwaitFundamental>,
        OnAny() >> Derive<&H::UpdateFundamental, &H::UpdateSelected>,
        // When everything is computed, each harmonic looks for itself.
        On(Names::NumberOfHarmonics, Names::HarmonicSelection) >> Do<&H::UpdateVisibility>,
        // A measured fundamental is delivered as a result.
        Delivered(Names::FundamentalFrequency) >> Do<&H::UpdateSelected>,
        NRules::kSwitched >> Derive<&H::OfferSources>, On(Names::AutoSet) >> Do<&H::FitTimebase>,
        On(Names::ResetAverage) >> Do<&H::ResetAverage>,
        On(Names::ResetHistory) >> Do<&H::ResetHistory>, Fresh<&H::DropFundamental>);
    return rows;
}

void CPgHarmonic::OfferSources()
{
    NRules::OfferInputs(*m_pFundamentalSource);
}

void CPgHarmonic::AwaitFundamental()
{
    if (m_pFundamental->Get() == eKW_FUNDAMENTAL_AUTO)
    {
        DropFundamental();
    }
}

void CPgHarmonic::DropFundamental()
{
    NRules::Invalidate({m_pFundamentalFrequency});
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
        m_pHarmonicSelected->ItemDirect(i)->Follow();
    }
}

void CPgHarmonic::UpdateVisibility()
{
    const CPgaHarmonicChannelUIResult& channels =
        *m_pHarmonicUIResults->GetPgHarmonicChannelUIResult();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        channels.ItemDirect(i)->UpdateVisibility();
    }
}

KW_ACCEPTANCE CPgHarmonic::FitTimebase()
{
    const double fundamental = m_pFundamentalFrequency->Get();
    const bool isKnown = m_pFundamentalFrequency->GetValidity() == eKW_VALIDITY_VALID;
    if (!isKnown || !(fundamental > 0.0))
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    CDbPropNumDouble* const time = At(ZEL::Horizontal / Horizontal::AcquisitionTime);
    const KW_ACCEPTANCE code =
        time->Set(KWMath::Bound(time->GetMin(), kPeriods / fundamental, time->GetMax()));
    // A time scale that shows more than ten periods is what was asked for.
    return code > eKW_ACC_WARNING ? code : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

void CPgHarmonic::ResetAverage()
{
    KW_CHECKED(m_pHarmonicUIResults->GetPrAveragesDone()->DbSet(0));
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
