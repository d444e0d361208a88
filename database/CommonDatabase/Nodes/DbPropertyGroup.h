// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbCouplings.h"
#include "DbChangeCounter.h"
#include "DbFunction.h"
#include "DbObject.h"
#include "DbPropBase.h"
#include "IKWFunctionBase.h"
#include "LazyHandle.h"

#include <functional>
#include <optional>
#include <vector>

class CDbContainerBase;
template <typename TNames>
class CFoundGroup;

/**
 * A node that owns properties, child groups and actions, in order, and counts the changes at and
 * below it.
 *
 * A group declares itself in its constructor: SetPropertyListSize, AddPropertyToList and the
 * attributes of each property, SetPropGroupListSize, AddPropGroupToList, AddObject. List order is
 * the order of files and of walking. Rules override the hooks; they run under the tree's lock.
 */
class CDbPropertyGroup : public CDbNode<IDbGroup>
{
public:
    CDbPropertyGroup() = default;
    ~CDbPropertyGroup() override;

    void SetPropertyListSize(INT32 count) { m_properties.reserve(static_cast<std::size_t>(count)); }
    void IncreasePropertyListSize(INT32 by) { m_properties.reserve(m_properties.size() + by); }
    /** Takes ownership. */
    void AddPropertyToList(CDbPropBase* property, const QString& name);
    void SetPropGroupListSize(INT32 count) { m_groups.reserve(static_cast<std::size_t>(count)); }
    void IncreasePropGroupListSize(INT32 by) { m_groups.reserve(m_groups.size() + by); }
    /** Takes ownership. */
    void AddPropGroupToList(CDbPropertyGroup* group, const QString& name);
    /** Detaches a child group; it goes with its last owner. */
    void RemovePropGroupFromList(CDbPropertyGroup* group);
    /** Takes ownership of a function or operation. */
    void AddObject(CDbFunction* object, const QString& name);

    /** What the model says of the group (with U+0001 before each word of KW_GetRemoteNames behind
        it), its properties and its actions, in order: UTF-8, each ended by a zero character, an
        empty one behind the last. A table for each class; arrays and maps give their items'. */
    virtual const char* GetMeanings() const { return Meanings(); }
    static const char* Meanings() { return ""; }

    const std::vector<std::shared_ptr<CDbPropBase>>& Properties() const { return m_properties; }
    const std::vector<std::shared_ptr<CDbPropertyGroup>>& Groups() const { return m_groups; }
    const std::vector<std::shared_ptr<CDbFunction>>& Objects() const { return m_objects; }
    CDbPropBase* FindProperty(QStringView name) const;
    CDbPropertyGroup* FindGroup(QStringView name) const;
    CDbFunction* FindObject(QStringView name) const;

    /** Counts a change here and in every group above, the root included. */
    virtual void IncChangeCounter();
    bool HasChanged(long long& counter) const override { return m_counter.HasChanged(counter); }

    /** The couplings of the group's class (DbRules.h). */
    virtual t_Couplings Rules() const;
    /** Whether the table has rows of one of these causes (bits), of a group in a tree. */
    bool HasRows(UINT8 causes) const { return (m_causes & causes) != 0; }
    /** The rows of these causes (bits) that a member of this group starts. `written` as for a
        step. An action ends with the first refusal. */
    KW_ACCEPTANCE RunRows(UINT8 causes, const CDbObject& source, const CDbPropBase* written);
    /** All steps of a row; an action's ends with the first refusal. */
    KW_ACCEPTANCE RunRow(const t_Row& row, const CDbPropBase* written);
    /** The node that a way leads to, null outside of a tree. Its class must be known to a caller
        who wants more of a group than that it is one. */
    template <typename TFrom, typename TNode>
    auto* At(const NNames::t_Way<TFrom, TNode>& way) const
    {
        static_assert(TFrom::isRoot, "ways begin at the root");
        return NNames::CNodeOf<TNode>::Cast(Resolve(way.path));
    }

    /** The rows that the items of a container start. */
    void RunItemRows(const CDbObject& container);

    /** The group that a way leads to, to read several of its properties. In a tree only. */
    template <typename TFrom, typename TGroup>
    CFoundGroup<TGroup> Find(const NNames::t_Way<TFrom, TGroup>& way) const;

