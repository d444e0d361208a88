// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicChannelUIResult.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicChannelStatusCurrent.h"
#include "Harmonic/PgHarmonicChannelStatusHistory.h"
#include "Harmonic/PgaHarmonicMagnitudeUIResult.h"
#include "Names/HarmonicChannelStatusCurrent.h"
#include "Names/HarmonicChannelStatusHistory.h"
#include "Names/HarmonicChannelUIResult.h"
#include "Names/HarmonicMagnitudeUIResult.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

t_Couplings CPgHarmonicChannelUIResult::Rules() const
{
    using R = CPgHarmonicChannelUIResult;
    using Magnitude = HarmonicMagnitudeUIResult;
    using Current = HarmonicChannelStatusCurrent;
    using History = HarmonicChannelStatusHistory;
    constexpr auto magnitude = Names::HarmonicMagnitudeUIResult / each;
    constexpr auto current = Names::HarmonicChannelStatusCurrent;
    constexpr auto history = Names::HarmonicChannelStatusHistory;
    static constexpr auto rows =
        Table<Names>(Items(Names::HarmonicMagnitudeUIResult) >> Do<&R::UpdateUnits>,
                     Delivered(magnitude / Magnitude::LimitValue, magnitude / Magnitude::Limit,
                               current / Current::Passed, current / Current::ThdLimit,
                               current / Current::NumberOfViolations, current / Current::WorstOrder,
                               current / Current::WorstRatio, current / Current::PwhdLimit,
                               history / History::Passed, history / History::WorstOrder,
                               history / History::WorstRatio) >>
                         Do<&R::DropUntested>);
    return rows;
}

void CPgHarmonicChannelUIResult::UpdateVisibility()
{
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        m_pHarmonicMagnitudeUIResult->ItemDirect(i)->UpdateVisibility();
    }
}

void CPgHarmonicChannelUIResult::UpdateUnits()
{
    const INT32 channel = NRules::IndexInArray(*this);
    const KW_UNIT unit = NHarmonicUnits::OfChannel(*this, channel);
    KW_CHECKED(m_pUnit->DbSet(unit));
    KW_CHECKED(m_pRms->SetUnit(unit));
    KW_CHECKED(m_pFundamentalRms->SetUnit(unit));
    const KW_UNIT shown = NHarmonicUnits::OfMagnitudes(*this, channel);
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        m_pHarmonicMagnitudeUIResult->ItemDirect(i)->SetUnit(shown);
    }
}

void CPgHarmonicChannelUIResult::ResetHistory()
{
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        NRules::Invalidate({m_pHarmonicMagnitudeUIResult->ItemDirect(i)->GetPrMaximum()});
    }
    m_pHarmonicChannelStatusHistory->DropMeasured();
}

void CPgHarmonicChannelUIResult::DropTest()
{
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        const CPgHarmonicMagnitudeUIResult& magnitude =
            *m_pHarmonicMagnitudeUIResult->ItemDirect(i);
        NRules::Invalidate({magnitude.GetPrLimitValue(), magnitude.GetPrLimit()});
    }
    m_pHarmonicChannelStatusCurrent->DropMeasured();
    m_pHarmonicChannelStatusHistory->DropMeasured();
}

void CPgHarmonicChannelUIResult::DropUntested(const CDbPropBase* delivered)
{
    if (!NHarmonicUnits::HasLimits(*this, NRules::IndexInArray(*this)))
    {
        delivered->GetParent()->Properties()[delivered->GetPlace()]->DropMeasured();
    }
}
