// SPDX-License-Identifier: MIT
#include "Analysis/PgMathematics.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Names/Channel.h"
#include "Names/Mathematics.h"
#include "Names/ReferenceCurve.h"
#include "Names/ReferenceCurveAttributes.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/SourceDependencies.h"
#include "Rules/UnitRules.h"

#include <cmath>

using namespace NMathExpression;
using namespace NNames;

namespace
{
constexpr UINT32 kSources = NRules::eSOURCES_ANALOG | NRules::eSOURCES_REFERENCE;

KW_UNIT UnitOfRoot(KW_UNIT unit)
{
    return unit == eKW_UNIT_LEVEL_V_SQUARE ? eKW_UNIT_LEVEL_V
           : unit == eKW_UNIT_NONE         ? eKW_UNIT_NONE
                                           : eKW_UNIT_NOT_DEFINED;
}
} // namespace

t_Couplings CPgMathematics::Rules() const
{
    using M = CPgMathematics;
    static constexpr auto all = Derive<&M::OfferSources, &M::UpdateExpression, &M::UpdateUnit>;
    static constexpr auto rows = Table<Names>(
        On(Names::Scale, Names::Position) >> Do<&M::EndAutoScale>, OnAny() >> all,
        On(Names::SelectedElement, Names::Expression) >> Do<&M::ShowSelectedElement>,
        On(Names::InsertElement) >> Do<&M::InsertElement>,
        On(Names::RemoveElement) >> Do<&M::RemoveElement>,
        On(Names::ClearExpression) >>
            Do<&M::ClearExpression, &M::UpdateGroup, &M::ShowSelectedElement>,
        NRules::kSwitched >> Derive<&M::OfferSources, &M::UpdateUnit>,
        Changed(ZEL::Vertical / Vertical::Channel / each / Channel::ProbeUnit,
                ZEL::Vertical / Vertical::ReferenceCurve /
                    ReferenceCurve::ReferenceCurveAttributes / ReferenceCurveAttributes::Unit) >>
            Derive<&M::UpdateUnit>);
    return rows;
}

void CPgMathematics::EndAutoScale()
{
    KW_CHECKED(m_pAutoScale->DbSet(eKW_ONOFF_OFF));
}

void CPgMathematics::OfferSources()
{
    NRules::OfferSources(*m_pSourceA, kSources);
    NRules::OfferSources(*m_pSourceB, kSources);
}

