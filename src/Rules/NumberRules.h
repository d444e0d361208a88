// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWMath.h"

#include <initializer_list>
#include <optional>

/** What the rules of several groups share about numbers, results and places in the tree. Everything
    here runs under the tree's lock. */
namespace NRules
{
constexpr double kVerticalDivisions = 8.0;
/** At the fastest scale, 1 ns/div, an acquisition then covers 10 ns: 12.5 samples at 1.25e9 Sa/s,
    the half value for which the record length rounds up. */
constexpr double kHorizontalDivisions = 10.0;
/** Where the two cursors go when they are set to the screen: parts of its width. */
constexpr double kLeftCursorPlace = 0.25;
constexpr double kRightCursorPlace = 0.75;

// Places in the tree -----------------------------------------------------------------------------

/** Index of an item in its array, 0 for a group that is no item. */
INT32 IndexInArray(const CDbPropertyGroup& item);

/** Runs UpdateGroup of a group and of all below it, children first. */
void UpdateSubtree(CDbPropertyGroup& group);

/** Sets the user's settings at and below a group to their defaults; limits follow. What depends on
    them is up to the caller. */
void WriteUserDefaults(CDbPropertyGroup& group);

// Scales -----------------------------------------------------------------------------------------

/** The width of the screen at a horizontal scale. Scales stand for decimals: 500 ns/div shows 5 µs,
    and not the double below, which would cost the acquisition a sample. */
inline double ScreenWidth(double scale)
{
    return KWMath::DecimalProduct(scale, kHorizontalDivisions);
}

/** What one press of a key moves a line by, at a scale per division: a fiftieth of a division, two
    pixels of the screen. */
inline double StepOf(double scale)
{
    constexpr double kStepInDivisions = 0.02;
    return KWMath::DecimalProduct(scale, kStepInDivisions);
}

/** A positive step, rounded down to 1, 2 or 5 times a power of ten: what follows a number of any
    digits, or one that the steps themselves move, then keeps to a grid that can be read. */
double RoundStep(double step);

// Numbers ----------------------------------------------------------------------------------------

/** Moves both limits, as far as the declared ones let them; the value follows. */
template <typename T>
void SetLimits(CDbPropNum<T>& property, T min, T max)
{
    const T lowest = property.GetDeclaredMin();
    const T highest = property.GetDeclaredMax();
    KW_CHECKED(property.SetMinAndMax(KWMath::Bound(lowest, min, highest),
                                     KWMath::Bound(lowest, max, highest)));
}

/** Writes `value`, or the limit that is in its way: then the answer is eKW_ACC_WARNING. */
template <typename T>
KW_ACCEPTANCE MoveTo(CDbPropNum<T>& property, T value)
{
    const T bounded = KWMath::Bound(property.GetMin(), value, property.GetMax());
    return std::max<KW_ACCEPTANCE>(KW_CHECKED(property.DbSet(bounded)),
                                   bounded == value ? eKW_ACC_OK : eKW_ACC_WARNING);
}

/** Keeps lower ≤ upper: when they are crossed, the one that was not `written` gives way. Both have
    the same limits. Without a writer, as when limits open again, the upper one gives way. */
template <typename T>
void KeepOrdered(CDbPropNum<T>& lower, CDbPropNum<T>& upper, const CDbPropBase* written = nullptr)
{
    if (lower.Get() > upper.Get())
    {
        CDbPropNum<T>& yielding = written == &upper ? lower : upper;
        KW_CHECKED(yielding.DbSet(written == &upper ? upper.Get() : lower.Get()));
    }
}

/** How far a line stands behind another one, as the decimal number that both places mean. */
inline double Distance(double from, double to)
{
    return KWMath::DecimalSum(to, -from);
}

/** Moves the partner of a number that was just moved by the same distance. Where a limit stops the
    partner, the moved one stops with it. `difference` is what partner minus moved was before. Both
    then stand where they were put: what limits held back of either before is given up with the
    move. eKW_ACC_WARNING when a limit stopped them. */
KW_ACCEPTANCE MoveTogether(CDbPropNumDouble& moved, CDbPropNumDouble& partner, double difference);

/** Moves what was asked for to `ratio` times itself; limits make way, and are to be set anew. What
    was a short decimal stays one, so that a ratio and its inverse lead back. */
void Rescale(CDbPropNumDouble& number, double ratio);

// Results ----------------------------------------------------------------------------------------

/** A computed result; invalid where it is no number within the declared limits. */
void WriteResult(CDbPropNumDouble& result, double value);

/** The same of an enumeration: what it would be stands also while it is invalid. */
template <typename T>
void WriteResult(CDbPropEnum<T>& result, T value, bool isValid)
{
    if (isValid || result.Get() != value)
    {
        KW_CHECKED(result.DbSet(value));
    }
    KW_CHECKED(result.SetValidity(isValid ? eKW_VALIDITY_VALID : eKW_VALIDITY_INVALID));
}

/** Sets the results of a group invalid, those of child groups not. */
void InvalidateResults(CDbPropertyGroup& group);

/** What the present state has no use for can not be written by clients; its value is kept. */
inline void SetAvailable(std::initializer_list<CDbPropBase*> properties, bool available)
{
    for (CDbPropBase* const property : properties)
    {
        property->SetAvailability(available ? eAVAILABILITY_AVAILABLE
                                            : eAVAILABILITY_NOT_AVAILABLE);
    }
}
} // namespace NRules
