// SPDX-License-Identifier: MIT
#pragma once

#include "Root/PgSMLoggerBase.h"
#include "Root/RunStopMachine.h"

/** State machine of the logger. */
class CPgSMLogger : public CRunStopMachine<CPgSMLoggerBase>
{
};
