// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <memory>

/** Base of the handles of all groups. The interfaces of this header are complete and grow by free
    functions: a virtual function more would move those of all groups. An interface of one group,
    from which nothing derives, takes new accessors behind those that it has. */
class KW_EXPORT IKWFunctionBase
{
public:
    virtual ~IKWFunctionBase();
    /** As IDbGroup::HasChanged: never blocks. */
    virtual bool HasChanged(long long& counter) const = 0;
    /** The node itself, for walking by name and order. */
    virtual std::shared_ptr<IDbGroup> GetDbObject() const = 0;
};

/** Handle of an array of groups. Client inserts and removals are steps for undo. */
class KW_EXPORT IKWArrayBase : public IKWFunctionBase
{
public:
    ~IKWArrayBase() override;
    /** Number of items, and the number at which the container is full. */
    ///@{
    virtual INT32 GetCount() const = 0;
    virtual INT32 GetMaxCount() const = 0;
    ///@}
    /** Inserts a new item before `index` (count = at the end): eKW_ACC_BAD_INDEX,
        eKW_ACC_CONTAINER_FULL, eKW_ACC_FIXED_SIZE. */
    virtual KW_ACCEPTANCE Insert(INT32 index) = 0;
    /** eKW_ACC_BAD_INDEX, eKW_ACC_FIXED_SIZE. */
    virtual KW_ACCEPTANCE Remove(INT32 index, INT32 count) = 0;
    /** Grows a result array for the acquisition: not undone, never shrinks. Refused with
        eKW_ACC_FIXED_SIZE where items are fixed. */
    virtual KW_ACCEPTANCE Grow(INT32 count) = 0;
    /** Makes an item the active one: eKW_ACC_BELOW_MINIMUM, eKW_ACC_ABOVE_MAXIMUM. */
    virtual KW_ACCEPTANCE SetActive(INT32 index) = 0;
    /** Index of the active item, which moves with the item; −1 when none is. */
    virtual INT32 GetActive() const = 0;
    /** Null for an index outside the array. */
    virtual std::shared_ptr<IKWFunctionBase> GetItemBase(INT32 index) const = 0;
};

/** Handle of an array whose items have the handle class I. */
template <typename I>
class KW_EXPORT IKWArray : public IKWArrayBase
{
public:
    /** Null for an index outside the array. */
    std::shared_ptr<I> GetItem(INT32 index) const
    {
        return std::static_pointer_cast<I>(GetItemBase(index));
    }
};

/** Handle of an item of a map. */
class KW_EXPORT IKWMapItem
{
public:
    virtual ~IKWMapItem();
    /** Unique name in the map. */
    virtual QString GetName() const = 0;
    /** The name as the user sees it. */
    virtual QString GetDisplayName() const = 0;
    /** Unique number in the map, ≥ 0; stays when the name changes. */
    virtual INT32 GetNumericKey() const = 0;
    /** Whether it is the active item of the map. */
    virtual bool IsActive() const = 0;
    /** As IKWMapBase::Rename of this item. */
    virtual KW_ACCEPTANCE Rename(const QString& newName) = 0;
    /** The item's group. */
    virtual std::shared_ptr<IKWFunctionBase> GetGroup() const = 0;
};

/** Handle of a map of groups: items have a unique name and a unique numeric key ≥ 0. */
class KW_EXPORT IKWMapBase : public IKWFunctionBase
{
public:
    ~IKWMapBase() override;
    /** Number of items, and the number at which the container is full. */
    ///@{
    virtual INT32 GetCount() const = 0;
    virtual INT32 GetMaxCount() const = 0;
    ///@}
    /** Names in the order of the numeric keys. */
    virtual QStringList GetNames() const = 0;
    /** Inserts a new item under `name` (made from the pattern when empty) with the lowest free
        numeric key: eKW_ACC_BAD_NAME, eKW_ACC_NAME_IN_USE, eKW_ACC_CONTAINER_FULL. */
    virtual KW_ACCEPTANCE Insert(const QString& name) = 0;
    /** eKW_ACC_NOT_FOUND, eKW_ACC_FIXED_SIZE. */
    virtual KW_ACCEPTANCE Remove(const QString& name) = 0;
    /** eKW_ACC_NOT_FOUND, eKW_ACC_BAD_NAME, eKW_ACC_NAME_IN_USE. Its own name is no change. */
    virtual KW_ACCEPTANCE Rename(const QString& oldName, const QString& newName) = 0;
    /** Inserts `target` with the contents of `source`: eKW_ACC_NOT_FOUND, or the codes of Insert.
     */
    virtual KW_ACCEPTANCE Copy(const QString& source, const QString& target) = 0;
    /** Makes an item the active one, the empty name none: eKW_ACC_NOT_FOUND. */
    virtual KW_ACCEPTANCE SetActive(const QString& name) = 0;
    /** Name of the active item; empty when none is. */
    virtual QString GetActive() const = 0;
    /** Whether an item may have the name: 1 to 64 characters of Unicode, none of them a control
     * character or / [ ], without white space at its ends or in a row. */
    virtual bool IsNameValid(const QString& name) const = 0;
    /** A free name made from the pattern. */
    virtual QString CreateUniqueName() const = 0;
    /** Null when no item has the name or key. */
    ///@{
    virtual std::shared_ptr<IKWMapItem> GetMapItem(const QString& name) const = 0;
    virtual std::shared_ptr<IKWMapItem> GetMapItem(INT32 numericKey) const = 0;
    ///@}
};

/** Handle of a map whose items have the handle class I. */
template <typename I>
class KW_EXPORT IKWMap : public IKWMapBase
{
public:
    /** Null when no item has the name or key. */
    ///@{
    std::shared_ptr<I> GetItem(const QString& name) const
    {
        const auto item = GetMapItem(name);
        return item ? std::static_pointer_cast<I>(item->GetGroup()) : nullptr;
    }
    std::shared_ptr<I> GetItem(INT32 numericKey) const
    {
        const auto item = GetMapItem(numericKey);
        return item ? std::static_pointer_cast<I>(item->GetGroup()) : nullptr;
    }
    ///@}
};
