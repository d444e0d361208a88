// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <array>
#include <cstddef>

class CDbFunction;
class CDbObject;
class CDbOperation;
class CDbPropBitPattern;
class CDbPropBlob;
class CDbPropFilePath;
class CDbPropReference;
class CDbPropString;
class CDbPropertyGroup;
template <typename T>
class CDbPropEnum;
template <typename T>
class CDbPropNum;

/**
 * Names of the nodes of a tree as constants: a way from a group down to a node, typed by both ends.
 * The generator makes a struct of names for each group (Names/<Group>.h); "/" joins them:
 *
 *     ZEL::Vertical / Vertical::Channel / each / Channel::Enabled
 *
 * A way counts places in the lists of groups and properties, which the model fixes: to follow it
 * costs an array access for each step and no text. A step that does not continue the one before
 * does not compile.
 */
namespace NNames
{
enum class eNODE : UINT8
{
    Group = 0,
    Property,
    Action
};

/** What a way looks like to the frame, which knows no types of the model. */
struct t_Path
{
    static constexpr std::size_t kMaxSteps = 13;
    static constexpr UINT8 kItem = 0x80; ///< the step is an item, by the number in the other bits
    static constexpr UINT8 kEach = 0xff; ///< the step is every item

    eNODE kind;      ///< of the last step; all before are groups
    bool isFromRoot; ///< else from the group that uses the way
    UINT8 length;
    std::array<UINT8, kMaxSteps> steps; ///< places in the lists of groups, properties or actions

    constexpr bool operator==(const t_Path&) const = default;
    /** Whether it is the member of that kind at that place of the group that uses the way. */
    constexpr bool IsOwn(eNODE of, UINT8 place) const
    {
        return length == 1 && kind == of && !isFromRoot && steps[0] == place;
    }
    /** Whether it is a member of the group that uses the way. */
    constexpr bool IsOwn() const { return length == 1 && !isFromRoot; }
};

/** Tag of a container: its items are groups named by T. */
template <typename T>
struct t_Items
{
    using t_Class = CDbPropertyGroup;
};

/** A way from a group named by TFrom down to a node: TNode is the class of a property or action,
    the names of a group, or t_Items. */
template <typename TFrom, typename TNode>
struct t_Way
{
    using From = TFrom;
    using Node = TNode;
    t_Path path;
};

/** Every item of a container. */
struct t_Each
{
};
inline constexpr t_Each each;

/** Both in turn; the start stays that of the first. */
constexpr t_Path Joined(const t_Path& way, const t_Path& further)
{
    t_Path joined = way;
    joined.kind = further.kind;
    for (std::size_t i = 0; i < further.length; ++i)
    {
        joined.steps[joined.length++] = further.steps[i];
    }
    return joined;
}

template <typename TFrom, typename TGroup, typename TNode>
constexpr t_Way<TFrom, TNode> operator/(const t_Way<TFrom, TGroup>& way,
                                        const t_Way<TGroup, TNode>& further)
{
    return {Joined(way.path, further.path)};
}

template <typename TFrom, typename TGroup>
constexpr t_Way<TFrom, TGroup> operator/(const t_Way<TFrom, t_Items<TGroup>>& way, t_Each /*each*/)
{
    return {Joined(way.path, {eNODE::Group, false, 1, {t_Path::kEach}})};
}

/** The class of the node that a way leads to. */
template <typename TNode>
struct CNodeOf
{
    static auto* Cast(CDbObject* node)
    {
        if constexpr (requires { typename TNode::t_Class; })
        {
            return static_cast<typename TNode::t_Class*>(node);
        }
        else
        {
            return static_cast<TNode*>(node);
        }
    }
};
/** The item of a number below 127. */
template <typename TFrom, typename TGroup>
constexpr t_Way<TFrom, TGroup> operator/(const t_Way<TFrom, t_Items<TGroup>>& way, INT32 item)
{
    return {Joined(way.path, {eNODE::Group, false, 1, {static_cast<UINT8>(t_Path::kItem | item)}})};
}
} // namespace NNames
