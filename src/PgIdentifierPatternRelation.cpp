// SPDX-License-Identifier: MIT
#include "PgIdentifierPatternRelation.h"

KW_ACCEPTANCE CPgIdentifierPatternRelation::OnPropertySet(const CDbPropBase* property)
{
    return std::max(Fit(property), CPgIdentifierPatternRelationBase::OnPropertySet(property));
}

void CPgIdentifierPatternRelation::UpdateGroup()
{
    Fit(nullptr);
}

void CPgIdentifierPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

KW_ACCEPTANCE CPgIdentifierPatternRelation::Fit(const CDbPropBase* written)
{
    const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this);
    return sizes == nullptr
               ? eKW_ACC_OK
               : NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern},
                                     sizes->IdentifierSize(), written, sizes->HasIdentifier());
}
