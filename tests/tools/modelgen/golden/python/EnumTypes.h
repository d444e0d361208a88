// SPDX-License-Identifier: MIT
// Generated from the enumeration files: change the model, not this file.
#pragma once

#include "KWEnumerations.h"

/** All enumerations, each as an argument of X. */
#define KWI_ENUMERATIONS(X) \
    X(KW_RATE) \
    X(KW_PROBE) \
    X(KW_SIGN) \
    X(KW_UNIT)
