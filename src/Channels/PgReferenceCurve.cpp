// SPDX-License-Identifier: MIT
#include "Channels/PgReferenceCurve.h"

#include "Channels/PgReferenceCurveAttributes.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Mathematics/UnitRules.h"
#include "Names/ReferenceCurve.h"
#include "Names/ReferenceCurveAttributes.h"
#include "Rules/ChannelRules.h"

#include <algorithm>

using namespace NNames;

t_Couplings CPgReferenceCurve::Rules() const
{
    using R = CPgReferenceCurve;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&R::OfferCurve, &R::OfferSources, &R::UpdateUnits>,
        On(Names::SetToOriginal) >> Do<&R::SetToOriginal, &R::UpdateUnits>,
        On(Names::Clear) >> Do<&R::Clear>, Fresh<&R::InvalidateAttributes>,
        // Whether there is a curve comes before who is on.
        Changed(Names::ReferenceCurveAttributes / ReferenceCurveAttributes::RecordLength) >>
            Derive<&R::OfferCurve>,
        NRules::kSwitched >> Derive<&R::OfferSources>,
        NRules::kMathematicsScreen >> Derive<&R::OfferSources>,
        Changed(Names::ReferenceCurveAttributes / ReferenceCurveAttributes::Unit) >>
            Derive<&R::UpdateUnits>);
    return rows;
}

/** A fresh tree has no curve. */
void CPgReferenceCurve::InvalidateAttributes()
{
    NRules::InvalidateResults(*m_pReferenceCurveAttributes);
}

bool CPgReferenceCurve::IsEmpty() const
{
    const CDbPropNumUInt32& length = *m_pReferenceCurveAttributes->GetPrRecordLength();
    return length.GetValidity() != eKW_VALIDITY_VALID || length.Get() == 0;
}

void CPgReferenceCurve::OfferCurve()
{
    KW_CHECKED(m_pEnabled->EnableValue(eKW_ONOFF_ON, !IsEmpty()));
    KW_CHECKED(m_pEnabled->FollowWish(eKW_ONOFF_OFF));
}

void CPgReferenceCurve::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_ANALOG | NRules::eSOURCES_MATHEMATICS |
                                         NRules::eSOURCES_FFT);
}

void CPgReferenceCurve::UpdateUnits()
{
    const KW_UNIT unit = m_pReferenceCurveAttributes->GetPrUnit()->Get();
    KW_CHECKED(m_pScale->SetUnit(NUnits::PerDivision(unit)));
    KW_CHECKED(m_pTimePosition->SetStep(NRules::StepOf(m_pTimeScale->Get())));
    KW_CHECKED(
        m_pReferenceCurveAttributes->GetPrOriginalScale()->SetUnit(NUnits::PerDivision(unit)));
}

KW_ACCEPTANCE CPgReferenceCurve::SetToOriginal()
{
    const CPgReferenceCurveAttributes& taken = *m_pReferenceCurveAttributes;
    if (IsEmpty())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    return std::max({NRules::MoveTo(*m_pScale, taken.GetPrOriginalScale()->Get()),
                     NRules::MoveTo(*m_pPosition, taken.GetPrOriginalPosition()->Get()),
                     NRules::MoveTo(*m_pTimeScale, taken.GetPrOriginalTimeScale()->Get()),
                     KW_CHECKED(m_pTimePosition->DbSet(0.0))});
}

KW_ACCEPTANCE CPgReferenceCurve::Clear()
{
    CPgReferenceCurveAttributes& taken = *m_pReferenceCurveAttributes;
    KW_CHECKED(taken.GetPrRecordLength()->DbSet(0));
    KW_CHECKED(taken.GetPrSource()->DbSet(eKW_ZEL_CHANNEL_NONE));
    InvalidateAttributes();
    return KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
}
