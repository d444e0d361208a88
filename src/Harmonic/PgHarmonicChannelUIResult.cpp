// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicChannelUIResult.h"

#include "Harmonic/PgHarmonicChannelStatusHistory.h"
#include "Harmonic/PgaHarmonicMagnitudeUIResult.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

void CPgHarmonicChannelUIResult::UpdateVisibility()
{
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        m_pHarmonicMagnitudeUIResult->ItemDirect(i)->UpdateVisibility();
    }
}

void CPgHarmonicChannelUIResult::ResetHistory()
{
    for (INT32 i = 0; i < m_pHarmonicMagnitudeUIResult->GetCount(); ++i)
    {
        NRules::Invalidate({m_pHarmonicMagnitudeUIResult->ItemDirect(i)->GetPrMaximum()});
    }
    NRules::InvalidateResults(*m_pHarmonicChannelStatusHistory);
    KW_CHECKED(m_pHarmonicChannelStatusHistory->GetPrNumberOfAnalyses()->DbSet(0));
    KW_CHECKED(m_pHarmonicChannelStatusHistory->GetPrNumberOfFailedAnalyses()->DbSet(0));
}
