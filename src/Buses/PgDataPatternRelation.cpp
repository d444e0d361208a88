// SPDX-License-Identifier: MIT
#include "Buses/PgDataPatternRelation.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/DataPatternRelation.h"

using namespace NNames;

t_Couplings CPgDataPatternRelation::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgDataPatternRelation::FitPatterns>);
    return rows;
}

void CPgDataPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

void CPgDataPatternRelation::FitPatterns(const CDbPropBase* written)
{
    if (const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this))
    {
        NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern}, sizes->DataSize(),
                            written);
    }
}
