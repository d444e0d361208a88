// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Trigger/PgDataPatternRelationBase.h"

/** Condition on the payload: its patterns are as long as the trigger above says. */
class CPgDataPatternRelation : public CPgDataPatternRelationBase, public NRules::IClearablePattern
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    void ClearPattern() override;

private:
    void Fit(const CDbPropBase* written);
};
