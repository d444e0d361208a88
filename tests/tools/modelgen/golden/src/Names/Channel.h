// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

enum KW_RATE : INT32;
class CPgChannel;

namespace NNames
{
/** One input. */
struct Channel
{
    using t_Class = CPgChannel;
    static constexpr t_Way<NNames::Channel, CDbPropNum<double>>
        Scale{{eNODE::Property, false, 1, {0}}};
    static constexpr t_Way<NNames::Channel, CDbPropNum<INT32>>
        Gain{{eNODE::Property, false, 1, {1}}};
    static constexpr t_Way<NNames::Channel, CDbPropEnum<KW_RATE>>
        Rate{{eNODE::Property, false, 1, {2}}};
    static constexpr t_Way<NNames::Channel, CDbPropNum<INT64>>
        Mask{{eNODE::Property, false, 1, {3}}};
    static constexpr t_Way<NNames::Channel, CDbPropNum<UINT32>>
        Reading{{eNODE::Property, false, 1, {4}}};
};
} // namespace NNames
