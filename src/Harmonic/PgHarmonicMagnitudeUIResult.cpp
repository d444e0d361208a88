// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicMagnitudeUIResult.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "Harmonic/HarmonicOrders.h"
#include "KWEnumerationsOnOff.h"
#include "Names/HarmonicMagnitudeUIResult.h"

using namespace NNames;

t_Couplings CPgHarmonicMagnitudeUIResult::Rules() const
{
    static constexpr auto rows = Table<Names>(
        Delivered(Names::Order) >> Derive<&CPgHarmonicMagnitudeUIResult::UpdateVisibility>);
    return rows;
}

void CPgHarmonicMagnitudeUIResult::UpdateVisibility()
{
    const bool isShown = NHarmonicOrders::IsShown(*this, m_pOrder->Get());
    KW_CHECKED(m_pVisible->DbSet(isShown ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
}

void CPgHarmonicMagnitudeUIResult::SetUnit(KW_UNIT unit)
{
    for (CDbPropNumDouble* const number : {m_pMagnitude, m_pMaximum, m_pLimitValue})
    {
        KW_CHECKED(number->SetUnit(unit));
    }
}
