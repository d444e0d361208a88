// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMModeBase.h"

/** Main mode: SwitchMode makes the selected mode the active one. */
class CPgSMMode : public CPgSMModeBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
};