void CPgMathematics::UpdateExpression()
{
    const std::optional<t_Elements> elements = Read(m_pExpression->Get());
    const auto count = static_cast<UINT32>(elements ? elements->size() : 0);
    const bool isValid = elements && UnitOf(*elements, [this](KW_ZEL_CHANNEL source)
                                            { return UnitOfSource(source); });
    KW_CHECKED(m_pExpressionValid->DbSet(isValid ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    KW_CHECKED(m_pElementCount->DbSet(count));
    // One place behind the last element, so that the expression can grow at its end.
    NRules::SetLimits(*m_pSelectedElement, UINT32{0}, count);
}

void CPgMathematics::UpdateUnit()
{
    const bool usesExpression = m_pUseExpression->Get() == eKW_ONOFF_ON;
    NRules::WriteResult(*m_pUnit, usesExpression ? UnitOfExpression() : UnitOfOperation(),
                        CSourceActivity(eSOURCE_ACTIVITY_SWITCHED_ON, this).IsMathematicsFed());
    KW_CHECKED(m_pScale->SetUnit(NRules::UnitPerDivision(m_pUnit->Get())));
    KW_CHECKED(m_pIntegralStart->SetUnit(NRules::UnitTimesSecond(UnitOfSource(m_pSourceA->Get()))));
}

KW_UNIT CPgMathematics::UnitOfSource(KW_ZEL_CHANNEL channel) const
{
    return NRules::UnitOf(*this, channel);
}

KW_UNIT CPgMathematics::UnitOfOperation() const
{
    const KW_UNIT a = UnitOfSource(m_pSourceA->Get());
    const KW_UNIT b = UnitOfSource(m_pSourceB->Get());
    switch (m_pType->Get())
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ADD:
    case eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT:
        return a == b ? a : eKW_UNIT_NOT_DEFINED;
    case eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY:
        return NRules::UnitProduct(a, b);
    case eKW_ZEL_MATHEMATICS_TYPE_DIVIDE:
        return NRules::UnitQuotient(a, b);
    case eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL:
        return NRules::UnitQuotient(eKW_UNIT_NONE, a);
    case eKW_ZEL_MATHEMATICS_TYPE_SQUARE:
        return NRules::UnitProduct(a, a);
    case eKW_ZEL_MATHEMATICS_TYPE_SQRT:
        return UnitOfRoot(a);
    case eKW_ZEL_MATHEMATICS_TYPE_LOG10:
    case eKW_ZEL_MATHEMATICS_TYPE_LN:
        return eKW_UNIT_NONE;
    case eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE:
        return NRules::UnitPerSecond(a);
    case eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL:
        return NRules::UnitTimesSecond(a);
    default:
        return a;
    }
}

KW_UNIT CPgMathematics::UnitOfExpression() const
{
    const std::optional<t_Elements> elements = Read(m_pExpression->Get());
    const auto unitOfSource = [this](KW_ZEL_CHANNEL source) { return UnitOfSource(source); };
    const std::optional<KW_UNIT> unit = elements ? UnitOf(*elements, unitOfSource) : std::nullopt;
    return unit.value_or(eKW_UNIT_NOT_DEFINED);
}

t_Element CPgMathematics::ShownElement() const
{
    t_Element element;
    element.type = m_pElementType->Get();
    switch (element.type)
    {
    case eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE:
        element.source = m_pElementSource->Get();
        element.name = m_pElementSource->GetSerialName(element.source);
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT:
        element.constant =
            m_pElementConstant->Get() * (m_pElementSign->Get() == eKW_SIGN_NEGATIVE ? -1.0 : 1.0);
        element.unit = m_pElementUnit->Get();
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR:
        element.name = m_pElementOperator->Get();
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION:
        element.name = m_pElementFunction->Get();
        break;
    default:
        element.name = element.type == eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET ? QStringLiteral("(")
                                                                              : QStringLiteral(")");
        break;
    }
    return element;
}

void CPgMathematics::ShowSelectedElement()
{
    const t_Elements elements = Read(m_pExpression->Get()).value_or(t_Elements{});
    const UINT32 selected = m_pSelectedElement->Get();
    const t_Element element = selected < elements.size() ? elements[selected] : t_Element{};
    KW_CHECKED(m_pElementType->DbSet(element.type));
    switch (element.type)
    {
    case eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE:
        KW_CHECKED(m_pElementSource->DbSet(element.source));
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT:
        NRules::MoveTo(*m_pElementConstant, std::fabs(element.constant));
        KW_CHECKED(m_pElementSign->DbSet(std::signbit(element.constant) ? eKW_SIGN_NEGATIVE
                                                                        : eKW_SIGN_POSITIVE));
        KW_CHECKED(m_pElementUnit->DbSet(element.unit));
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR:
        KW_CHECKED(m_pElementOperator->DbSet(element.name));
        break;
    case eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION:
        KW_CHECKED(m_pElementFunction->DbSet(element.name));
        break;
    default:
        break;
    }
}

KW_ACCEPTANCE CPgMathematics::InsertElement()
{
    std::optional<t_Elements> elements = Read(m_pExpression->Get());
    if (!elements)
    {
        return eKW_ACC_BAD_TEXT;
    }
    const t_Element element = ShownElement();
    if (element.type == eKW_ZEL_MATH_ELEMENT_TYPE_NONE)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const auto behind = static_cast<UINT32>(elements->size()) - m_pSelectedElement->Get();
    elements->insert(elements->end() - behind, element);
    return Rewrite(*elements, behind);
}

KW_ACCEPTANCE CPgMathematics::RemoveElement()
{
    std::optional<t_Elements> elements = Read(m_pExpression->Get());
    if (!elements)
    {
        return eKW_ACC_BAD_TEXT;
    }
    const UINT32 selected = m_pSelectedElement->Get();
    if (selected >= elements->size())
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const auto behind = static_cast<UINT32>(elements->size()) - selected - 1;
    elements->erase(elements->end() - behind - 1);
    return Rewrite(*elements, behind);
}

KW_ACCEPTANCE CPgMathematics::Rewrite(const t_Elements& elements, UINT32 behind)
{
    const QString text = Write(elements);
    const std::optional<t_Elements> readBack = Read(text);
    if (!readBack)
    {
        return eKW_ACC_CONTAINER_FULL;
    }
    if (text.size() > m_pExpression->GetMaxLength())
    {
        return eKW_ACC_TOO_LONG;
    }
    KW_CHECKED(m_pExpression->DbSet(text));
    UpdateGroup();
    NRules::MoveTo(*m_pSelectedElement, static_cast<UINT32>(readBack->size()) - behind);
    ShowSelectedElement();
    return eKW_ACC_OK;
}

void CPgMathematics::ClearExpression()
{
    KW_CHECKED(m_pExpression->DbSet(QStringLiteral("")));
}
