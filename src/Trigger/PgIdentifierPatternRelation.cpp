// SPDX-License-Identifier: MIT
#include "Trigger/PgIdentifierPatternRelation.h"

KW_ACCEPTANCE CPgIdentifierPatternRelation::OnPropertySet(const CDbPropBase* property)
{
    Fit(property);
    return CPgIdentifierPatternRelationBase::OnPropertySet(property);
}

void CPgIdentifierPatternRelation::UpdateGroup()
{
    Fit(nullptr);
}

void CPgIdentifierPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

void CPgIdentifierPatternRelation::Fit(const CDbPropBase* written)
{
    if (const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this))
    {
        NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern}, sizes->IdentifierSize(),
                            written, sizes->HasIdentifier());
    }
}
