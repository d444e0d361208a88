// SPDX-License-Identifier: MIT
#pragma once

#include "PgSMMeterBase.h"
#include "RunStopMachine.h"

/** State machine of the multimeter. */
class CPgSMMeter : public CRunStopMachine<CPgSMMeterBase>
{
};
