// SPDX-License-Identifier: MIT
#include "Buses/PgIdentifierPatternRelation.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/IdentifierPatternRelation.h"

using namespace NNames;

t_Couplings CPgIdentifierPatternRelation::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgIdentifierPatternRelation::FitPatterns>);
    return rows;
}

void CPgIdentifierPatternRelation::ClearPattern()
{
    NRules::ClearRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern});
}

void CPgIdentifierPatternRelation::FitPatterns(const CDbPropBase* written)
{
    if (const NRules::IPatternSizes* const sizes = NRules::PatternSizesAbove(*this))
    {
        NRules::FitRelation({*m_pRelation, *m_pPattern, *m_pUpperPattern}, sizes->IdentifierSize(),
                            written, sizes->HasIdentifier());
    }
}
