// SPDX-License-Identifier: MIT
#include "Spectrum/PgReferenceMarker.h"

#include "Root/PgZEL.h"
#include "Spectrum/PgSpectrum.h"

KW_ACCEPTANCE CPgReferenceMarker::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgReferenceMarkerBase::OnPropertySet(property);
}

void CPgReferenceMarker::OnPropertyDbSet(const CDbPropBase* /*property*/)
{
    UpdateGroup();
}

void CPgReferenceMarker::UpdateGroup()
{
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetPgSpectrum()->UpdateSteps(*m_pFrequency, m_pMagnitude);
    }
}
