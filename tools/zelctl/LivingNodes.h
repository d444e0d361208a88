// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "OrderedJson.h"

#include <QHash>
#include <memory>
#include <vector>

class CLivingTree;

/** A node of another process's tree: what the service told of it last, told again when that may
   have changed. Beside the interfaces of nodes it has the facts that the library knows of its own
   nodes alone. */
class CLivingNode
{
public:
    CLivingNode(CLivingTree& tree, QString path, KW_NODE_KIND kind);
    virtual ~CLivingNode();
    CLivingNode(const CLivingNode&) = delete;
    CLivingNode& operator=(const CLivingNode&) = delete;

    /** What the service tells of the node itself, with all its detail. */
    const COrderedJson& Facts() const;
    const QString& Path() const { return m_path; }
    KW_NODE_KIND Kind() const { return m_kind; }
    bool IsFresh() const;
    /** Takes what was told, which counts for the present. */
    virtual void Take(COrderedJson&& told);
    /** Reads what is below the node, if it is a group. */
    virtual void NeedMembers() const {}
    /** The node of the same kind in a tree of this process: what no service changes is the same
        there. Null where it has none. */
    std::shared_ptr<IDbObject> Twin() const;

protected:
    CLivingTree& Tree() const { return m_tree; }
    KW_ACCEPTANCE Post(const char* target, const QJsonObject& body) const;

private:
    CLivingTree& m_tree;
    const QString m_path;
    const KW_NODE_KIND m_kind;
    mutable COrderedJson m_facts;
    mutable long long m_age = -1;
};

/** What properties, groups and actions have in common. */
template <typename TNode>
class CLivingObject : public TNode, public CLivingNode
{
public:
    using CLivingNode::CLivingNode;

    QString GetNodeName() const override { return Facts()["name"].GetText(); }
    QString GetPath() const override { return Path(); }
    KW_NODE_KIND GetKind() const override { return Kind(); }
    KW_OBJECT_TYPE GetObjectType() const override;
    INT32 GetSaveRecallType() const override;
    KW_AVAILABILITY GetAvailability() const override;
};

class CLivingProperty final : public CLivingObject<IDbProperty>
{
public:
    using CLivingObject::CLivingObject;

    QString GetTypeName() const override { return Facts()["type"].GetText(); }
    QString GetText() const override { return Facts()["text"].GetText(); }
    KW_ACCEPTANCE SetText(const QString& text) override;
    QString GetDefaultText() const override;
    QString GetMinText() const override { return Facts()["minimum"].GetText(); }
    QString GetMaxText() const override { return Facts()["maximum"].GetText(); }
    QString GetStepText() const override { return Facts()["step"].GetText(); }
    QStringList GetValueTexts() const override { return Facts()["selectable"].GetTexts(); }
    const CEnumNameInfo* GetEnumNameInfo() const override;
    KW_UNIT GetUnitCode() const override;
    KW_VALIDITY GetValidity() const override;
    KW_ACCEPTANCE SetToDefault() override;
    KW_ACCEPTANCE IncDec(INT32 steps) override;
    /** None: a handle is of this process. */
    std::shared_ptr<IKWPropertyBase> GetHandle() override { return nullptr; }
};

class CLivingAction final : public CLivingObject<IDbAction>
{
public:
    using CLivingObject::CLivingObject;

    KW_ACCEPTANCE Execute() override;
};

class CLivingGroup : public CLivingObject<IDbGroup>
{
public:
    using CLivingObject::CLivingObject;

    INT32 GetPropertyCount() const override { return CountOf(m_properties); }
    std::shared_ptr<IDbProperty> GetProperty(INT32 index) const override;
    INT32 GetGroupCount() const override { return CountOf(m_groups); }
    std::shared_ptr<IDbGroup> GetGroup(INT32 index) const override;
    INT32 GetActionCount() const override { return CountOf(m_actions); }
    std::shared_ptr<IDbAction> GetAction(INT32 index) const override;
    std::shared_ptr<IDbObject> Find(const QString& path) const override;
    /** Always: the service counts no changes for who only asks now and then. */
    bool HasChanged(long long& /*counter*/) const override { return true; }
    IDbContainer* AsContainer() override { return nullptr; }
    std::shared_ptr<IKWFunctionBase> GetHandle() override { return nullptr; }

    void Take(COrderedJson&& told) override;
    void NeedMembers() const override;

protected:
    using t_Nodes = std::vector<std::shared_ptr<CLivingNode>>;

    INT32 CountOf(const t_Nodes& nodes) const;
    template <typename TNode>
    std::shared_ptr<TNode> At(const t_Nodes& nodes, INT32 index) const;

    t_Nodes m_items;

private:
    void TakeMembers(t_Nodes& nodes, COrderedJson&& told);

    t_Nodes m_properties;
    t_Nodes m_groups;
    t_Nodes m_actions;
    mutable long long m_membersAge = -1;
};

class CLivingContainer final : public CLivingGroup, public IDbContainer
{
public:
    using CLivingGroup::CLivingGroup;

    IDbContainer* AsContainer() override { return this; }
    INT32 GetCount() const override { return Facts()["count"].GetInt(); }
    INT32 GetMaxCount() const override { return Facts()["maximumCount"].GetInt(); }
    bool IsDynamic() const override { return Facts()["dynamic"].IsTrue(); }
    std::shared_ptr<IDbGroup> GetItemByPosition(INT32 position) const override;
    KW_ACCEPTANCE InsertItem(const QString& key) override;
    KW_ACCEPTANCE RemoveItem(const QString& key) override;
    KW_ACCEPTANCE RenameItem(const QString& key, const QString& newKey) override;
    KW_ACCEPTANCE CopyItem(const QString& key, const QString& newKey) override;
    KW_ACCEPTANCE SetActiveItem(const QString& key) override;
    QString GetActiveItem() const override { return Facts()["active"].GetText(); }

private:
    KW_ACCEPTANCE Change(const char* what, const QString& key, const QString& to = {});
};
