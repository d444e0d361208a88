// SPDX-License-Identifier: MIT
#include "DbPropertyGroup.h"

#include "LockManager.h"

#include <algorithm>

namespace
{
template <typename TList>
auto FindByName(const TList& list, QStringView name) -> decltype(list.front().get())
{
    const auto found = std::find_if(list.begin(), list.end(),
                                    [name](const auto& node) { return node->NodeName() == name; });
    return found == list.end() ? nullptr : found->get();
}

template <typename TList>
auto NodeAt(const TList& list, INT32 index) -> decltype(list.front().get())
{
    return index < 0 || static_cast<std::size_t>(index) >= list.size() ? nullptr
                                                                       : list[index].get();
}

} // namespace

CDbPropertyGroup::~CDbPropertyGroup()
{
    for (const auto& property : m_properties)
    {
        property->ReleaseReferences();
        property->SetParent(nullptr);
    }
    for (const auto& group : m_groups)
    {
        group->SetParent(nullptr);
    }
    for (const auto& object : m_objects)
    {
        object->SetParent(nullptr);
    }
}

void CDbPropertyGroup::AddPropertyToList(CDbPropBase* property, const QString& name)
{
    // Owned as the base class: one control block type serves all property types.
    m_properties.push_back(std::shared_ptr<CDbPropBase>(property));
    property->SetNodeName(name);
    property->SetParent(this);
    property->SetPlace(m_properties.size() - 1);
}

void CDbPropertyGroup::AddPropGroupToList(CDbPropertyGroup* group, const QString& name)
{
    m_groups.push_back(std::shared_ptr<CDbPropertyGroup>(group, CDbNodeDeleter{}));
    group->SetNodeName(name);
    group->SetParent(this);
    group->SetPlace(m_groups.size() - 1);
}

void CDbPropertyGroup::RemovePropGroupFromList(CDbPropertyGroup* group)
{
    const CLockGuard lock;
    const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                    [group](const auto& child) { return child.get() == group; });
    if (found != m_groups.end())
    {
        group->LeaveTree();
        group->SetParent(nullptr);
        const auto after = m_groups.erase(found);
        std::for_each(after, m_groups.end(),
                      [](const auto& later) { later->SetPlace(later->GetPlace() - 1U); });
        IncChangeCounter();
    }
}

void CDbPropertyGroup::AddObject(CDbFunction* object, const QString& name)
{
    m_objects.push_back(std::shared_ptr<CDbFunction>(object));
    object->SetNodeName(name);
    object->SetParent(this);
    object->SetPlace(m_objects.size() - 1);
}

CDbPropBase* CDbPropertyGroup::FindProperty(QStringView name) const
{
    return FindByName(m_properties, name);
}

CDbPropertyGroup* CDbPropertyGroup::FindGroup(QStringView name) const
{
    return FindByName(m_groups, name);
}

CDbFunction* CDbPropertyGroup::FindObject(QStringView name) const
{
    return FindByName(m_objects, name);
}

void CDbPropertyGroup::IncChangeCounter()
{
    m_counter.IncChangeCounter();
    if (CDbPropertyGroup* const parent = GetParent())
    {
        parent->IncChangeCounter();
    }
}

void CDbPropertyGroup::PrePropertySet(const CDbPropBase* /*property*/) {}

t_Couplings CDbPropertyGroup::Rules() const
{
    return {};
}

KW_ACCEPTANCE CDbPropertyGroup::OnPropertySet(const CDbPropBase* /*property*/)
{
    return eKW_ACC_OK;
}

void CDbPropertyGroup::OnPropertyUnchanged(const CDbPropBase* /*property*/) {}
void CDbPropertyGroup::OnPropertyDbSet(const CDbPropBase* /*property*/) {}
void CDbPropertyGroup::OnPropertyAutoSet(const CDbPropBase* /*property*/) {}

KW_ACCEPTANCE CDbPropertyGroup::OnFunction(const CDbFunction* /*function*/)
{
    return eKW_ACC_OK;
}

std::optional<KW_ACCEPTANCE> CDbPropertyGroup::OnFileFunction(const CDbFunction* /*function*/)
{
    return std::nullopt;
}

