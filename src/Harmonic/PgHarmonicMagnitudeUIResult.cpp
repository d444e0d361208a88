// SPDX-License-Identifier: MIT
#include "Harmonic/PgHarmonicMagnitudeUIResult.h"

#include "Harmonic/PgHarmonic.h"
#include "KWEnumerationsOnOff.h"
#include "Rules/NumberRules.h"

void CPgHarmonicMagnitudeUIResult::OnPropertyDbSet(const CDbPropBase* property)
{
    const CPgHarmonic* const harmonic = NRules::Above<CPgHarmonic>(*this);
    if (harmonic != nullptr && property == m_pOrder)
    {
        UpdateVisibility(*harmonic);
    }
}

void CPgHarmonicMagnitudeUIResult::UpdateVisibility(const CPgHarmonic& harmonic)
{
    KW_CHECKED(m_pVisible->DbSet(harmonic.IsShown(m_pOrder->Get()) ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
}
