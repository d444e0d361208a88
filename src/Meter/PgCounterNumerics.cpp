// SPDX-License-Identifier: MIT
#include "Meter/PgCounterNumerics.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/CounterNumerics.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

using namespace NNames;

namespace
{
constexpr double kPartsPerMillion = 1e6;
}

t_Couplings CPgCounterNumerics::Rules() const
{
    using N = CPgCounterNumerics;
    static constexpr auto rows = Table<Names>(
        OnAny() >> Derive<&N::CompareWithReference>,
        On(Names::SetReference) >> Do<&N::ReferenceFromReading, &N::CompareWithReference>,
        Delivered(Names::Value) >> Do<&N::CompareWithReference>);
    return rows;
}

KW_ACCEPTANCE CPgCounterNumerics::ReferenceFromReading()
{
    return NRules::TakeReading(*m_pReference, *m_pValue);
}

void CPgCounterNumerics::CompareWithReference()
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
