// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropText.h"
#include "DbContainerBase.h"

#include <map>
#include <set>

class CDbPgMapHist;

/**
 * Name-keyed container of groups. Every item has a unique name (its node name), a unique numeric
 * key ≥ 0 and a display name. Order is that of the numeric keys. The active item's name is held in
 * the property "ActiveKey". Names are kept in the normal form C of Unicode and found in any form,
 * so that two spellings of a letter are one name.
 */
class CDbPgMapBase : public CDbContainerBase
{
public:
    static constexpr INT32 kMaxNameLength = 64;

    explicit CDbPgMapBase(INT32 maxCount);
    ~CDbPgMapBase() override;

    /** Creates an item; an empty display name takes the name, a negative key the lowest free one.
        `makeActive` makes it the active item, `normalize` normalizes the name first. `inserted`
        becomes the item, whatever its name is after the rules that the insertion ran. */
    virtual KW_ACCEPTANCE InsertInternal(const QString& name, const QString& displayName,
                                         INT32 numericKey, bool makeActive, bool normalize,
                                         std::shared_ptr<CDbPropertyGroup>* inserted = nullptr) = 0;
    virtual KW_ACCEPTANCE ProcessRemove(const QString& name) = 0;
    /** Gives an item a new name and, unless negative, a new numeric key; keeps both indexes in
        step and counts the change. The same name and key are no change. */
    virtual KW_ACCEPTANCE AdaptNumericKeyAndName(const QString& oldName, const QString& newName,
                                                 INT32 numericKey) = 0;

    /** Client operations: one step for undo. */
    KW_ACCEPTANCE Insert(const QString& name);
    KW_ACCEPTANCE Remove(const QString& name);
    KW_ACCEPTANCE Rename(const QString& oldName, const QString& newName);
    KW_ACCEPTANCE Copy(const QString& source, const QString& target);
    KW_ACCEPTANCE SetActive(const QString& name);

    /** What a client can do with the items now. */
    enum class eACTION
    {
        Insert,
        Remove,
        Rename
    };
    KW_ACCEPTANCE CheckGroupActionAvailable(eACTION action) const;

    /** Each takes the lock; nodes that these answer are good while the caller keeps it. */
    INT32 GetCount() const override;
    QStringList GetNames() const;
    bool IsItem(const QString& name) const;
    bool IsItem(INT32 numericKey) const;
    /** Null when there is none; the name in any normal form. */
    CDbPropertyGroup* ItemByName(QStringView name) const;
    CDbPropertyGroup* ItemByKey(INT32 numericKey) const;
    /** −1 for a stranger. */
    INT32 NumericKeyOf(const CDbPropertyGroup& item) const;
    QString DisplayNameOf(const CDbPropertyGroup& item) const;
    INT32 PositionOf(const CDbPropertyGroup& item) const override;
    void VisitItems(const std::function<void(CDbPropertyGroup&)>& visit) const override;
    /** Handle of the item; null when there is none. */
    std::shared_ptr<IKWMapItem> ShareMapItem(const QString& name) const;
    std::shared_ptr<IKWMapItem> ShareMapItem(INT32 numericKey) const;

    /** "%1" in the pattern is a number that makes the name unique. */
    void SetNamePattern(const QString& pattern);
    /** The pattern with the lowest number that no item has. */
    QString CreateUniqueName() const;
    /** In normal form C, without white space at the ends, and with single spaces inside. */
    static QString NormalizeName(const QString& name);
    /** 1 … 64 characters of Unicode that neither a path nor a file needs for itself: no control
        characters and none of "/", "[", "]". */
    static bool IsNameValid(const QString& name);

    KW_NODE_KIND GetKind() const override { return eKW_NODE_MAP; }
    std::shared_ptr<IDbGroup> GetItemByPosition(INT32 position) const override;
    KW_ACCEPTANCE InsertItem(const QString& key) override { return Insert(key); }
    KW_ACCEPTANCE RemoveItem(const QString& key) override { return Remove(key); }
    KW_ACCEPTANCE RenameItem(const QString& key, const QString& newKey) override
    {
        return Rename(key, newKey);
    }
    KW_ACCEPTANCE CopyItem(const QString& key, const QString& newKey) override
    {
        return Copy(key, newKey);
    }
    KW_ACCEPTANCE SetActiveItem(const QString& key) override { return SetActive(key); }
    QString GetActiveItem() const override { return m_pActiveKey->Get(); }

    QString GetXMLElementName() const override { return QStringLiteral("Map"); }
    /** Counts in the map and, as everywhere, in all groups above. */
    void IncChangeCounter() override;

    void RollbackValue(const CDbPgMapHist& record);
    void RedoValue(const CDbPgMapHist& record);

    struct t_Item
    {
        std::shared_ptr<CDbPropertyGroup> group;
        QString displayName;
        INT32 numericKey = -1;
    };

protected:
    KW_ACCEPTANCE InsertFor(const QString& asked, const QString& displayName, INT32 numericKey,
                            bool makeActive, std::shared_ptr<CDbPropertyGroup>* inserted,
                            const char* signature);
    KW_ACCEPTANCE RemoveFor(const QString& name, const char* signature);
    KW_ACCEPTANCE AdaptFor(const QString& askedOld, const QString& askedNew, INT32 numericKey,
                           const char* signature);
    static void ReportContainer(const QString& text, int line, const char* signature);