std::vector<CDbPropertyGroup::t_Twins> CDbPropertyGroup::GetTwins() const
{
    std::vector<t_Twins> twins;
    const t_Couplings rules = Rules();
    for (const t_Row& row : rules)
    {
        if (row.cause == eCAUSE::Twins)
        {
            const NNames::t_Path* const pair = rules.SourcesOf(row).first;
            const auto member = [this](const NNames::t_Path& path)
            {
                return path.isFromRoot ? static_cast<const CDbPropBase*>(Resolve(path))
                                       : m_properties[path.steps[0]].get();
            };
            twins.push_back({&row, member(pair[0]), member(pair[1])});
        }
    }
    return twins;
}

void CDbPropertyGroup::UpdateChildAvailabilities() {}
void CDbPropertyGroup::OnItemInserted(CDbContainerBase* /*container*/, const QString& /*item*/) {}
void CDbPropertyGroup::OnItemRemoved(CDbContainerBase* /*container*/, const QString& /*item*/) {}
void CDbPropertyGroup::OnItemRenaming(CDbContainerBase* /*container*/, const QString& /*oldName*/,
                                      const QString& /*newName*/)
{
}
void CDbPropertyGroup::OnItemRenamed(CDbContainerBase* /*container*/, const QString& /*oldName*/,
                                     const QString& /*newName*/)
{
}

void CDbPropertyGroup::OnFIMCreated()
{
    EnsureFIM();
    for (const auto& property : m_properties)
    {
        property->EnsureFIM();
    }
    for (const auto& group : m_groups)
    {
        group->OnFIMCreated();
    }
    VisitItems([](CDbPropertyGroup& item) { item.OnFIMCreated(); });
}

void CDbPropertyGroup::OnTreeCreated()
{
    for (const auto& group : m_groups)
    {
        group->OnTreeCreated();
    }
    VisitItems([](CDbPropertyGroup& item) { item.OnTreeCreated(); });
    if (CDbPgRoot* const root = GetDbRoot())
    {
        EnterTree(*root);
    }
    RunFreshRows();
}

void CDbPropertyGroup::VisitItems(const std::function<void(CDbPropertyGroup&)>& /*visit*/) const {}

void CDbPropertyGroup::VisitChildrenFirst(const std::function<void(CDbPropertyGroup&)>& visit)
{
    for (const auto& group : m_groups)
    {
        group->VisitChildrenFirst(visit);
    }
    VisitItems([&visit](CDbPropertyGroup& item) { item.VisitChildrenFirst(visit); });
    visit(*this);
}

void CDbPropertyGroup::StoreAvailability(KW_AVAILABILITY availability)
{
    CDbObject::SetAvailability(availability);
    IncChangeCounter();
}

INT32 CDbPropertyGroup::GetPropertyCount() const
{
    return static_cast<INT32>(m_properties.size());
}

std::shared_ptr<IDbProperty> CDbPropertyGroup::GetProperty(INT32 index) const
{
    CDbPropBase* const property = NodeAt(m_properties, index);
    return property != nullptr ? property->ShareProperty() : nullptr;
}

INT32 CDbPropertyGroup::GetGroupCount() const
{
    const CLockGuard lock(eACCESS_READ);
    return static_cast<INT32>(m_groups.size());
}

std::shared_ptr<IDbGroup> CDbPropertyGroup::GetGroup(INT32 index) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbPropertyGroup* const group = NodeAt(m_groups, index);
    return group != nullptr ? group->ShareGroup() : nullptr;
}

INT32 CDbPropertyGroup::GetActionCount() const
{
    return static_cast<INT32>(m_objects.size());
}

std::shared_ptr<IDbAction> CDbPropertyGroup::GetAction(INT32 index) const
{
    CDbFunction* const object = NodeAt(m_objects, index);
    return object != nullptr ? object->ShareAction() : nullptr;
}

CDbObject* CDbPropertyGroup::FindMember(QStringView name) const
{
    if (CDbPropBase* const property = FindProperty(name))
    {
        return property;
    }
    if (CDbPropertyGroup* const group = FindGroup(name))
    {
        return group;
    }
    return FindObject(name);
}

CDbPropertyGroup* CDbPropertyGroup::FindItem(QStringView /*key*/) const
{
    return nullptr;
}

CDbPropertyGroup* CDbPropertyGroup::ItemAtPosition(INT32 /*position*/) const
{
    return nullptr;
}

