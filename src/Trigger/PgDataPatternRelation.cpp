// SPDX-License-Identifier: MIT
#include "Trigger/PgDataPatternRelation.h"

KW_ACCEPTANCE CPgDataPatternRelation::OnPropertySet(const CDbPropBase* property)
{
    Fit(property);
    return CPgDataPatternRelationBase::OnPropertySet(property);
}

void CPgDataPatternRelation::UpdateGroup()
{
    Fit(nullptr);
}

void CPgDataPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

void CPgDataPatternRelation::Fit(const CDbPropBase* written)
{
    if (const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this))
    {
        NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern}, sizes->DataSize(),
                            written);
    }
}
