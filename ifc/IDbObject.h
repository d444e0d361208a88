// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWNodeTypes.h"

#include <QString>
#include <QStringList>
#include <memory>

class CEnumNameInfo;
class IDbContainer;
class IKWFunctionBase;
class IKWPropertyBase;
enum KW_UNIT : INT32;

/**
 * A node of the tree as tools and remote control see it: they walk by name and order and need no
 * list of types. A shared pointer to a node keeps it alive; a node that outlives its tree answers
 * its last state and refuses writes with eKW_ACC_DETACHED.
 *
 * The interfaces of this header are complete: other interfaces and programs that are built rely on
 * the places of their virtual functions. What a node can tell beyond them are free functions, as in
 * KWTexts.h.
 *
 * All operations may be called from any thread; texts and lists are read under the tree's lock.
 * Without memory they throw std::bad_alloc as the handles do (IKWProperties.h).
 */
class KW_EXPORT IDbObject
{
public:
    virtual ~IDbObject();

    /** Last part of the path: a name, or the index of an array's item. */
    virtual QString GetNodeName() const = 0;
    /** Way from the root, such as "Vertical/Channel[1]/State"; empty for the root itself. */
    virtual QString GetPath() const = 0;
    /** Whether it is a property, a group or an action. */
    virtual KW_NODE_KIND GetKind() const = 0;
    /** The kind in detail. */
    virtual KW_OBJECT_TYPE GetObjectType() const = 0;
    /** Files that carry the node: bits of KW_SAVE_RECALL. */
    virtual INT32 GetSaveRecallType() const = 0;
    /** The strictest of the node's own availabilities and those of all its parents. */
    virtual KW_AVAILABILITY GetAvailability() const = 0;
};

/** A property as text. */
class KW_EXPORT IDbProperty : public IDbObject
{
public:
    ~IDbProperty() override;

    /** "int16" … "double", "string", "blob", "bitpattern", "filepath", "reference", or the name
        of the enumeration type. */
    virtual QString GetTypeName() const = 0;

    /** The value: numbers as the shortest decimal text that reads back to the same value, serial
        names of enumerations, texts as they are, byte blocks in base 64, references as paths. A
        secret is answered too (KW_IsSecret): show what KW_FormatValue makes of it. */
    virtual QString GetText() const = 0;
    /** A client write of a value given as text. Enumerations take serial and remote names. Text
        that can not be read is refused with eKW_ACC_BAD_TEXT or eKW_ACC_UNKNOWN_VALUE; otherwise
        the codes of the property's Set. */
    virtual KW_ACCEPTANCE SetText(const QString& text) = 0;

    /** The declared default, as GetText writes values. */
    virtual QString GetDefaultText() const = 0;
    /** Present limits and step; empty where the property has none. */
    ///@{
    virtual QString GetMinText() const = 0;
    virtual QString GetMaxText() const = 0;
    virtual QString GetStepText() const = 0;
    ///@}
    /** What can be selected now: serial names, or the entries of the value list. */
    virtual QStringList GetValueTexts() const = 0;
    /** Table of an enumeration property, null otherwise. */
    virtual const CEnumNameInfo* GetEnumNameInfo() const = 0;
    /** KW_UNIT of a number; "not defined" (64) for every other kind. */
    virtual KW_UNIT GetUnitCode() const = 0;

    /** Whether the value means anything. Never blocks. */
    virtual KW_VALIDITY GetValidity() const = 0;
    /** A client write of the default. */
    virtual KW_ACCEPTANCE SetToDefault() = 0;
    /** Steps up (positive) or down; refused with eKW_ACC_WRONG_KIND where nothing can step. */
    virtual KW_ACCEPTANCE IncDec(INT32 steps) = 0;

    /** The typed handle, for a cast to IKWNumericProperty<T>, IKWEnumPropertyBase and so on. */
    virtual std::shared_ptr<IKWPropertyBase> GetHandle() = 0;
};

/** An action: a function that runs at once, or an operation that somebody else carries out. */
class KW_EXPORT IDbAction : public IDbObject
{
public:
    ~IDbAction() override;
    /** Runs the action as a client. */
    virtual KW_ACCEPTANCE Execute() = 0;
};

/** A group: ordered properties, child groups and actions. Indexes count from 0; an index or name
    that does not exist gives null. */
class KW_EXPORT IDbGroup : public IDbObject
{
public:
    ~IDbGroup() override;

    /** Properties, child groups and actions in the order of their declaration. A container is a
        child group; its items are its own (IDbContainer). */
    ///@{
    virtual INT32 GetPropertyCount() const = 0;
    virtual std::shared_ptr<IDbProperty> GetProperty(INT32 index) const = 0;
    virtual INT32 GetGroupCount() const = 0;
    virtual std::shared_ptr<IDbGroup> GetGroup(INT32 index) const = 0;
    virtual INT32 GetActionCount() const = 0;
    virtual std::shared_ptr<IDbAction> GetAction(INT32 index) const = 0;
    ///@}

    /** Finds a property, group, item or action: names separated by "/", items as "Name[index]" in
        arrays and "Name[key]" in maps. The empty path is the group itself. */
    virtual std::shared_ptr<IDbObject> Find(const QString& path) const = 0;

    /** True when anything at or below this group has changed since `counter` was last updated by
        this call; starts with any number. Never blocks. */
    virtual bool HasChanged(long long& counter) const = 0;

    /** The group as a container, or null. */
    virtual IDbContainer* AsContainer() = 0;
    /** The typed handle, for a cast to IKWFunction<X>. */
    virtual std::shared_ptr<IKWFunctionBase> GetHandle() = 0;
};

/** The container's face of a group that is an array or map of groups (IDbGroup::AsContainer); good
    as long as the group is held. Refusals change nothing. */
class KW_EXPORT IDbContainer
{
public:
    virtual ~IDbContainer();

    /** Number of items. */
    virtual INT32 GetCount() const = 0;
    /** Number of items from which on the container is full. */
    virtual INT32 GetMaxCount() const = 0;
    /** Whether clients may insert, remove and rename. */
    virtual bool IsDynamic() const = 0;
    /** Items in order: arrays by index, maps by numeric key. */
    virtual std::shared_ptr<IDbGroup> GetItemByPosition(INT32 position) const = 0;
    /** Inserts an item: `key` is an index in arrays (or empty for the end) and a name in maps (or
        empty for a name made from the pattern). */
    virtual KW_ACCEPTANCE InsertItem(const QString& key) = 0;
    /** As IKWArrayBase::Remove of one item, or IKWMapBase::Remove. */
    virtual KW_ACCEPTANCE RemoveItem(const QString& key) = 0;
    /** Maps only; arrays answer eKW_ACC_WRONG_KIND. */
    virtual KW_ACCEPTANCE RenameItem(const QString& key, const QString& newKey) = 0;
    /** Inserts an item with the contents of another; maps take the new name, arrays an index. */
    virtual KW_ACCEPTANCE CopyItem(const QString& key, const QString& newKey) = 0;
    /** As IKWArrayBase::SetActive, or IKWMapBase::SetActive. */
    virtual KW_ACCEPTANCE SetActiveItem(const QString& key) = 0;
    /** Index or name of the active item; empty when none is. */
    virtual QString GetActiveItem() const = 0;
};
