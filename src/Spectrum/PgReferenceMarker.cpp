// SPDX-License-Identifier: MIT
#include "Spectrum/PgReferenceMarker.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Spectrum/SpectrumScreen.h"

using namespace NNames;

t_Couplings CPgReferenceMarker::Rules() const
{
    using R = CPgReferenceMarker;
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&R::UpdateSteps>,
                                              Delivered(Names::Frequency) >> Do<&R::UpdateSteps>);
    return rows;
}

void CPgReferenceMarker::UpdateSteps()
{
    CSpectrumScreen::Of(*this).UpdateSteps(*m_pFrequency, m_pMagnitude);
}
