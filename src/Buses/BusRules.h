// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropText.h"
#include "Rules/NumberRules.h"

#include <optional>
#include <vector>

enum KW_RELATION : INT32;
enum KW_ZEL_CHANNEL : INT32;

/** What the rules of the serial buses share. Everything here runs under the tree's lock. */
namespace NRules
{
// Usual numbers ----------------------------------------------------------------------------------

/** A number and a selector of usual values for it. The first entry of the selector that stands for
    no number is "user". Whatever entry is selected otherwise is the number. */

/** Lets the selector offer what lies within the limits of the number, and "user". */
template <typename TEnum, typename T>
void OfferStandards(CDbPropEnum<TEnum>& standard, const CDbPropNum<T>& number)
{
    for (INT32 value = 0; value < standard.GetEnumSize(); ++value)
    {
        const auto usual = standard.GetNameInfo().GetNumber(value);
        const bool fits = !usual || (*usual >= number.GetMin() && *usual <= number.GetMax());
        KW_CHECKED(standard.EnableValue(value, fits));
    }
}

/** Selects the entry of the number, or "user". */
template <typename TEnum, typename T>
void SelectStandard(CDbPropEnum<TEnum>& standard, const CDbPropNum<T>& number)
{
    std::optional<INT32> user;
    for (INT32 value = 0; value < standard.GetEnumSize(); ++value)
    {
        const auto usual = standard.GetNameInfo().GetNumber(value);
        if (usual && *usual == number.Get() && standard.IsValueEnabled(value))
        {
            KW_CHECKED(standard.DbSetAsInt(value));
            return;
        }
        if (!usual && !user)
        {
            user = value;
        }
    }
    KW_CHECKED(standard.DbSetAsInt(user.value_or(standard.GetAsInt())));
}

/** Keeps both in step after `written`, or after limits moved the number. "User" that was selected
    stays selected until a number is written. */
template <typename TEnum, typename T>
KW_ACCEPTANCE FollowStandard(CDbPropEnum<TEnum>& standard, CDbPropNum<T>& number,
                             const CDbPropBase* written = nullptr)
{
    const auto usual = standard.GetNameInfo().GetNumber(standard.GetAsInt());
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (written == &standard && usual)
    {
        code = MoveTo(number, static_cast<T>(*usual));
    }
    if (written == &number || (usual && *usual != number.Get()))
    {
        SelectStandard(standard, number);
    }
    return code;
}

// Lines ------------------------------------------------------------------------------------------

struct t_BusLine
{
    CDbPropEnum<KW_ZEL_CHANNEL>* source;
    bool inUse;
};

/**
 * Lets the lines of one bus offer the inputs that are switched on. Lines in use have channels of
 * their own: the `written` one keeps its channel, a line that had it takes the lowest free one,
 * which is the former channel of the written line where there is no other. With fewer inputs than
 * lines the last lines share.
 */
void AssignLines(const std::vector<t_BusLine>& lines, const CDbPropBase* written = nullptr);

// Patterns ---------------------------------------------------------------------------------------

/** Bits that a pattern can have: multiples of `unit` from `min` to `max`. */
struct t_PatternSize
{
    INT32 unit;
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

/** Base of the bus trigger settings: their conditions follow them, and can be cleared. */
template <typename TBase>
class CBusTrigger : public TBase, public IPatternSizes
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override
    {
        this->UpdateGroup();
        UpdatePatterns();
        return TBase::OnPropertySet(property);
    }

    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override
    {
        if (function == this->m_pClearPatterns)
        {
            this->VisitChildrenFirst(
                [](CDbPropertyGroup& below)
                {
                    if (auto* const pattern = dynamic_cast<IClearablePattern*>(&below))
                    {
                        pattern->ClearPattern();
                    }
                });
        }
        return TBase::OnFunction(function);
    }

protected:
    void UpdatePatterns()
    {
        for (const auto& conditions : this->Groups())
        {
            UpdateSubtree(*conditions);
        }
    }
};

// Results ----------------------------------------------------------------------------------------

/** Removes the decoded frames of a protocol and sets its counts invalid. */
void ClearBusResults(CDbPropertyGroup& results);

/** Tells the table of the bus that frames came or went. */
void OnFramesChanged(const CDbPropertyGroup& results);

/** Base of the results of one protocol. */
template <typename TBase>
class CBusResults : public TBase
{
public:
    void OnItemInserted(CDbContainerBase* container, const QString& item) override
    {
        TBase::OnItemInserted(container, item);
        OnFramesChanged(*this);
    }

    void OnItemRemoved(CDbContainerBase* container, const QString& item) override
    {
        TBase::OnItemRemoved(container, item);
        OnFramesChanged(*this);
    }
};
} // namespace NRules