    // Hooks, beside the table, for what it has no word for. The argument is a property of this
    // group.
    /** Before a property takes a value. */
    virtual void PrePropertySet(const CDbPropBase* property);
    /** After a client's write. A code above 1 becomes a warning of that write. */
    virtual KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property);
    /** After a write that did not change the value. */
    virtual void OnPropertyUnchanged(const CDbPropBase* property);
    /** After an internal write. */
    virtual void OnPropertyDbSet(const CDbPropBase* property);
    /** After a limit took the value with it. */
    virtual void OnPropertyAutoSet(const CDbPropBase* property);
    /** A client ran an action of this group. */
    virtual KW_ACCEPTANCE OnFunction(const CDbFunction* function);
    /** The same for an action that reads or writes a file: it runs without the tree's lock, so that
        a file that takes its time keeps nobody waiting, and takes the lock for what it does to the
        tree. Nothing for all other actions, which OnFunction runs. */
    virtual std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function);
    /** Recomputes everything that depends on the group's settings; must be idempotent. */
    virtual void UpdateGroup();
    /** Two settings that say the same in two ways, in either order. */
    struct t_Twins
    {
        const t_Row* row;
        const CDbPropBase* one;
        const CDbPropBase* other;
    };
    /** The pairs that this group declares. Where a file names one of a pair, that counts as written
        when everything else of the file is there: the rows of its own group derive the other. */
    std::vector<t_Twins> GetTwins() const;
    /** Recomputes the availabilities of the children. */
    virtual void UpdateChildAvailabilities();
    /** Changes of a container of this group; `item` is the item's name. */
    virtual void OnItemInserted(CDbContainerBase* container, const QString& item);
    virtual void OnItemRemoved(CDbContainerBase* container, const QString& item);
    virtual void OnItemRenaming(CDbContainerBase* container, const QString& oldName,
                                const QString& newName);
    virtual void OnItemRenamed(CDbContainerBase* container, const QString& oldName,
                               const QString& newName);
    /** After the handles (FIM, LazyHandle.h) of this subtree exist. Overriders call the base, which
        goes down. */
    virtual void OnFIMCreated();
    /** After the whole tree exists; dependencies are registered here. As above. */
    virtual void OnTreeCreated();

    /** Runs the steps that make the group fresh. */
    void RunFreshRows();
    /** Registers the rows that follow other groups, or wait for the end of a write. */
    void EnterTree(CDbPgRoot& root);
    /** Takes the rows of the group and of all below it out of the tree, and what follows them. */
    void LeaveTree();

    /** Items of a container, visited after the child groups. */
    virtual void VisitItems(const std::function<void(CDbPropertyGroup&)>& visit) const;
    /** Null where there is none. */
    virtual CDbPropertyGroup* ItemAtPosition(INT32 position) const;
    /** An item of a container's class that belongs to nothing, to see what items have. */
    virtual std::shared_ptr<CDbPropertyGroup> MakeSample() const { return nullptr; }

    /** Runs `visit` for this group and all below, children first, items included. */
    void VisitChildrenFirst(const std::function<void(CDbPropertyGroup&)>& visit);

    void SetAvailability(KW_AVAILABILITY availability) override;
    KW_NODE_KIND GetKind() const override { return eKW_NODE_GROUP; }
    INT32 GetPropertyCount() const override;
    std::shared_ptr<IDbProperty> GetProperty(INT32 index) const override;
    INT32 GetGroupCount() const override;
    std::shared_ptr<IDbGroup> GetGroup(INT32 index) const override;
    INT32 GetActionCount() const override;
    std::shared_ptr<IDbAction> GetAction(INT32 index) const override;
    std::shared_ptr<IDbObject> Find(const QString& path) const override;
    IDbContainer* AsContainer() override { return nullptr; }
    std::shared_ptr<IKWFunctionBase> GetHandle() override;
    std::shared_ptr<IDbGroup> ShareGroup();

    /** The handle (LazyHandle.h), made on the first call and kept. */
    IKWFunctionBase* EnsureFIM();
    /** The second handle of a group that is an item of a map: kept here, so that it lives as long
        as the item, and made by the map. */
    std::unique_ptr<IKWMapItem>& MapItemHandle() { return m_mapItem; }

    QString GetXMLElementName() const override;
    void Serialize(CDbSettingsWriter& writer, INT32 pattern) const override;
    void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall) override;
    /** What stands inside the group's element. */
    virtual void SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const;
    /** Bits of KW_SAVE_RECALL that anything at or below this group carries. */
    virtual INT32 GetSavedPattern() const;
    /** Properties and groups at and below this group, itself included. */
    std::size_t CountNodes() const;

    /** Sets every property of `pattern` to its default, below too; containers that clients fill
        are emptied. */
    virtual void WriteDefaults(INT32 pattern);

    /** Drops what was measured of this group (CDbPropBase::DropMeasured); below it, too. */
    ///@{
    void DropMeasured();
    void DropMeasuredBelow();
    ///@}

