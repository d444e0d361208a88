// SPDX-License-Identifier: MIT
#pragma once

#include "DbNames.h"
#include "KWAcceptance.h"

#include <utility>

class CDbObject;
class CDbPropBase;
class CDbPropertyGroup;

/** What starts a row of a group's rules; bits, so that a group can say which of them it has. */
enum class eCAUSE : UINT8
{
    On = 0x01,        ///< at once: a client wrote the setting or ran the action
    OnAny = 0x02,     ///< at once: a client wrote any setting of the group
    Delivered = 0x04, ///< at once: an internal write, of the acquisition or of rules
    Changed = 0x08,   ///< once at the end of the outermost write
    Items = 0x10,     ///< at once: items came, went or were renamed
    Fresh = 0x20,     ///< once, when the group has become part of a whole tree
    Twins = 0x40,     ///< never: two settings that say the same
    None = 0x80       ///< only when everything is computed
};

constexpr UINT8 operator|(eCAUSE a, eCAUSE b)
{
    return static_cast<UINT8>(static_cast<UINT8>(a) | static_cast<UINT8>(b));
}
constexpr UINT8 operator|(UINT8 causes, eCAUSE cause)
{
    return static_cast<UINT8>(causes | static_cast<UINT8>(cause));
}
constexpr bool HasCause(UINT8 causes, eCAUSE cause)
{
    return (causes & static_cast<UINT8>(cause)) != 0;
}

/** When a row runs although nothing started it: whenever everything is computed. */
enum class eAGAIN : UINT8
{
    Never,
    WithGroup, ///< with its group, in the order of the tree; what is Changed once more at the end
    AtEnd      ///< when all groups have been computed
};

/** A step: a member function of the group's class, and its name. `written` is the property that
    started the row; null after an action, and where everything is computed. */
struct t_Step
{
    KW_ACCEPTANCE (*run)(CDbPropertyGroup& group, const CDbPropBase* written);
    const char* name;
};

/** A row of a group's rules: what starts it, and what then runs, in this order. */
struct t_Row
{
    const t_Step* steps; ///< null for twins, which run nothing
    UINT16 firstSource;  ///< in the sources of the table
    UINT8 sourceCount;
    UINT8 stepCount;
    eCAUSE cause;
    eAGAIN again;
};

/** The rules of a group's class: constant data, made by Couplings() from a table. */
struct t_Couplings
{
    /** Of static storage: rows are referred to as long as the tree lives. */
    const t_Row* rows = nullptr;
    const NNames::t_Path* sources = nullptr;
    UINT16 rowCount = 0;

    const t_Row* begin() const { return rows; }
    const t_Row* end() const { return rows + rowCount; }
    /** The paths that start a row. */
    std::pair<const NNames::t_Path*, const NNames::t_Path*> SourcesOf(const t_Row& row) const
    {
        const NNames::t_Path* const first = sources + row.firstSource;
        return {first, first + row.sourceCount};
    }
    /** Bits of eCAUSE of all rows. */
    UINT8 Causes() const
    {
        UINT8 causes = 0;
        for (const t_Row& row : *this)
        {
            causes |= static_cast<UINT8>(row.cause);
        }
        return causes;
    }
    /** Whether a member of the group itself starts the row. */
    bool StartsAt(const t_Row& row, NNames::eNODE kind, UINT8 place) const
    {
        const auto [first, last] = SourcesOf(row);
        for (const NNames::t_Path* path = first; path != last; ++path)
        {
            if (path->IsOwn(kind, place))
            {
                return true;
            }
        }
        return false;
    }
};

/** A row that runs, and the one that it runs inside of. */
struct t_RunningRow
{
    const CDbPropertyGroup* group; ///< whose row it is
    const t_Row* row;
    const t_Step* step;        ///< of the row, the one that runs; null before the first
    const t_RunningRow* below; ///< that wrote what started this one; null for the outermost
};

/** Told what starts which row, and of every change of a node with the rows that run. One for the
    process, under the tree's lock. */
class CRowTrace
{
public:
    virtual ~CRowTrace() = default;
    /** `source` is the setting, action or container that starts a row, of Twins the one that a file
        names; null for a row that is fresh or computed. A row that waits (Changed) runs later. */
    virtual void OnStarted(const CDbPropertyGroup& group, const t_Row& row,
                           const CDbObject* source) = 0;
    /** Value, limits, validity or availability changed, or the items of a container did. `running`
        is null for what no row did, such as a client's write. Not told of undo and redo. */
    virtual void OnChanged(const CDbObject& node, const t_RunningRow* running) = 0;

    /** Null ends the watch. */
    static void Watch(CRowTrace* trace) { s_trace = trace; }
    /** Both cost a comparison where nobody watches. */
    static void NoteStart(const CDbPropertyGroup& group, const t_Row& row, const CDbObject* source)
    {
        if (s_trace != nullptr)
        {
            s_trace->OnStarted(group, row, source);
        }
    }
    static void NoteChange(const CDbObject& node)
    {
        if (s_trace != nullptr)
        {
            s_trace->OnChanged(node, s_running);
        }
    }

private:
    friend class CRunningRow;
    friend class CDbPropertyGroup;

    static inline CRowTrace* s_trace = nullptr;
    static inline const t_RunningRow* s_running = nullptr;
};
