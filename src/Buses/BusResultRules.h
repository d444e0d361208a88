// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbRules.h"

namespace NRules
{
/** Tells the table of the bus that frames came or went. */
void FollowFrames(const CDbPropertyGroup& results);

/** Base of the results of one protocol, with the containers of what the table may list. */
template <typename TBase, const auto&... containers>
class CBusResults : public TBase
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<typename TBase::Names>(
            NNames::Items(containers...) >> NNames::Do<&CBusResults::FollowFrames>);
        return rows;
    }

private:
    void FollowFrames() { NRules::FollowFrames(*this); }
};
} // namespace NRules
