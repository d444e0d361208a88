// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Sources.h"

/** Operations on everything that lies between a lowest and a highest value. */
namespace NMathematics
{
/** All results of one operation, ADD to LN, with values of both; invalid where one has none. */
t_Interval ComputeInterval(KW_ZEL_MATHEMATICS_TYPE type, t_Interval a, t_Interval b);
} // namespace NMathematics
