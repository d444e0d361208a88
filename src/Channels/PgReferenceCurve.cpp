// SPDX-License-Identifier: MIT
#include "Channels/PgReferenceCurve.h"

#include "Channels/PgReferenceCurveAttributes.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Root/PgZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/UnitRules.h"

KW_ACCEPTANCE CPgReferenceCurve::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgReferenceCurveBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgReferenceCurve::OnFunction(const CDbFunction* function)
{
    if (function == m_pSetToOriginal)
    {
        return SetToOriginal();
    }
    return function == m_pClear ? Clear() : CPgReferenceCurveBase::OnFunction(function);
}

void CPgReferenceCurve::UpdateGroup()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_ANALOG | NRules::eSOURCES_MATHEMATICS |
                                         NRules::eSOURCES_FFT);
    const KW_UNIT unit = m_pReferenceCurveAttributes->GetPrUnit()->Get();
    KW_CHECKED(m_pScale->SetUnit(NRules::UnitPerDivision(unit)));
    KW_CHECKED(m_pTimePosition->SetStep(NRules::StepOf(m_pTimeScale->Get())));
    KW_CHECKED(
        m_pReferenceCurveAttributes->GetPrOriginalScale()->SetUnit(NRules::UnitPerDivision(unit)));
}

void CPgReferenceCurve::OnTreeCreated()
{
    CPgReferenceCurveBase::OnTreeCreated();
    NRules::InvalidateResults(*m_pReferenceCurveAttributes);
    const auto update = [this] { UpdateGroup(); };
    const QString name = QStringLiteral("ReferenceCurve/Source");
    NRules::AddSourceDependency(*this, update, name);
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(*this, {m_pReferenceCurveAttributes->GetPrUnit()}, update,
                                    name);
    }
}

KW_ACCEPTANCE CPgReferenceCurve::SetToOriginal()
{
    const CPgReferenceCurveAttributes& taken = *m_pReferenceCurveAttributes;
    if (taken.GetPrRecordLength()->Get() == 0)
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
    NRules::InvalidateResults(taken);
    return KW_CHECKED(m_pEnabled->DbSet(eKW_ONOFF_OFF));
}
