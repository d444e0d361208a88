// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWEnumerations.h"
#include "KWMath.h"
#include "Rules/UnitRules.h"

#include <initializer_list>
#include <optional>

class CPgZEL;

/** What the rules of several groups share. Everything here runs under the tree's lock. */
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

/** The nearest group of class T above a node; null when there is none. */
template <typename T>
T* Above(const CDbObject& node)
{
    CDbPropertyGroup* group = node.GetParent();
    while (group != nullptr && dynamic_cast<T*>(group) == nullptr)
    {
        group = group->GetParent();
    }
    return static_cast<T*>(group);
}

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

/** Moves the partner of a number that was just moved by the same distance. `difference` is what
    partner minus moved was before. eKW_ACC_WARNING when a limit kept the partner back. */
KW_ACCEPTANCE MovePartner(const CDbPropNumDouble& moved, CDbPropNumDouble& partner,
                          double difference);

// Results ----------------------------------------------------------------------------------------

/** A computed result; invalid where it is no number within the declared limits. */
void WriteResult(CDbPropNumDouble& result, double value);

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

// Channels ---------------------------------------------------------------------------------------

/** Kinds of channels, as bits, that a function can use as its source. */
enum SOURCE_KINDS : UINT32
{
    eSOURCES_ANALOG = 1,
    eSOURCES_DIGITAL = 2,
    eSOURCES_MATHEMATICS = 4,
    eSOURCES_REFERENCE = 8,
    eSOURCES_FFT = 16,
    eSOURCES_INPUTS = eSOURCES_ANALOG | eSOURCES_DIGITAL,
    eSOURCES_LEVELS = eSOURCES_ANALOG | eSOURCES_MATHEMATICS | eSOURCES_REFERENCE,
    eSOURCES_TRACES = eSOURCES_LEVELS | eSOURCES_DIGITAL
};

/** Lets a selector offer the channels of these kinds that are switched on, without `except`; a
    value that is not among them gives way to the lowest that is. */
void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds,
                  KW_ZEL_CHANNEL except = eKW_ZEL_CHANNEL_NONE);

/** Registers what must run when a channel is switched on or off. */
void AddSourceDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                         const QString& name);

/** Registers what must run when the screen of a channel that has levels changes, or its unit. */
void AddScreenDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                         const QString& name);

/** Kind of a channel's trace; digital for "none". */
KW_ZEL_TRACE_TYPE TraceTypeOf(KW_ZEL_CHANNEL channel);

/** Levels at the lower and upper edge of the screen, by the scale of one channel. */
struct t_Screen
{
    double bottom;
    double top;
    double division;
    KW_UNIT unit;
};

/** Gives a level the unit, the limits and the step of a screen; the value follows. */
void PutOnScreen(CDbPropNumDouble& level, const t_Screen& screen);

/** Nothing for channels that have no levels. */
std::optional<t_Screen> ScreenOf(const CPgZEL& root, KW_ZEL_CHANNEL channel);

/** Unit of a channel's levels; none (65) where it has no levels. */
KW_UNIT UnitOf(const CPgZEL* root, KW_ZEL_CHANNEL channel);

// Patterns that several groups follow ------------------------------------------------------------

/** Base of a group with "UpperLevel" and "LowerLevel" on the screen of a channel. */
template <typename TBase>
class COrderedLevels : public TBase
{
public:
    using TBase::TBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override
    {
        KeepOrdered(*this->m_pLowerLevel, *this->m_pUpperLevel, property);
        return TBase::OnPropertySet(property);
    }

    void FollowScreen(const t_Screen& screen)
    {
        for (CDbPropNumDouble* const level : {this->m_pLowerLevel, this->m_pUpperLevel})
        {
            PutOnScreen(*level, screen);
        }
        KeepOrdered(*this->m_pLowerLevel, *this->m_pUpperLevel);
    }
};

/** Base of a group with "LevelSet" and "Level": a fixed level is written where it is selected, and
    a level that the user writes makes the selection "user". */
template <typename TBase>
class CSelectedLevel : public TBase
{
public:
    using TBase::TBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override
    {
        if (property == this->m_pLevel)
        {
            KW_CHECKED(this->m_pLevelSet->DbSet(eKW_TRIGGER_LEVEL_SET_USER));
        }
        const KW_ACCEPTANCE code = property == this->m_pLevelSet ? FollowSelection() : eKW_ACC_OK;
        return std::max(code, TBase::OnPropertySet(property));
    }

    void UpdateGroup() override { FollowSelection(); }

    std::vector<CDbPropertyGroup::t_Twins> Twins() const override
    {
        return {{this->m_pLevelSet, this->m_pLevel}};
    }

protected:
    /** eKW_ACC_WARNING when the selected level lies beyond the limits. */
    KW_ACCEPTANCE FollowSelection()
    {
        const std::optional<double> level =
            this->m_pLevelSet->GetNameInfo().GetNumber(this->m_pLevelSet->GetAsInt());
        return level ? MoveTo(*this->m_pLevel, *level) : eKW_ACC_OK;
    }
};
} // namespace NRules
