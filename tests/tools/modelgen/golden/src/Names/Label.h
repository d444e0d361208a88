// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

class CPgLabel;

namespace NNames
{
/** A named item. */
struct Label
{
    using t_Class = CPgLabel;
    static constexpr t_Way<NNames::Label, CDbPropNum<INT32>> Key{{eNODE::Property, false, 1, {0}}};
};
} // namespace NNames
