// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMModeBase.h"

/** Main mode: SwitchMode makes the selected mode the active one. */
class CPgSMMode : public CPgSMModeBase
{
public:
    t_Couplings Rules() const override;

private:
    KW_ACCEPTANCE SwitchMode();
};
