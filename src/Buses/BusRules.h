// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbRules.h"
#include "Rules/NumberRules.h"
#include "Rules/PatternRules.h"

#include <optional>
#include <vector>

enum KW_UART_DATA_LENGTH : INT32;
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

/** A line of a bus: its channel, and whether the bus needs it now. */
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

// Protocols --------------------------------------------------------------------------------------

/** The group of the serial bus that belongs to a protocol: it is named after it. */
CDbPropertyGroup* OfProtocol(const CDbPropertyGroup& bus, const QString& protocol,
                             const char* what);

/** Data bits of a word of a UART. */
INT32 WordLength(const CDbPropEnum<KW_UART_DATA_LENGTH>& length);

// Triggers ---------------------------------------------------------------------------------------

/** Base of the bus trigger settings: their conditions follow them, and can be cleared. */
template <typename TBase>
class CBusTrigger : public TBase, public IPatternSizes
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<typename TBase::Names>(PatternRows());
        return rows;
    }

protected:
    /** For the table of a class that has more. */
    static constexpr auto PatternRows()
    {
        return NNames::Rows(NNames::OnAny() >> NNames::Do<&CBusTrigger::FitConditions>, ClearRow());
    }
    /** The same where no setting of the trigger itself says how long a pattern is. */
    static constexpr auto ClearRow()
    {
        return NNames::On(TBase::Names::ClearPatterns) >> NNames::Do<&CBusTrigger::ClearConditions>;
    }

    /** The conditions look up how long they are (IPatternSizes), so they are computed anew. */
    void FitConditions()
    {
        for (const auto& conditions : this->Groups())
        {
            UpdateSubtree(*conditions);
        }
    }

private:
    void ClearConditions()
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
};
} // namespace NRules
