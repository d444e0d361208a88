// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropertyGroup.h"

/**
 * Common base of arrays and maps. A refused operation reports why, answers a code and leaves the
 * container as it was. Reports end in the signature of the container's operation.
 */
class CDbContainerBase : public CDbPropertyGroup, public IDbContainer
{
public:
    static constexpr INT32 kUnlimited = 2147483647;

    CDbContainerBase(bool dynamic, INT32 maxCount) : m_maxCount(maxCount), m_dynamic(dynamic) {}

    INT32 GetMaxCount() const override { return m_maxCount; }
    bool IsDynamic() const override { return m_dynamic; }
    bool IsMaxCountReached() const { return GetCount() >= m_maxCount; }
    /** Whether the container may have `count` items: by its maximum count, and by the memory that
        they take (NDbBounds). */
    bool HasRoomFor(INT32 count) const;
    /** Nodes of one item of the container's class. */
    std::size_t GetNodesPerItem() const;
    IDbContainer* AsContainer() override { return this; }
    std::shared_ptr<CDbPropertyGroup> MakeSample() const override { return Own(CreateItem(0)); }

    /** Position of an item in the container's order, −1 for a stranger. */
    virtual INT32 PositionOf(const CDbPropertyGroup& item) const = 0;

    void WriteDefaults(INT32 pattern) override;
    /** What the class of the items carries, whether there are items or not: an empty container is
        saved as empty where a filled one would be saved. */
    INT32 GetSavedPattern() const override;

protected:
    /** An item of the container's class, not yet part of it. */
    virtual CDbPropertyGroup* CreateItem(INT32 index) const = 0;
    /** Items whose declaration depends on their place take their index. */
    template <typename T>
    static T* MakeItem([[maybe_unused]] INT32 index)
    {
        if constexpr (std::is_constructible_v<T, INT32>)
        {
            return new T(index);
        }
        else
        {
            return new T;
        }
    }

    /** Takes the lock's owner through a client's change of the container: codes of access. */
    KW_ACCEPTANCE CheckClientAccess() const;
    /** Ties an item to the container and brings it to life as the rest of the tree is. */
    void Adopt(CDbPropertyGroup& item, const QString& name, eWRITEKIND kind);
    /** An item that leaves: its rows leave the tree with it. */
    static void Detach(CDbPropertyGroup& item);
    /** Everything that files hold, by way of their form: a new kind of property is copied without a
        line here. */
    void CopyContents(const CDbPropertyGroup& source, CDbPropertyGroup& target);
    /** Keeps a record if the root wants one, made from the arguments after this container. */
    template <typename TRecord, typename TContainer, typename... TArgs>
    void AddRecord(TContainer& container, const TArgs&... args)
    {
        if (CDbUndoStep* const step = RecordedStep())
        {
            step->Make<TRecord>(container, args...);
        }
    }
    /** Owned as a group of the tree: destroyed under its lock. */
    static std::shared_ptr<CDbPropertyGroup> Own(CDbPropertyGroup* item);
    /** As an internal change, which a step in progress records. */
    virtual void RemoveAllItems() = 0;

    bool IsRecording() const { return RecordedStep() != nullptr; }

private:
    /** Null while nothing is recorded. */
    CDbUndoStep* RecordedStep() const;
    void SkipRecords(CDbPropertyGroup& item) const;

    INT32 m_maxCount; ///< from the model; kUnlimited items still have to find room
    bool m_dynamic;   ///< clients may insert, remove, rename
    /** What an item of the class carries and how many nodes it has. */
    struct t_ItemClass
    {
        INT32 pattern;
        std::size_t nodes;
    };
    const t_ItemClass& GetItemClass() const;

    mutable t_ItemClass m_itemClass{-1, 0}; ///< of pattern −1 until it was asked for
};