std::shared_ptr<IDbObject> CDbPropertyGroup::Find(const QString& path) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbObject* node = const_cast<CDbPropertyGroup*>(this);
    int position = 0;
    while (node != nullptr && position < path.size())
    {
        auto* const group = dynamic_cast<CDbPropertyGroup*>(node);
        // An item follows its container directly; its key may hold any character but "]".
        const bool isItem = path[position] == QLatin1Char('[');
        const QLatin1Char end(isItem ? ']' : '/');
        const int begin = position + (isItem || path[position] == end ? 1 : 0);
        int stop = static_cast<int>(path.indexOf(end, begin));
        if (group == nullptr || (isItem && stop < 0))
        {
            return nullptr;
        }
        const int bracket = isItem ? -1 : static_cast<int>(path.indexOf(QLatin1Char('['), begin));
        stop = stop < 0 ? static_cast<int>(path.size()) : stop;
        stop = bracket >= 0 && bracket < stop ? bracket : stop;
        const QStringView step = QStringView(path).mid(begin, stop - begin);
        node = isItem ? group->FindItem(step) : group->FindMember(step);
        position = stop + (isItem ? 1 : 0);
        if (isItem && position < path.size() && path[position] != u'/' && path[position] != u'[')
        {
            return nullptr;
        }
    }
    return node == nullptr ? nullptr : std::shared_ptr<IDbObject>(node->shared_from_this());
}

std::shared_ptr<IKWFunctionBase> CDbPropertyGroup::GetHandle()
{
    return {shared_from_this(), EnsureFIM()};
}

std::shared_ptr<IDbGroup> CDbPropertyGroup::ShareGroup()
{
    return {shared_from_this(), this};
}

IKWFunctionBase* CDbPropertyGroup::EnsureFIM()
{
    return m_fim.Get([this] { return CreateFIM(); });
}

std::unique_ptr<IKWFunctionBase> CDbPropertyGroup::CreateFIM()
{
    return nullptr;
}

void CDbPropertyGroup::OnSaveRecallTypeSet(INT32 type, bool recursive)
{
    CDbObject::OnSaveRecallTypeSet(type, recursive);
    if (!recursive)
    {
        return;
    }
    for (const auto& property : m_properties)
    {
        SetSaveRecallType(property.get(), type, true);
    }
    for (const auto& group : m_groups)
    {
        SetSaveRecallType(group.get(), type, true);
    }
    VisitItems([type](CDbPropertyGroup& item) { SetSaveRecallType(&item, type, true); });
}

QString CDbPropertyGroup::GetXMLElementName() const
{
    return QStringLiteral("PropGroup");
}

INT32 CDbPropertyGroup::GetSavedPattern() const
{
    INT32 pattern = eSAVERECALL_NONE;
    for (const auto& property : m_properties)
    {
        pattern |= property->GetSaveRecallType();
    }
    for (const auto& group : m_groups)
    {
        pattern |= group->GetSavedPattern();
    }
    VisitItems([&pattern](CDbPropertyGroup& item) { pattern |= item.GetSavedPattern(); });
    return pattern;
}

std::size_t CDbPropertyGroup::CountNodes() const
{
    std::size_t count = 1 + m_properties.size();
    const auto add = [&count](const CDbPropertyGroup& group) { count += group.CountNodes(); };
    std::for_each(m_groups.begin(), m_groups.end(), [&add](const auto& group) { add(*group); });
    VisitItems(add);
    return count;
}

void CDbPropertyGroup::WriteDefaults(INT32 pattern)
{
    for (const auto& property : m_properties)
    {
        if ((property->GetSaveRecallType() & pattern) != 0)
        {
            property->WriteDefault();
        }
    }
    for (const auto& group : m_groups)
    {
        group->WriteDefaults(pattern);
    }
    VisitItems([pattern](CDbPropertyGroup& item) { item.WriteDefaults(pattern); });
}

void CDbPropertyGroup::DropMeasured()
{
    for (const auto& property : m_properties)
    {
        property->DropMeasured();
    }
}

void CDbPropertyGroup::DropMeasuredBelow()
{
    VisitChildrenFirst([](CDbPropertyGroup& group) { group.DropMeasured(); });
}
