// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicChannelRawResult.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/HarmonicUnits.h"
#include "Harmonic/PgHarmonicMagnitudeRawResult.h"
#include "Harmonic/PgaHarmonicMagnitudeRawResult.h"
#include "Names/HarmonicChannelRawResult.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgHarmonicChannelRawResult::Rules() const
{
    static constexpr auto rows = Table<Names>(Items(Names::HarmonicMagnitudeRawResult) >>
                                              Do<&CPgHarmonicChannelRawResult::UpdateUnits>);
    return rows;
}

void CPgHarmonicChannelRawResult::UpdateUnits()
{
    const KW_UNIT unit = NHarmonicUnits::OfChannel(*this, NRules::IndexInArray(*this));
    KW_CHECKED(m_pUnit->DbSet(unit));
    for (CDbPropNumDouble* const number :
         {m_pRms, m_pDirectComponent, m_pFundamentalRms, m_pHarmonicRms})
    {
        KW_CHECKED(number->SetUnit(unit));
    }
    for (INT32 i = 0; i < m_pHarmonicMagnitudeRawResult->GetCount(); ++i)
    {
        KW_CHECKED(m_pHarmonicMagnitudeRawResult->ItemDirect(i)->GetPrMagnitude()->SetUnit(unit));
    }
}
