// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/BusRules.h"
#include "Trigger/PgIdentifierPatternRelationBase.h"

/** Condition on the identifier or address: its patterns are as long as the trigger above says, and
    without use where the trigger leaves it out. */
class CPgIdentifierPatternRelation : public CPgIdentifierPatternRelationBase,
                                     public NRules::IClearablePattern
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    void ClearPattern() override;

private:
    void Fit(const CDbPropBase* written);
};
