// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumMarker.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Spectrum.h"
#include "Names/ZEL.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/SpectrumScreen.h"

using namespace NNames;

t_Couplings CPgSpectrumMarker::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::SetCenter) >> Do<&CPgSpectrumMarker::SetCenter>);
    return rows;
}

KW_ACCEPTANCE CPgSpectrumMarker::SetCenter()
{
    return At(ZEL::Spectrum / Spectrum::HorizontalCenter)->SetLimited(m_pFrequency->Get());
}

void CPgSpectrumMarker::Follow(const CPgReferenceMarker& reference)
{
    UpdateRelative(reference);
    CSpectrumScreen::Of(*this).UpdateSteps(*m_pFrequency, nullptr);
}

void CPgSpectrumMarker::UpdateRelative(const CPgReferenceMarker& reference)
{
    if (reference.GetPrEnabled()->Get() == eKW_ONOFF_OFF)
    {
        KW_CHECKED(m_pDeltaFrequency->SetValidity(eKW_VALIDITY_INVALID));
        KW_CHECKED(m_pDeltaMagnitude->SetValidity(eKW_VALIDITY_INVALID));
        return;
    }
    KW_CHECKED(m_pDeltaFrequency->DbSet(m_pFrequency->Get() - reference.GetPrFrequency()->Get()));
    KW_CHECKED(m_pDeltaMagnitude->DbSet(m_pMagnitude->Get() - reference.GetPrMagnitude()->Get()));
}
