// SPDX-License-Identifier: MIT
#include "PgDataPatternRelation.h"

KW_ACCEPTANCE CPgDataPatternRelation::OnPropertySet(const CDbPropBase* property)
{
    return std::max(Fit(property), CPgDataPatternRelationBase::OnPropertySet(property));
}

void CPgDataPatternRelation::UpdateGroup()
{
    Fit(nullptr);
}

void CPgDataPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

KW_ACCEPTANCE CPgDataPatternRelation::Fit(const CDbPropBase* written)
{
    const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this);
    return sizes == nullptr ? eKW_ACC_OK
                            : NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern},
                                                  sizes->DataSize(), written);
}
