// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

/** Most characters, bits or bytes; 0 where the kind of property has no such limit. */
INT32 MostLengthOf(const IKWPropertyBase& handle);
