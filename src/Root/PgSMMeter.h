// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMMeterBase.h"
#include "Root/RunStopMachine.h"

/** State machine of the multimeter. */
class CPgSMMeter : public CRunStopMachine<CPgSMMeterBase>
{
};
