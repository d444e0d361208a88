// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSignalTranslationBase.h"

/** Signal in the payload: it has the bits that its value type needs, ends within the payload, and
    its limits are in order. In a payload that is too short for its type it begins at bit 0. */
class CPgSignalTranslation : public CPgSignalTranslationBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

private:
    void UpdateSteps();
};
