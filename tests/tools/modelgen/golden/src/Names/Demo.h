// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

enum KW_PROBE : INT32;
class CPgDemo;

namespace NNames
{
struct Channel;
struct Texts;
/** Root of the demonstration. */
struct Demo
{
    using t_Class = CPgDemo;
    static constexpr bool isRoot = true;
    static constexpr t_Way<NNames::Demo, CDbPropEnum<KW_PROBE>>
        State{{eNODE::Property, false, 1, {0}}};
    static constexpr t_Way<NNames::Demo, t_Items<NNames::Channel>>
        Channel{{eNODE::Group, false, 1, {0}}};
    static constexpr t_Way<NNames::Demo, t_Items<NNames::Texts>>
        Label{{eNODE::Group, false, 1, {1}}};
    static constexpr t_Way<NNames::Demo, NNames::Texts> Texts{{eNODE::Group, false, 1, {2}}};
    static constexpr t_Way<NNames::Demo, CDbFunction> Preset{{eNODE::Action, false, 1, {0}}};
    static constexpr t_Way<NNames::Demo, CDbOperation> Stop{{eNODE::Action, false, 1, {1}}};
};
} // namespace NNames
