// SPDX-License-Identifier: MIT
#include "Rules/PatternRules.h"

#include "KWEnumerationsMathematics.h"
#include "Rules/NumberRules.h"

namespace
{
bool IsRange(KW_RELATION relation)
{
    return relation == eKW_RELATION_IN_RANGE || relation == eKW_RELATION_OUT_OF_RANGE;
}

bool KnowsX(KW_RELATION relation)
{
    return relation == eKW_RELATION_EQUAL || relation == eKW_RELATION_NOT_EQUAL;
}
} // namespace

namespace NRules
{
QString FitPattern(const QString& pattern, const t_PatternSize& size, QChar fill)
{
    const INT32 present = static_cast<INT32>(pattern.size());
    const INT32 units = (present + size.unit - 1) / size.unit;
    const INT32 bits = KWMath::Bound(size.min, units * size.unit, size.max);
    return pattern.right(bits).rightJustified(bits, fill);
}

void FitPattern(CDbPropBitPattern& pattern, const t_PatternSize& size, QChar fill)
{
    KW_CHECKED(pattern.DbSet(FitPattern(pattern.Get(), size, fill)));
}

const IPatternSizes* PatternSizesAbove(const CDbPropertyGroup& relation)
{
    const CDbPropertyGroup* const array = relation.GetParent();
    return array != nullptr ? dynamic_cast<const IPatternSizes*>(array->GetParent()) : nullptr;
}

void FitRelation(const t_PatternRelation& condition, const t_PatternSize& size,
                 const CDbPropBase* written, bool inUse)
{
    const bool upperLeads = written == &condition.upper;
    const QString asked = (upperLeads ? condition.upper : condition.lower).Get();
    const QChar x = QLatin1Char('X');
    const INT32 bits = static_cast<INT32>(FitPattern(asked, size, x).size());
    QString lower = FitPattern(condition.lower.Get(), ExactPattern(bits), x);
    QString upper = FitPattern(condition.upper.Get(), ExactPattern(bits), x);
    if (!KnowsX(condition.relation.Get()))
    {
        lower.replace(x, QLatin1Char('0'));
        upper.replace(x, QLatin1Char('1'));
    }
    // Texts of the same length without X compare as their numbers do.
    if (IsRange(condition.relation.Get()) && lower > upper)
    {
        (upperLeads ? lower : upper) = upperLeads ? upper : lower;
    }
    KW_CHECKED(condition.lower.DbSet(lower));
    KW_CHECKED(condition.upper.DbSet(upper));
    SetAvailable({&condition.relation, &condition.lower}, inUse);
    SetAvailable({&condition.upper}, inUse && IsRange(condition.relation.Get()));
}

void ClearRelation(const t_PatternRelation& condition)
{
    if (!KnowsX(condition.relation.Get()))
    {
        KW_CHECKED(condition.relation.DbSet(eKW_RELATION_EQUAL));
    }
    SetAvailable({&condition.upper}, false);
    for (CDbPropBitPattern* const pattern : {&condition.lower, &condition.upper})
    {
        KW_CHECKED(pattern->DbSet(QString(pattern->Get().size(), QLatin1Char('X'))));
    }
}
} // namespace NRules
