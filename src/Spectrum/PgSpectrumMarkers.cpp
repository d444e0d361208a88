// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumMarkers.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Containers/DbPropReference.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "Names/ReferenceMarker.h"
#include "Names/SpectrumMarker.h"
#include "Rules/ReadingRules.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgaSpectrumMarker.h"

using namespace NNames;

t_Couplings CPgSpectrumMarkers::Rules() const
{
    using M = CPgSpectrumMarkers;
    constexpr auto marker = Names::SpectrumMarker / each;
    constexpr auto reference = Names::ReferenceMarker;
    static constexpr auto rows = Table<Names>(
        On(Names::SetReference) >> Do<&M::SetReference>, On(Names::RemoveAll) >> Do<&M::RemoveAll>,
        On(marker / SpectrumMarker::Enabled, marker / SpectrumMarker::Frequency) >>
            Do<&M::UpdateMarker>,
        Delivered(marker / SpectrumMarker::Magnitude) >> Do<&M::UpdateMarker>,
        Items(Names::SpectrumMarker) >> Do<&M::UpdateMarkers>,
        On(reference / ReferenceMarker::Enabled, reference / ReferenceMarker::Frequency,
           reference / ReferenceMarker::Magnitude) >>
            Derive<&M::UpdateMarkers>,
        Delivered(reference / ReferenceMarker::Enabled, reference / ReferenceMarker::Frequency,
                  reference / ReferenceMarker::Magnitude) >>
            Do<&M::UpdateMarkers>);
    return rows;
}

KW_ACCEPTANCE CPgSpectrumMarkers::RemoveAll()
{
    return KW_CHECKED(m_pSpectrumMarker->DbRemovePriv(0, m_pSpectrumMarker->GetCount()));
}

KW_ACCEPTANCE CPgSpectrumMarkers::SetReference()
{
    const auto group = m_pSelectedMarker->GetReferencedGroup();
    const auto* const marker = dynamic_cast<const CPgSpectrumMarker*>(group.get());
    if (marker == nullptr)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const KW_ACCEPTANCE code =
        NRules::TakeReading(*m_pReferenceMarker->GetPrMagnitude(), *marker->GetPrMagnitude());
    if (code > eKW_ACC_WARNING)
    {
        return code;
    }
    KW_CHECKED(m_pReferenceMarker->GetPrFrequency()->DbSet(marker->GetPrFrequency()->Get()));
    return KW_CHECKED(m_pReferenceMarker->GetPrEnabled()->DbSet(eKW_ONOFF_ON));
}

void CPgSpectrumMarkers::UpdateMarkers()
{
    for (INT32 i = 0; i < m_pSpectrumMarker->GetCount(); ++i)
    {
        m_pSpectrumMarker->ItemDirect(i)->Follow(*m_pReferenceMarker);
    }
}

void CPgSpectrumMarkers::UpdateMarker(const CDbPropBase* written)
{
    static_cast<CPgSpectrumMarker*>(written->GetParent())->Follow(*m_pReferenceMarker);
}
