// SPDX-License-Identifier: MIT
#include "Meter/PgCounterNumerics.h"

#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

namespace
{
constexpr double kPartsPerMillion = 1e6;
}

KW_ACCEPTANCE CPgCounterNumerics::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgCounterNumericsBase::OnPropertySet(property);
}

void CPgCounterNumerics::OnPropertyDbSet(const CDbPropBase* property)
{
    if (property == m_pValue)
    {
        UpdateGroup();
    }
}

KW_ACCEPTANCE CPgCounterNumerics::OnFunction(const CDbFunction* function)
{
    KW_ACCEPTANCE code = CPgCounterNumericsBase::OnFunction(function);
    if (function == m_pSetReference)
    {
        code = NRules::TakeReading(*m_pReference, *m_pValue);
        UpdateGroup();
    }
    return code;
}

void CPgCounterNumerics::UpdateGroup()
{
    NRules::WriteDifference(*m_pRelativeValue, *m_pValue, m_pReference->Get());
    if (m_pRelativeValue->GetValidity() == eKW_VALIDITY_VALID && m_pReference->Get() != 0.0)
    {
        NRules::WriteResult(*m_pDeviation,
                            m_pRelativeValue->Get() / m_pReference->Get() * kPartsPerMillion);
    }
    else
    {
        NRules::Invalidate({m_pDeviation});
    }
}

void CPgCounterNumerics::DropReading()
{
    NRules::Invalidate({m_pValue, m_pRelativeValue, m_pDeviation, m_pValidDigits});
}
