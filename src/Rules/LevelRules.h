// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsTrigger.h"
#include "KWEnumerationsUnits.h"
#include "Rules/ChannelRules.h"

#include <algorithm>
#include <optional>

/** Patterns that several groups of levels follow. */
namespace NRules
{
/** Lets a selector offer its fixed levels, which are volts, where levels are in volts: no logic
   family has a threshold in amperes. There the user's level (`user`) stands in for one. */
template <typename T>
void OfferFixedLevels(CDbPropEnum<T>& selector, KW_UNIT unit, T user)
{
    for (INT32 value = 0; value < selector.GetEnumSize(); ++value)
    {
        if (selector.GetNameInfo().GetNumber(value))
        {
            KW_CHECKED(selector.EnableValue(value, unit == eKW_UNIT_LEVEL_V));
        }
    }
    KW_CHECKED(selector.FollowWish(user));
}

/** Base of a group with "UpperLevel" and "LowerLevel" on the screen of a channel. */
template <typename TBase>
class COrderedLevels : public TBase
{
public:
    using TBase::TBase;

    t_Couplings Rules() const override
    {
        using N = typename TBase::Names;
        static constexpr auto rows = NNames::Table<N>(NNames::On(N::LowerLevel, N::UpperLevel) >>
                                                      NNames::Do<&COrderedLevels::OrderLevels>);
        return rows;
    }

    /** Led by the channel: limits of both first, so that neither pushes the other for nothing. */
    void FollowScreen(const t_Screen& screen)
    {
        for (CDbPropNumDouble* const level : {this->m_pLowerLevel, this->m_pUpperLevel})
        {
            PutOnScreen(*level, screen);
        }
        OrderLevels(nullptr);
    }

    /** Led by the channel, before the screen follows. */
    void Rescale(double ratio)
    {
        NRules::Rescale(*this->m_pLowerLevel, ratio);
        NRules::Rescale(*this->m_pUpperLevel, ratio);
    }

private:
    /** Null where the screen moved: the upper one then gives way. */
    void OrderLevels(const CDbPropBase* written)
    {
        KeepOrdered(*this->m_pLowerLevel, *this->m_pUpperLevel, written);
    }
};

/** Base of a group with "LevelSet" and "Level": a fixed level is written where it is selected, and
   stands wherever it lies; a level that the user writes makes the selection "user". */
template <typename TBase>
class CSelectedLevel : public TBase
{
public:
    using TBase::TBase;

    t_Couplings Rules() const override
    {
        using N = typename TBase::Names;
        static constexpr auto rows = NNames::Table<N>(SelectionRows());
        return rows;
    }

protected:
    /** For the table of a class that has more. */
    static constexpr auto SelectionRows()
    {
        using N = typename TBase::Names;
        return NNames::Rows(NNames::On(N::Level) >> NNames::Do<&CSelectedLevel::SelectUser>,
                            NNames::On(N::LevelSet) >>
                                NNames::Derive<&CSelectedLevel::FollowSelection>,
                            NNames::Twins(N::LevelSet, N::Level));
    }

    /** Nothing for a level that the user or the signal sets. */
    std::optional<double> FixedLevel() const
    {
        return this->m_pLevelSet->GetNameInfo().GetNumber(this->m_pLevelSet->GetAsInt());
    }

    /** A logic family has its threshold on and off the screen: limits make way. */
    void FollowSelection()
    {
        if (const std::optional<double> level = FixedLevel())
        {
            CDbPropNumDouble& shown = *this->m_pLevel;
            SetLimits(shown, std::min(shown.GetMin(), *level), std::max(shown.GetMax(), *level));
            KW_CHECKED(shown.DbSet(*level));
        }
    }

private:
    /** Also where the level is the one that was selected: to confirm it is a choice. */
    void SelectUser() { KW_CHECKED(this->m_pLevelSet->DbSet(eKW_TRIGGER_LEVEL_SET_USER)); }
};
} // namespace NRules
