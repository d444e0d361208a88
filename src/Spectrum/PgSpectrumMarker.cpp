// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumMarker.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Spectrum.h"
#include "Names/ZEL.h"
#include "Rules/ReadingRules.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/SpectrumScreen.h"

using namespace NNames;

t_Couplings CPgSpectrumMarker::Rules() const
{
    static constexpr auto rows =
        Table<Names>(On(Names::SetCenter) >> Do<&CPgSpectrumMarker::SetCenter>,
                     // Nothing has been read yet where it stands now.
                     On(Names::Frequency) >> Do<&CPgSpectrumMarker::DropMeasured>);
    return rows;
}

KW_ACCEPTANCE CPgSpectrumMarker::SetCenter()
{
    return At(ZEL::Spectrum / Spectrum::HorizontalCenter)->SetLimited(m_pFrequency->Get());
}

void CPgSpectrumMarker::Follow(const CPgReferenceMarker& reference)
{
    UpdateRelative(reference);
    const CSpectrumScreen screen = CSpectrumScreen::Of(*this);
    screen.UpdateStep(*m_pFrequency);
    KW_CHECKED(m_pMagnitude->SetUnit(screen.LevelUnit()));
    KW_CHECKED(m_pDeltaMagnitude->SetUnit(screen.DifferenceUnit()));
}

void CPgSpectrumMarker::UpdateRelative(const CPgReferenceMarker& reference)
{
    if (reference.GetPrEnabled()->Get() == eKW_ONOFF_OFF)
    {
        NRules::Invalidate({m_pDeltaFrequency, m_pDeltaMagnitude});
        return;
    }
    KW_CHECKED(m_pDeltaFrequency->DbSet(m_pFrequency->Get() - reference.GetPrFrequency()->Get()));
    NRules::WriteDifference(*m_pDeltaMagnitude, *m_pMagnitude, reference.GetPrMagnitude()->Get());
}
