// SPDX-License-Identifier: MIT
#pragma once

#include "PgSMLoggerBase.h"
#include "RunStopMachine.h"

/** State machine of the logger. */
class CPgSMLogger : public CRunStopMachine<CPgSMLoggerBase>
{
};