protected:
    /** Makes the typed handle; groups that no client sees give null. */
    virtual std::unique_ptr<IKWFunctionBase> CreateFIM();
    /** The default of an array's item: of its own place where the model names one. */
    template <typename T>
    static T ItemDefault(INT32 index, std::initializer_list<T> perItem, T otherwise)
    {
        return index >= 0 && index < static_cast<INT32>(perItem.size()) ? perItem.begin()[index]
                                                                        : otherwise;
    }
    /** A member that the tree has no more, for clients that were built when it had: it belongs to
        no tree, so it answers its default and refuses writes with eKW_ACC_DETACHED. */
    template <typename T>
    static std::shared_ptr<T> MakeRemoved(T* node, const QString& name)
    {
        node->SetNodeName(name);
        return std::shared_ptr<T>(node, CDbNodeDeleter{});
    }
    template <typename I>
    std::shared_ptr<I> FIMPointer()
    {
        return {shared_from_this(), static_cast<I*>(EnsureFIM())};
    }
    void OnSaveRecallTypeSet(INT32 type, bool recursive) override;
    /** Applies one element of the contents. */
    virtual void DeSerializeChild(const CDbSettingsElement& element, CDbRecall& recall);
    /** One step of Find: a member of this group, or with a key an item of a container. */
    virtual CDbObject* FindMember(QStringView name) const;
    virtual CDbPropertyGroup* FindItem(QStringView key) const;

private:
    class CAvailabilityHist;

    CDbObject* Resolve(const NNames::t_Path& path) const;
    /** One step of a row, watched where somebody watches. */
    KW_ACCEPTANCE RunStep(const t_Row& row, const t_Step& step, const CDbPropBase* written);

    /** Without a record, but counted. */
    void StoreAvailability(KW_AVAILABILITY availability);

    std::vector<std::shared_ptr<CDbPropBase>> m_properties;
    std::vector<std::shared_ptr<CDbPropertyGroup>> m_groups;
    std::vector<std::shared_ptr<CDbFunction>> m_objects;
    CDbChangeCounter m_counter;
    CLazyHandle<IKWFunctionBase> m_fim;
    std::unique_ptr<IKWMapItem> m_mapItem;
    /** Step of the root that already holds a record of the availability. */
    UINT32 m_recordedStep = 0;
    /** Causes of the group's rows, known from its registration on. */
    UINT8 m_causes = 0;
};

inline CDbPropertyGroup* CDbObject::GetParent() const
{
    return static_cast<CDbPropertyGroup*>(m_parent);
}

inline void CDbObject::SetParent(CDbPropertyGroup* parent)
{
    m_parent = parent;
}

/** A group that was found by its name: its properties are found by theirs. */
template <typename TNames>
class CFoundGroup
{
public:
    explicit CFoundGroup(const CDbPropertyGroup& group) : m_group(group) {}
    template <typename TNode>
    auto* At(const NNames::t_Way<TNames, TNode>& name) const
    {
        return NNames::CNodeOf<TNode>::Cast(m_group.Properties()[name.path.steps[0]].get());
    }

private:
    const CDbPropertyGroup& m_group;
};

template <typename TFrom, typename TGroup>
CFoundGroup<TGroup> CDbPropertyGroup::Find(const NNames::t_Way<TFrom, TGroup>& way) const
{
    static_assert(TFrom::isRoot, "ways begin at the root");
    return CFoundGroup<TGroup>(static_cast<CDbPropertyGroup&>(*Resolve(way.path)));
}
