// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskSettingsBase.h"

/** Making of a mask, around one of the traces that have levels. */
class CPgMaskSettings : public CPgMaskSettingsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
};
