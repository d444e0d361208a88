// SPDX-License-Identifier: MIT
// Generated from Texts.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Couplings/DbNames.h"

class CPgTexts;

namespace NNames
{
/** All kinds of texts; the name | pipe is part of this. */
struct Texts
{
    using t_Class = CPgTexts;
    static constexpr t_Way<NNames::Texts, CDbPropString> Title{{eNODE::Property, false, 1, {0}}};
    static constexpr t_Way<NNames::Texts, CDbPropString> Phrase{{eNODE::Property, false, 1, {1}}};
    static constexpr t_Way<NNames::Texts, CDbPropBitPattern>
        Pattern{{eNODE::Property, false, 1, {2}}};
    static constexpr t_Way<NNames::Texts, CDbPropFilePath> File{{eNODE::Property, false, 1, {3}}};
};
} // namespace NNames
