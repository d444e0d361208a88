// SPDX-License-Identifier: MIT
#pragma once

#include "Trigger/PgTimeRangeBase.h"

/** Condition on a duration: its limits are in order. */
class CPgTimeRange : public CPgTimeRangeBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
};
