// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonic.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicRawResults.h"
#include "Harmonic/PgHarmonicUIResults.h"
#include "Harmonic/PgaHarmonicChannelRawResult.h"
#include "Harmonic/PgaHarmonicChannelUIResult.h"
#include "Harmonic/PgaHarmonicSelected.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsHarmonics.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Channel.h"
#include "Names/Harmonic.h"
#include "Names/HarmonicLimitCurrent.h"
#include "Names/HarmonicStandard.h"
#include "Names/HarmonicUIResults.h"
#include "Names/Horizontal.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"
#include "Rules/SourceDependencies.h"

using namespace NNames;

namespace
{
/** Periods of the fundamental in the window of an analysis at 50 Hz (IEC 61000-4-7). */
constexpr double kPeriods = 10.0;
} // namespace

t_Couplings CPgHarmonic::Rules() const
{
    using H = CPgHarmonic;
    using Limits = HarmonicLimitCurrent;
    constexpr auto limits = Names::HarmonicStandard / HarmonicStandard::HarmonicLimitCurrent;
    static constexpr auto rows = Table<Names>(
        On(Names::Fundamental, Names::FundamentalSource) >> Do<&H::AwaitFundamental>,
        OnAny() >> Derive<&H::UpdateFundamental, &H::UpdateSelected>,
        // When everything is computed, each harmonic looks for itself.
        On(Names::NumberOfHarmonics, Names::HarmonicSelection) >> Do<&H::UpdateVisibility>,
        // A measured fundamental is delivered as a result.
        Delivered(Names::FundamentalFrequency) >> Do<&H::UpdateSelected>,
        NRules::kSwitched >> Derive<&H::OfferSources>, On(Names::AutoSet) >> Do<&H::FitTimebase>,
        On(Names::ResetAverage) >> Do<&H::ResetAverage>,
        On(Names::ResetHistory) >> Do<&H::ResetHistory>,

        Changed(Names::ScaleSelection, Names::SelectedChannel,
                ZEL::Vertical / Vertical::Channel / each / Channel::ProbeUnit) >>
            Derive<&H::UpdateUnits>,
        On(Names::Fundamental, Names::UserFundamental, Names::FundamentalSource,
           Names::NumberOfHarmonics) >>
            Do<&H::DropAnalysis>,
        On(Names::ScaleSelection, Names::Average, Names::ThdType) >> Do<&H::DropShown>,
        Changed(limits / Limits::Unit, limits / Limits::Scale, limits / Limits::OrderLimits,
                limits / Limits::ThdLimit, limits / Limits::PwhdLimit) >>
            Do<&H::DropTest>,
        NRules::kProbes >> Do<&H::DropOfProbe>, NRules::kSwitched >> Do<&H::DropHidden>,
        Delivered(Names::HarmonicUIResults / HarmonicUIResults::TestPassed) >>
            Do<&H::DropUntested>);
    return rows;
}

void CPgHarmonic::OfferSources()
{
    const KW_ZEL_ANALOG_CHANNEL before = m_pFundamentalSource->Get();
    NRules::OfferInputs(*m_pFundamentalSource);
    if (m_pFundamentalSource->Get() != before)
    {
        AwaitFundamental();
        DropAnalysis();
    }
}

void CPgHarmonic::AwaitFundamental()
{
    if (m_pFundamental->Get() == eKW_FUNDAMENTAL_AUTO)
    {
        NRules::Invalidate({m_pFundamentalFrequency});
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
        m_pHarmonicSelected->ItemDirect(i)->Follow();
    }
}

void CPgHarmonic::UpdateUnits()
{
    const auto selected = static_cast<INT32>(m_pSelectedChannel->Get());
    KW_CHECKED(m_pHarmonicUIResults->GetPrScale()->DbSet(m_pScaleSelection->Get()));
    KW_CHECKED(m_pVerticalMaximum->SetUnit(NHarmonicUnits::OfMagnitudes(*this, selected)));
    for (INT32 i = 0; i < m_pHarmonicSelected->GetCount(); ++i)
    {
        m_pHarmonicSelected->ItemDirect(i)->UpdateUnits();
        m_pHarmonicRawResults->GetPgHarmonicChannelRawResult()->ItemDirect(i)->UpdateUnits();
        m_pHarmonicUIResults->GetPgHarmonicChannelUIResult()->ItemDirect(i)->UpdateUnits();
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

void CPgHarmonic::DropAnalysis()
{
    m_pHarmonicRawResults->DropMeasuredBelow();
    DropShown();
}

void CPgHarmonic::DropShown()
{
    m_pHarmonicUIResults->DropMeasuredBelow();
    m_pHarmonicSelected->DropMeasuredBelow();
}

void CPgHarmonic::DropTest()
{
    NRules::Invalidate({m_pHarmonicUIResults->GetPrTestPassed()});
    for (INT32 i = 0; i < m_pHarmonicSelected->GetCount(); ++i)
    {
        m_pHarmonicSelected->ItemDirect(i)->DropTest();
        m_pHarmonicUIResults->GetPgHarmonicChannelUIResult()->ItemDirect(i)->DropTest();
    }
}

void CPgHarmonic::DropOfProbe(const CDbPropBase* probe)
{
    DropChannel(NRules::IndexInArray(*probe->GetParent()));
    // The average and the test are of all channels.
    m_pHarmonicUIResults->DropMeasured();
}

void CPgHarmonic::DropHidden()
{
    const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, this);
    for (INT32 i = 0; i < m_pHarmonicSelected->GetCount(); ++i)
    {
        if (!activity.IsSourceActive(static_cast<KW_ZEL_CHANNEL>(i)))
        {
            DropChannel(i);
        }
    }
}

void CPgHarmonic::DropChannel(INT32 channel)
{
    m_pHarmonicRawResults->GetPgHarmonicChannelRawResult()
        ->ItemDirect(channel)
        ->DropMeasuredBelow();
    m_pHarmonicUIResults->GetPgHarmonicChannelUIResult()->ItemDirect(channel)->DropMeasuredBelow();
    m_pHarmonicSelected->ItemDirect(channel)->DropMeasured();
}

bool CPgHarmonic::HasLimits() const
{
    for (INT32 i = 0; i < m_pHarmonicSelected->GetCount(); ++i)
    {
        if (m_pHarmonicSelected->ItemDirect(i)->GetPrEnabled()->Get() == eKW_ONOFF_ON &&
            NHarmonicUnits::HasLimits(*this, i))
        {
            return true;
        }
    }
    return false;
}

void CPgHarmonic::DropUntested()
{
    if (!HasLimits())
    {
        NRules::Invalidate({m_pHarmonicUIResults->GetPrTestPassed()});
    }
}
