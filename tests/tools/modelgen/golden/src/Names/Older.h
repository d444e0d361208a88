// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

class CPgOlder;

namespace NNames
{
/** What only a removed array holds. */
struct Older
{
    using t_Class = CPgOlder;
    static constexpr t_Way<NNames::Older, CDbPropNum<INT32>>
        Level{{eNODE::Property, false, 1, {0}}};
};
} // namespace NNames
