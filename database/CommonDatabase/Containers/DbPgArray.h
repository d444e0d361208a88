// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropNum.h"
#include "DbContainerBase.h"

class CDbPgArrayHist;

/**
 * Index-addressed container of groups, indexes from 0. What does not depend on the item class
 * lives here; the template adds the class, and its own signature to the reports.
 */
class CDbPgArrayBase : public CDbContainerBase
{
public:
    /** `dynamic` 1: clients may insert and remove; 0: the items are fixed. */
    CDbPgArrayBase(INT32 dynamic, INT32 maxCount);
    ~CDbPgArrayBase() override;

    /** Grows to `count` new items, each with its own index. Refused: a negative count, a count
        below the present one (arrays never shrink this way), one above the maximum. */
    virtual KW_ACCEPTANCE DbSetSize(INT32 count) = 0;
    /** Inserts one new item before `index`. `inserted` becomes that item, wherever a rule that the
        insertion ran has put it since. */
    virtual KW_ACCEPTANCE InsertInternal(INT32 index,
                                         std::shared_ptr<CDbPropertyGroup>* inserted = nullptr) = 0;
    /** Removes `count` items from `index` on. */
    virtual KW_ACCEPTANCE DbRemovePriv(INT32 index, INT32 count) = 0;

    /** Client operations: access, fixed size; one step for undo. */
    KW_ACCEPTANCE Insert(INT32 index);
    KW_ACCEPTANCE Remove(INT32 index, INT32 count);
    KW_ACCEPTANCE Copy(INT32 source, INT32 target);
    KW_ACCEPTANCE SetActive(INT32 index);
    /** Growth of a result array by the acquisition. */
    KW_ACCEPTANCE Grow(INT32 count);

    /** Takes the lock. What holds of a count holds as long as the caller keeps the lock. */
    INT32 GetCount() const override;
    /** −1 while the array is empty. Without the lock. */
    INT32 GetActive() const { return m_pActiveIndex->Get(); }
    /** Null outside the array. */
    CDbPropertyGroup* ItemAt(INT32 index) const;
    /** Handle of an item, which keeps the item when it is removed; null outside the array. */
    std::shared_ptr<IKWFunctionBase> ShareItemHandle(INT32 index) const;
    /** An item's name is its index as text, in one spelling ("1", not "01"). */
    bool IsItem(const QString& name) const;
    INT32 PositionOf(const CDbPropertyGroup& item) const override;
    CDbPropertyGroup* ItemAtPosition(INT32 position) const override { return ItemAt(position); }
    void VisitItems(const std::function<void(CDbPropertyGroup&)>& visit) const override;

    KW_NODE_KIND GetKind() const override { return eKW_NODE_ARRAY; }
    std::shared_ptr<IDbGroup> GetItemByPosition(INT32 position) const override;
    KW_ACCEPTANCE InsertItem(const QString& key) override;
    KW_ACCEPTANCE RemoveItem(const QString& key) override;
    KW_ACCEPTANCE RenameItem(const QString& key, const QString& newKey) override;
    KW_ACCEPTANCE CopyItem(const QString& key, const QString& newKey) override;
    KW_ACCEPTANCE SetActiveItem(const QString& key) override;
    QString GetActiveItem() const override;

    QString GetXMLElementName() const override { return QStringLiteral("Array"); }

    /** Undo and redo: put items back, or take them out, without touching them. */
    void RollbackValue(const CDbPgArrayHist& record);
    void RedoValue(const CDbPgArrayHist& record);

protected:
    using t_Items = std::vector<std::shared_ptr<CDbPropertyGroup>>;

    /** The operations of the template. Each gets all memory that it needs, then records, then
        changes: where memory is short, the array is as before. */
    KW_ACCEPTANCE SetSizeFor(INT32 count, const char* signature);
    KW_ACCEPTANCE InsertFor(INT32 index, std::shared_ptr<CDbPropertyGroup>* inserted,
                            const char* signature);
    KW_ACCEPTANCE RemoveFor(INT32 index, INT32 count, const char* signature);
    /** `signature` ends the report: the operation of the class that the items have. */
    static void ReportContainer(const QString& text, int line, const char* signature);

