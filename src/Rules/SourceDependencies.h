// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropEnum.h"

class CDbPropertyGroup;
enum KW_ZEL_CHANNEL : INT32;

/** When a channel counts as an active source. */
enum ESOURCE_ACTIVITY_CHECK
{
    eSOURCE_ACTIVITY_EXISTS = 0, ///< every channel but "none", switched on or not
    eSOURCE_ACTIVITY_ACQUIRED,   ///< what an acquisition delivers: inputs and the serial bus
    eSOURCE_ACTIVITY_SWITCHED_ON ///< channels that the user has switched on
};

/** Answers for one function of the instrument whether it can use a channel as a source. */
class IApplicationOnSources
{
public:
    virtual ~IApplicationOnSources() = default;
    /** Whatever the state of the channel: that is asked apart (CSourceActivity). */
    virtual bool IsSourceApplicable(KW_ZEL_CHANNEL channel) const = 0;
};

/** Whether channels are active, by a check and the state of the tree that `group` belongs to. */
class CSourceActivity
{
public:
    CSourceActivity(ESOURCE_ACTIVITY_CHECK check, const CDbPropertyGroup* group)
        : m_check(check), m_group(group)
    {
    }
    /** "None" is never active. */
    bool IsSourceActive(KW_ZEL_CHANNEL channel) const;
    /** Whether the channels that the mathematics channel is computed from are on: without them it
       is none. Asked inside of a tree. */
    bool IsMathematicsFed() const;

private:
    /** By the settings of the tree; false outside of one. */
    bool IsSwitchedOn(KW_ZEL_CHANNEL channel) const;

    ESOURCE_ACTIVITY_CHECK m_check;
    const CDbPropertyGroup* m_group; ///< null outside of a tree: there nothing is on
};

/** Restricts a source selector to the channels that its function can use now. */
class CSourceDependencies
{
public:
    CSourceDependencies(const IApplicationOnSources& application, ESOURCE_ACTIVITY_CHECK check)
        : m_application(application), m_check(check)
    {
    }

    /**
     * Enables the usable channels, and "none" as the last resort when there is no other. Answers
     * whether the present value can stay; with `adjust` a value that can not is replaced by the
     * lowest usable channel until the user's own can be used again, and the answer is whether
     * there is one.
     */
    bool SetAvailableSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, bool adjust) const;

private:
    const IApplicationOnSources& m_application; ///< outlives this
    ESOURCE_ACTIVITY_CHECK m_check;
};
