// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgIdentifierPatternRelationBase.h"
#include "Rules/PatternRules.h"

/** Condition on the identifier or address: its patterns are as long as the trigger above says, and
    without use where the trigger leaves it out. */
class CPgIdentifierPatternRelation : public CPgIdentifierPatternRelationBase,
                                     public NRules::IClearablePattern
{
public:
    t_Couplings Rules() const override;
    void ClearPattern() override;

private:
    void FitPatterns(const CDbPropBase* written);
};
