// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"

#include <initializer_list>

class CDbPropString;
class CEnumNameInfo;

/** Settings that each function of a group has for itself, as a range that is of volts in one and of
    ohms in the next. Everything here runs under the tree's lock. */
namespace NRules
{
/** One of the things that tell functions apart: a value of an enumeration. */
struct t_FunctionPart
{
    const CEnumNameInfo& names;
    INT32 value;
};

/**
 * Keeps and restores the settings of functions; to be derived from whatever selects the function
 * and from the settings. While `function` is the one of before, `memory` takes what the user set;
 * where it is another one, the settings become what was set in it, or their defaults. What a recall
 * names belongs to the function that stands after it, and is left alone.
 *
 * `memory` is saved with the settings, and clients can not write it: "OHM; DC_VOLT AutoRange=OFF
 * Range=100", the function that the settings stand for now and then the others, each with the
 * user's values that are no defaults, in the texts of files. Where all are defaults it is empty. An
 * entry that can not be read is reported and has no effect. Its declared length has room for all
 * functions.
 *
 * `settings` are real numbers and enumerations, whose texts have no blanks, in whatever group;
 * their names differ. No row of rules runs for what is restored: derive what follows from it
 * afterwards.
 */
void FollowFunction(CDbPropString& memory, std::initializer_list<t_FunctionPart> function,
                    std::initializer_list<CDbPropBase*> settings);
} // namespace NRules
