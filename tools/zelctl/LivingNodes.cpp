// SPDX-License-Identifier: MIT
#include "LivingNodes.h"

#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"
#include "KWTexts.h"
#include "LivingTree.h"
#include "TreeWalk.h"

#include <QJsonObject>

namespace
{
const QString kPath = QStringLiteral("path");

/** The unit that has a text; of numbers without one any that shows none. */
KW_UNIT UnitOf(const QString& text)
{
    static const QHash<QString, int> units = []
    {
        QHash<QString, int> all;
        const CEnumNameInfo& names = GetStaticEnumNameInfo<KW_UNIT>();
        for (INT32 unit = names.GetEnumSize() - 1; unit >= 0; --unit)
        {
            all.insert(KW_GetUnitText(static_cast<KW_UNIT>(unit)), unit);
        }
        return all;
    }();
    return text.isEmpty() ? eKW_UNIT_NOT_DEFINED
                          : static_cast<KW_UNIT>(units.value(text, eKW_UNIT_NOT_DEFINED));
}
} // namespace

CLivingNode::CLivingNode(CLivingTree& tree, QString path, KW_NODE_KIND kind)
    : m_tree(tree), m_path(std::move(path)), m_kind(kind)
{
}

CLivingNode::~CLivingNode() = default;

bool CLivingNode::IsFresh() const
{
    return m_age == m_tree.GetAge();
}

const COrderedJson& CLivingNode::Facts() const
{
    if (!IsFresh())
    {
        m_tree.Refresh(*this);
        // One that is gone keeps what it was.
        m_age = m_tree.GetAge();
    }
    return m_facts;
}

void CLivingNode::Take(COrderedJson&& told)
{
    m_facts = std::move(told);
    m_age = m_tree.GetAge();
}

std::shared_ptr<IDbObject> CLivingNode::Twin() const
{
    return m_tree.FindTwin(m_path);
}

KW_ACCEPTANCE CLivingNode::Post(const char* target, const QJsonObject& body) const
{
    return m_tree.Act(target, body);
}

template <typename TNode>
KW_OBJECT_TYPE CLivingObject<TNode>::GetObjectType() const
{
    return Facts()["result"].IsTrue() ? eOBJECTTYPE_RESULT : eOBJECTTYPE_SETTING;
}

template <typename TNode>
INT32 CLivingObject<TNode>::GetSaveRecallType() const
{
    const QStringList files = Facts()["saved"].GetTexts();
    return (files.contains(QLatin1String("settings")) ? eSAVERECALL_SETTINGS : 0) |
           (files.contains(QLatin1String("system")) ? eSAVERECALL_SYSTEM : 0);
}

template <typename TNode>
KW_AVAILABILITY CLivingObject<TNode>::GetAvailability() const
{
    const QString& text = Facts()["availability"].GetText();
    return text == QLatin1String("available")   ? eAVAILABILITY_AVAILABLE
           : text == QLatin1String("read only") ? eAVAILABILITY_READ_ONLY
                                                : eAVAILABILITY_NOT_AVAILABLE;
}

template class CLivingObject<IDbProperty>;
template class CLivingObject<IDbGroup>;
template class CLivingObject<IDbAction>;

KW_ACCEPTANCE CLivingProperty::SetText(const QString& text)
{
    return Tree().Write({{kPath, Path()}, {QStringLiteral("value"), text}});
}

KW_ACCEPTANCE CLivingProperty::SetToDefault()
{
    return Tree().Write({{kPath, Path()}, {QStringLiteral("default"), true}});
}

KW_ACCEPTANCE CLivingProperty::IncDec(INT32 steps)
{
    return steps == 0 ? static_cast<KW_ACCEPTANCE>(eKW_ACC_OK)
                      : Tree().Write({{kPath, Path()}, {QStringLiteral("steps"), steps}});
}

QString CLivingProperty::GetDefaultText() const
{
    const COrderedJson& facts = Facts();
    // A default that is no finite number has no number in JSON.
    return facts["default"].IsNull() && facts["isDefault"].IsTrue() ? facts["text"].GetText()
                                                                    : facts["default"].GetText();
}

const CEnumNameInfo* CLivingProperty::GetEnumNameInfo() const
{
    return Facts().Has("values") ? Tree().FindNames(GetTypeName(), Path()) : nullptr;
}