    void SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const override;
    void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall) override;
    CDbPropertyGroup* FindItem(QStringView key) const override { return ItemByName(key); }
    void RemoveAllItems() override;

private:
    class CActiveKey;

    static std::shared_ptr<IKWMapItem> ShareMapItem(CDbPropertyGroup* item);
    const t_Item* Lookup(const CDbPropertyGroup& item) const;
    /** The lowest key ≥ 0 that no item has. */
    INT32 LowestFreeKey() const;
    /** Put an item into both indexes, and take it out of both. Rules of the owner run but for undo.
     */
    void Place(const QString& name, const t_Item& item, eWRITEKIND kind);
    void Take(const QString& name, eWRITEKIND kind);
    KW_ACCEPTANCE InsertAsClient(const QString& name, std::shared_ptr<CDbPropertyGroup>* inserted);
    /** `item` is the item as it is to be: with the display name and key of its new name. */
    void Move(const QString& oldName, const QString& newName, const t_Item& item, eWRITEKIND kind);
    /** Items that a file leaves in place. */
    using t_Kept = std::set<const CDbPropertyGroup*>;

    /** eKW_ACC_BAD_NAME, TOO_LONG, NAME_IN_USE or CONTAINER_FULL where there can not be such an
        item beside the present ones. */
    KW_ACCEPTANCE CheckNew(const QString& name, const QString& displayName, INT32 numericKey) const;
    /** eKW_ACC_TOO_LONG, or eKW_ACC_BAD_NAME for a text that no file can hold. */
    static KW_ACCEPTANCE CheckDisplayName(const QString& displayName);
    /** The present item that an element names, by name and, where it has one, by key. */
    CDbPropertyGroup* KeptItem(const CDbSettingsElement& element) const;
    void RemoveAllBut(const t_Kept& kept);
    /** Gives an item another display name. */
    void ShowAs(const QString& name, const QString& displayName);
    void DeSerializeItem(const CDbSettingsElement& element, t_Kept& kept, CDbRecall& recall);

    /** By the name in normal form C. As m_namesByKey guarded by the tree's lock; both hold the same
        items. */
    std::map<QString, t_Item> m_items;
    /** The order of the map. */
    std::map<INT32, QString> m_namesByKey;
    QString m_namePattern = QStringLiteral("Item%1");
    /** All lower numbers are in names of the pattern that items have. */
    mutable INT32 m_lowestNumber = 1;
    CDbPropString* m_pActiveKey;
};

/** An item that came, left or got another name, key or display name; the item is the node itself,
   so that undo brings back what clients hold handles of. */
class CDbPgMapHist final : public CDbHistRecord
{
public:
    /** Insert and remove. */
    CDbPgMapHist(CDbPgMapBase& map, eOPERATIONTYPE operation, const QString& name,
                 CDbPgMapBase::t_Item item);
    /** Rename. */
    CDbPgMapHist(CDbPgMapBase& map, const QString& oldName, const CDbPgMapBase::t_Item& oldItem,
                 const QString& newName, const CDbPgMapBase::t_Item& newItem);
    QString GetText() const override;
    std::size_t GetHeldBytes() const override;

    /** The name before a renaming, with the item as it was. */
    const QString& GetName() const { return m_name; }
    /** Empty but for a renaming, as the new item. */
    const QString& GetNewName() const { return m_newName; }
    const CDbPgMapBase::t_Item& GetItem() const { return m_item; }
    const CDbPgMapBase::t_Item& GetNewItem() const { return m_newItem; }

protected:
    void DoUndo() override { m_map->RollbackValue(*this); }
    void DoRedo() override { m_map->RedoValue(*this); }

private:
    std::shared_ptr<CDbPgMapBase> m_map;
    QString m_name;
    QString m_newName;
    CDbPgMapBase::t_Item m_item;
    CDbPgMapBase::t_Item m_newItem;
};

/** Map of groups of class T. */
template <typename T>
class CDbPgMap : public CDbPgMapBase
{
public:
    using CDbPgMapBase::CDbPgMapBase;
    KW_ACCEPTANCE InsertInternal(const QString& name, const QString& displayName, INT32 numericKey,
                                 bool makeActive, bool normalize,
                                 std::shared_ptr<CDbPropertyGroup>* inserted = nullptr) override
    {
        return InsertFor(normalize ? NormalizeName(name) : name, displayName, numericKey,
                         makeActive, inserted, Q_FUNC_INFO);
    }
    KW_ACCEPTANCE ProcessRemove(const QString& name) override
    {
        return RemoveFor(name, Q_FUNC_INFO);
    }
    KW_ACCEPTANCE AdaptNumericKeyAndName(const QString& oldName, const QString& newName,
                                         INT32 numericKey) override
    {
        return AdaptFor(oldName, newName, numericKey, Q_FUNC_INFO);
    }
    const char* GetMeanings() const override { return T::Meanings(); }
    /** Null when no item has the name. */
    T* ItemDirect(const QString& name) const { return static_cast<T*>(ItemByName(name)); }
    std::shared_ptr<IKWMap<typename T::Interface>> GetFIMPointer()
    {
        return this->template FIMPointer<IKWMap<typename T::Interface>>();
    }

protected:
    CDbPropertyGroup* CreateItem(INT32 index) const override { return MakeItem<T>(index); }
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;
};
