// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropText.h"

enum KW_RELATION : INT32;
class CDbPropertyGroup;

/** Patterns of bits that a bus trigger looks for: the trigger says how long they are, the
    conditions below it keep to that. Everything here runs under the tree's lock. */
namespace NRules
{
/** Bits that a pattern can have: multiples of `unit` from `min` to `max`. */
struct t_PatternSize
{
    INT32 unit; ///< bits; min and max are multiples of it
    INT32 min;
    INT32 max;
};

constexpr INT32 kPatternBits = 64;

constexpr t_PatternSize ExactPattern(INT32 bits)
{
    return {bits, bits, bits};
}

/** Groups of at least one `unit`, as many as a pattern holds or `bits` allow. */
constexpr t_PatternSize PatternOfUnits(INT32 unit, INT32 bits = kPatternBits)
{
    return {unit, unit, bits / unit * unit};
}

/** The pattern with as many bits as the size wants: the lowest stay, missing ones are `fill`. */
QString FitPattern(const QString& pattern, const t_PatternSize& size, QChar fill);

/** Fits a pattern in its property. */
void FitPattern(CDbPropBitPattern& pattern, const t_PatternSize& size, QChar fill);

/** A group whose children are conditions on patterns: says how long they are now. */
class IPatternSizes
{
public:
    virtual ~IPatternSizes() = default;
    /** Asked under the lock, whenever a setting of the trigger was written. */
    virtual t_PatternSize DataSize() const = 0;
    virtual t_PatternSize IdentifierSize() const { return PatternOfUnits(1); }
    /** Whether the condition on the identifier has a use. */
    virtual bool HasIdentifier() const { return true; }
};

/** The one above a condition; null outside of a trigger. */
const IPatternSizes* PatternSizesAbove(const CDbPropertyGroup& relation);

/** What can be cleared: every bit X. */
class IClearablePattern
{
public:
    virtual ~IClearablePattern() = default;
    virtual void ClearPattern() = 0;
};

/** The settings of one condition. */
struct t_PatternRelation
{
    CDbPropEnum<KW_RELATION>& relation;
    CDbPropBitPattern& lower;
    CDbPropBitPattern& upper;
};

/** Brings both patterns to the same legal length. Relations that compare numbers know no X: it
    counts as 0 in the lower and 1 in the upper pattern; limits of a range are in order, and the
    one that was not `written` gives way. What is not `inUse` is not available, the upper pattern
    outside of ranges neither. */
void FitRelation(const t_PatternRelation& condition, const t_PatternSize& size,
                 const CDbPropBase* written, bool inUse = true);
/** Every bit X; a relation that knows no X becomes "equal". */
void ClearRelation(const t_PatternRelation& condition);
} // namespace NRules