KW_UNIT CLivingProperty::GetUnitCode() const
{
    return UnitOf(Facts()["unit"].GetText());
}

KW_VALIDITY CLivingProperty::GetValidity() const
{
    return Facts()["valid"].IsTrue() ? eKW_VALIDITY_VALID : eKW_VALIDITY_INVALID;
}

KW_ACCEPTANCE CLivingAction::Execute()
{
    return Post("/run", {{kPath, Path()}});
}

void CLivingGroup::NeedMembers() const
{
    if (m_membersAge != Tree().GetAge())
    {
        // Who goes on from a group that a walk has met goes through all that is below it.
        Tree().Read(Path(), IsFresh() ? -1 : 1);
        m_membersAge = Tree().GetAge();
    }
}

void CLivingGroup::TakeMembers(t_Nodes& nodes, COrderedJson&& told)
{
    nodes.clear();
    for (auto& [name, member] : told.Members())
    {
        nodes.push_back(Tree().Absorb(std::move(member)));
    }
}

void CLivingGroup::Take(COrderedJson&& told)
{
    COrderedJson own = COrderedJson::Object();
    const bool hasMembers = told.Has("properties");
    for (auto& [name, member] : told.Members())
    {
        t_Nodes* const nodes = name == QLatin1String("properties") ? &m_properties
                               : name == QLatin1String("groups")   ? &m_groups
                               : name == QLatin1String("items")    ? &m_items
                               : name == QLatin1String("actions")  ? &m_actions
                                                                   : nullptr;
        if (nodes != nullptr)
        {
            TakeMembers(*nodes, std::move(member));
            continue;
        }
        own.Members().emplace_back(name, std::move(member));
    }
    m_membersAge = hasMembers ? Tree().GetAge() : m_membersAge;
    CLivingNode::Take(std::move(own));
}

INT32 CLivingGroup::CountOf(const t_Nodes& nodes) const
{
    NeedMembers();
    return static_cast<INT32>(nodes.size());
}

template <typename TNode>
std::shared_ptr<TNode> CLivingGroup::At(const t_Nodes& nodes, INT32 index) const
{
    NeedMembers();
    return index >= 0 && index < static_cast<INT32>(nodes.size())
               ? std::dynamic_pointer_cast<TNode>(nodes[static_cast<std::size_t>(index)])
               : nullptr;
}

std::shared_ptr<IDbProperty> CLivingGroup::GetProperty(INT32 index) const
{
    return At<IDbProperty>(m_properties, index);
}

std::shared_ptr<IDbGroup> CLivingGroup::GetGroup(INT32 index) const
{
    return At<IDbGroup>(m_groups, index);
}

std::shared_ptr<IDbAction> CLivingGroup::GetAction(INT32 index) const
{
    return At<IDbAction>(m_actions, index);
}

std::shared_ptr<IDbObject> CLivingGroup::Find(const QString& path) const
{
    const bool isJoined = Path().isEmpty() || path.isEmpty() || path.startsWith(QLatin1Char('['));
    return Tree().Find(isJoined ? Path() + path : Path() + QLatin1Char('/') + path);
}

std::shared_ptr<IDbGroup> CLivingContainer::GetItemByPosition(INT32 position) const
{
    return At<IDbGroup>(m_items, position);
}

KW_ACCEPTANCE CLivingContainer::Change(const char* what, const QString& key, const QString& to)
{
    return Post("/items", {{kPath, Path()},
                           {QStringLiteral("do"), QLatin1String(what)},
                           {QStringLiteral("key"), key},
                           {QStringLiteral("to"), to}});
}

KW_ACCEPTANCE CLivingContainer::InsertItem(const QString& key)
{
    return Change("insert", key);
}

KW_ACCEPTANCE CLivingContainer::RemoveItem(const QString& key)
{
    return Change("remove", key);
}

KW_ACCEPTANCE CLivingContainer::RenameItem(const QString& key, const QString& newKey)
{
    return Change("rename", key, newKey);
}

KW_ACCEPTANCE CLivingContainer::CopyItem(const QString& key, const QString& newKey)
{
    return Change("copy", key, newKey);
}

KW_ACCEPTANCE CLivingContainer::SetActiveItem(const QString& key)
{
    return Change("activate", key);
}
