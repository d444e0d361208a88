// SPDX-License-Identifier: MIT
#include "Spectrum/PgReferenceMarker.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Spectrum/SpectrumScreen.h"

using namespace NNames;

t_Couplings CPgReferenceMarker::Rules() const
{
    using R = CPgReferenceMarker;
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&R::UpdateLine>,
                                              Delivered(Names::Frequency) >> Do<&R::UpdateLine>);
    return rows;
}

void CPgReferenceMarker::UpdateLine()
{
    CSpectrumScreen::Of(*this).UpdateLine(*m_pFrequency, *m_pMagnitude);
}
