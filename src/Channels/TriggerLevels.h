// SPDX-License-Identifier: MIT
#pragma once

#include "Rules/NumberRules.h"

class CPgZEL;

enum KW_ZEL_CHANNEL : INT32;
enum KW_ZEL_TRIGGER_TYPE : INT32;

/** The levels of the channels, as the trigger needs them. */
namespace NTriggerLevels
{
struct t_Levels
{
    UINT32 count; ///< 0: the trigger type looks at no level of an analog channel
    double lower;
    double upper; ///< the same as the lower one where there is only one
};

/** Levels in use for a trigger type at a source. */
t_Levels InUse(const CPgZEL& root, KW_ZEL_TRIGGER_TYPE type, KW_ZEL_CHANNEL source);

/** Registers what must run when the trigger's source or type, or a level of any channel, changes.
 */
void AddDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                   const QString& name);
} // namespace NTriggerLevels