    void SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const override;
    void DeSerializeChild(const CDbSettingsElement& element, CDbRecall& recall) override;
    void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall) override;
    CDbPropertyGroup* FindItem(QStringView key) const override;
    void RemoveAllItems() override;

private:
    /** Puts items in and takes them out, gives what follows its new names, and leads the active
        index. Rules of the owner run but for undo. */
    void Place(INT32 index, const t_Items& items, eWRITEKIND kind);
    void Take(INT32 index, INT32 count, eWRITEKIND kind);
    /** Names of the items from `begin` to before `end`, and giving them: apart, because names need
        memory and giving them must not fail halfway. */
    static std::vector<QString> NamesFrom(INT32 begin, INT32 end);
    void Rename(INT32 from, const std::vector<QString>& names);
    void Drop(INT32 index, INT32 count);
    KW_ACCEPTANCE InsertAsClient(INT32 index, std::shared_ptr<CDbPropertyGroup>* inserted);
    void UpdateActiveLimits();
    /** Items came in front of `index`, or left from there on (a negative count): the active index
        follows the active item, or goes to what now stands in the place of one that left. */
    void FollowActiveItem(INT32 index, INT32 count, eWRITEKIND kind);
    /** Makes a dynamic array as long as the items of a file. */
    void FitTo(INT32 count, CDbRecall& recall);
    /** Items of a file on their way: index of one without a name, and which were there. */
    struct t_FileItems
    {
        INT32 next;
        std::vector<bool> seen;
    };
    void DeSerializeItem(const CDbSettingsElement& element, t_FileItems& items, CDbRecall& recall);
    /** −1 for a text that names no item. */
    INT32 IndexOf(QStringView key) const;

    /** In order; an item's node name is its index. Guarded by the tree's lock. */
    t_Items m_items;
    /** Within the items, or −1. A member of the group's list, which owns it. */
    CDbPropNumInt32* m_pActiveIndex;
};

/** Items that came or left, themselves: what undo brings back are the same nodes, with the handles
   that clients hold. */
class CDbPgArrayHist final : public CDbHistRecord
{
public:
    using t_Items = std::vector<std::shared_ptr<CDbPropertyGroup>>;

    CDbPgArrayHist(CDbPgArrayBase& array, eOPERATIONTYPE operation, INT32 index, t_Items items);
    QString GetText() const override;
    std::size_t GetHeldBytes() const override;
    INT32 GetIndex() const { return m_index; }
    const t_Items& GetItems() const { return m_items; }

protected:
    void DoUndo() override { m_array->RollbackValue(*this); }
    void DoRedo() override { m_array->RedoValue(*this); }

private:
    /** The history goes before the tree (CDbPgRoot), so this keeps nothing for good. */
    std::shared_ptr<CDbPgArrayBase> m_array;
    INT32 m_index;
    t_Items m_items;
    QString m_text;
};

/** Array of groups of class T. */
template <typename T, typename TBase = CDbPgArrayBase>
class CDbPgArray : public TBase
{
public:
    using TBase::TBase;
    KW_ACCEPTANCE DbSetSize(INT32 count) override { return this->SetSizeFor(count, Q_FUNC_INFO); }
    KW_ACCEPTANCE InsertInternal(INT32 index,
                                 std::shared_ptr<CDbPropertyGroup>* inserted = nullptr) override
    {
        return this->InsertFor(index, inserted, Q_FUNC_INFO);
    }
    KW_ACCEPTANCE DbRemovePriv(INT32 index, INT32 count) override
    {
        return this->RemoveFor(index, count, Q_FUNC_INFO);
    }
    const char* GetMeanings() const override { return T::Meanings(); }
    /** Null outside the array. */
    T* ItemDirect(INT32 index) const { return static_cast<T*>(this->ItemAt(index)); }
    std::shared_ptr<IKWArray<typename T::Interface>> GetFIMPointer()
    {
        return this->template FIMPointer<IKWArray<typename T::Interface>>();
    }

protected:
    CDbPropertyGroup* CreateItem(INT32 index) const override
    {
        return CDbContainerBase::MakeItem<T>(index);
    }
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;
};
