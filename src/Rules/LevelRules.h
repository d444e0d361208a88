// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsTrigger.h"
#include "Rules/ChannelRules.h"

/** Patterns that several groups of levels follow. */
namespace NRules
{
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

private:
    /** Null where the screen moved: the upper one then gives way. */
    void OrderLevels(const CDbPropBase* written)
    {
        KeepOrdered(*this->m_pLowerLevel, *this->m_pUpperLevel, written);
    }
};

/** Base of a group with "LevelSet" and "Level": a fixed level is written where it is selected, and
   a level that the user writes makes the selection "user". */
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

    /** eKW_ACC_WARNING when the selected level lies beyond the limits. */
    KW_ACCEPTANCE FollowSelection()
    {
        const std::optional<double> level =
            this->m_pLevelSet->GetNameInfo().GetNumber(this->m_pLevelSet->GetAsInt());
        return level ? MoveTo(*this->m_pLevel, *level) : eKW_ACC_OK;
    }

private:
    /** Also where the level is the one that was selected: to confirm it is a choice. */
    void SelectUser() { KW_CHECKED(this->m_pLevelSet->DbSet(eKW_TRIGGER_LEVEL_SET_USER)); }
};
} // namespace NRules
