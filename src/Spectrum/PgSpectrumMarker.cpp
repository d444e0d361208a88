// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumMarker.h"

#include "CheckedAccess.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/PgSpectrumMarkers.h"

KW_ACCEPTANCE CPgSpectrumMarker::OnPropertySet(const CDbPropBase* property)
{
    UpdateFromOwner();
    return CPgSpectrumMarkerBase::OnPropertySet(property);
}

void CPgSpectrumMarker::OnPropertyDbSet(const CDbPropBase* property)
{
    // The magnitude is delivered as a result.
    if (property == m_pMagnitude)
    {
        UpdateFromOwner();
    }
}

KW_ACCEPTANCE CPgSpectrumMarker::OnFunction(const CDbFunction* function)
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root != nullptr && function == m_pSetCenter)
    {
        return root->GetPgSpectrum()->GetPrHorizontalCenter()->SetLimited(m_pFrequency->Get());
    }
    return CPgSpectrumMarkerBase::OnFunction(function);
}

void CPgSpectrumMarker::UpdateFromOwner()
{
    const CDbPropertyGroup* const container = GetParent();
    const auto* const owner = dynamic_cast<const CPgSpectrumMarkers*>(
        container != nullptr ? container->GetParent() : nullptr);
    if (owner != nullptr)
    {
        Follow(*owner->GetPgReferenceMarker());
    }
}

void CPgSpectrumMarker::Follow(const CPgReferenceMarker& reference)
{
    UpdateRelative(reference);
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetPgSpectrum()->UpdateSteps(*m_pFrequency, nullptr);
    }
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
