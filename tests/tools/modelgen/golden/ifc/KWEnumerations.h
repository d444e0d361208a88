// SPDX-License-Identifier: MIT
// Generated from the enumeration files: change the model, not this file.
#pragma once

/** All enumerations at once. A source that names few of them includes their own headers, and is
    compiled again when those change alone. */
#include "KWEnumerationsBasics.h"
