// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgDataPatternRelationBase.h"
#include "Rules/PatternRules.h"

/** Condition on the payload: its patterns are as long as the trigger above says. */
class CPgDataPatternRelation : public CPgDataPatternRelationBase, public NRules::IClearablePattern
{
public:
    t_Couplings Rules() const override;
    void ClearPattern() override;

private:
    void FitPatterns(const CDbPropBase* written);
};
