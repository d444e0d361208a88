// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumMarkers.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Properties/DbPropReference.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgaSpectrumMarker.h"

KW_ACCEPTANCE CPgSpectrumMarkers::OnFunction(const CDbFunction* function)
{
    if (function == m_pSetReference)
    {
        return SetReference();
    }
    if (function == m_pRemoveAll)
    {
        return KW_CHECKED(m_pSpectrumMarker->DbRemovePriv(0, m_pSpectrumMarker->GetCount()));
    }
    return CPgSpectrumMarkersBase::OnFunction(function);
}

KW_ACCEPTANCE CPgSpectrumMarkers::SetReference()
{
    const auto group = m_pSelectedMarker->GetReferencedGroup();
    const auto* const marker = dynamic_cast<const CPgSpectrumMarker*>(group.get());
    if (marker == nullptr)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    KW_CHECKED(m_pReferenceMarker->GetPrFrequency()->DbSet(marker->GetPrFrequency()->Get()));
    KW_CHECKED(m_pReferenceMarker->GetPrMagnitude()->DbSet(marker->GetPrMagnitude()->Get()));
    return KW_CHECKED(m_pReferenceMarker->GetPrEnabled()->DbSet(eKW_ONOFF_ON));
}

void CPgSpectrumMarkers::UpdateGroup()
{
    for (INT32 i = 0; i < m_pSpectrumMarker->GetCount(); ++i)
    {
        m_pSpectrumMarker->ItemDirect(i)->Follow(*m_pReferenceMarker);
    }
}

void CPgSpectrumMarkers::OnTreeCreated()
{
    CPgSpectrumMarkersBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this,
            {m_pReferenceMarker->GetPrEnabled(), m_pReferenceMarker->GetPrFrequency(),
             m_pReferenceMarker->GetPrMagnitude()},
            [this] { UpdateGroup(); }, QStringLiteral("SpectrumMarkers/DeltaFrequency"));
    }
}

void CPgSpectrumMarkers::OnItemInserted(CDbContainerBase* /*container*/, const QString& /*item*/)
{
    UpdateGroup();
}
