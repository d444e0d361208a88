// SPDX-License-Identifier: MIT
#include "Analysis/PgMathematics.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Mathematics/UnitRules.h"
#include "Names/Channel.h"
#include "Names/Mathematics.h"
#include "Names/ReferenceCurve.h"
#include "Names/ReferenceCurveAttributes.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Rules/SourceDependencies.h"

#include <array>
#include <cmath>
#include <optional>

using namespace NNames;

namespace
{
constexpr UINT32 kSources = NRules::eSOURCES_ANALOG | NRules::eSOURCES_REFERENCE;

/** The elements of a text; nothing where it holds anything else. */
std::optional<KW_MathElements> Read(const QString& text)
{
    KW_MathElements elements;
    KW_MathError error;
    const KW_ACCEPTANCE code = KW_ReadMathElements(text, elements, error);
    return KW_IsAccepted(code) ? std::optional(std::move(elements)) : std::nullopt;
}

/** None where the text can not be computed. */
CKWMathExpression ExpressionOf(const QString& text)
{
    CKWMathExpression expression;
    KW_MathError error;
    expression.Read(text, error);
    return expression;
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
    const std::optional<KW_MathElements> elements = Read(m_pExpression->Get());
    const auto count = static_cast<UINT32>(elements ? elements->size() : 0);
    const bool isValid = static_cast<bool>(ExpressionOf(m_pExpression->Get()));
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
    KW_CHECKED(m_pScale->SetUnit(NUnits::PerDivision(m_pUnit->Get())));
    KW_CHECKED(m_pIntegralStart->SetUnit(NUnits::TimesSecond(UnitOfSource(m_pSourceA->Get()))));
}

KW_UNIT CPgMathematics::UnitOfSource(KW_ZEL_CHANNEL channel) const
{
    return NRules::UnitOf(*this, channel);
}

KW_UNIT CPgMathematics::UnitOfOperation() const
{
    return NUnits::OfOperation(m_pType->Get(), UnitOfSource(m_pSourceA->Get()),
                               UnitOfSource(m_pSourceB->Get()));
}

KW_UNIT CPgMathematics::UnitOfExpression() const
{
    const CKWMathExpression expression = ExpressionOf(m_pExpression->Get());
    std::array<KW_UNIT, eKW_MATH_CHANNELS> units{};
    for (const KW_ZEL_CHANNEL source : expression.GetSources())
    {
        units[source] = UnitOfSource(source);
    }
    return expression.GetUnit(units);
}

KW_MathElement CPgMathematics::ShownElement() const
{
    KW_MathElement element;
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
    const KW_MathElements elements = Read(m_pExpression->Get()).value_or(KW_MathElements{});
    const UINT32 selected = m_pSelectedElement->Get();
    const KW_MathElement element =
        selected < elements.size() ? elements[selected] : KW_MathElement{};
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
    std::optional<KW_MathElements> elements = Read(m_pExpression->Get());
    if (!elements)
    {
        return eKW_ACC_BAD_TEXT;
    }
    const KW_MathElement element = ShownElement();
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
    std::optional<KW_MathElements> elements = Read(m_pExpression->Get());
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

KW_ACCEPTANCE CPgMathematics::Rewrite(const KW_MathElements& elements, UINT32 behind)
{
    const QString text = KW_WriteMathElements(elements);
    const std::optional<KW_MathElements> readBack = Read(text);
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
