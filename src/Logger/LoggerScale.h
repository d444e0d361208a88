// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

enum KW_ZEL_LOGGER_HORIZONTAL_SCALE : INT32;

/** Time scales of the logger's diagrams, which are ten divisions wide. */
namespace NLoggerScale
{
/** Width of the diagram in seconds. */
double WidthOf(KW_ZEL_LOGGER_HORIZONTAL_SCALE scale);

/** The finest scale at which `seconds` are visible at once; the coarsest one for more. */
KW_ZEL_LOGGER_HORIZONTAL_SCALE FinestFor(double seconds);
} // namespace NLoggerScale
