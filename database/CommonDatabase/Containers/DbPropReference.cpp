// SPDX-License-Identifier: MIT
#include "DbPropReference.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "DbContainerBase.h"
#include "LockManager.h"

std::shared_ptr<CDbPropertyGroup> CDbPropReference::FindItem(const QString& path) const
{
    const CDbPgRoot* const root = GetDbRoot();
    const auto node = root != nullptr ? root->Find(path) : nullptr;
    auto group = std::dynamic_pointer_cast<CDbPropertyGroup>(node);
    const bool isItem = group && dynamic_cast<CDbContainerBase*>(group->GetParent()) != nullptr;
    return isItem ? group : nullptr;
}

std::shared_ptr<CDbPropertyGroup>
CDbPropReference::Active(const std::weak_ptr<CDbPropertyGroup>& group)
{
    auto item = group.lock();
    return item && item->GetParent() != nullptr ? item : nullptr;
}

QString CDbPropReference::PathOf(const std::weak_ptr<CDbPropertyGroup>& group)
{
    const CLockGuard lock(eACCESS_READ);
    const auto item = Active(group);
    return item ? item->GetPath() : QStringLiteral("");
}

bool CDbPropReference::t_State::operator==(const t_State& other) const
{
    return common == other.common && !group.owner_before(other.group) &&
           !other.group.owner_before(group);
}

std::shared_ptr<CDbPropertyGroup> CDbPropReference::GetReferencedGroup() const
{
    const CLockGuard lock(eACCESS_READ);
    return Active(m_group);
}

QString CDbPropReference::Get() const
{
    return PathOf(m_group);
}

CDbContainerBase* CDbPropReference::GetContainer() const
{
    const auto group = GetReferencedGroup();
    return group ? dynamic_cast<CDbContainerBase*>(group->GetParent()) : nullptr;
}

INT32 CDbPropReference::GetContainerIndex() const
{
    const CLockGuard lock(eACCESS_READ);
    const CDbContainerBase* const container = GetContainer();
    return container != nullptr ? container->PositionOf(*GetReferencedGroup()) : -1;
}

void CDbPropReference::ReleaseReferences()
{
    m_group.reset();
}

KW_ACCEPTANCE CDbPropReference::ParseText(const QString& text, CDbValue& value) const
{
    value = text;
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPropReference::Validate(CDbValue& value, eWRITEKIND /*kind*/) const
{
    const QString* const path = std::get_if<QString>(&value);
    if (path == nullptr)
    {
        return eKW_ACC_WRONG_KIND;
    }
    if (path->isEmpty())
    {
        return eKW_ACC_OK;
    }
    const auto item = FindItem(*path);
    if (!item)
    {
        return eKW_ACC_NOT_FOUND;
    }
    value = item->GetPath(); // one spelling of a path, so that it compares
    return eKW_ACC_OK;
}

void CDbPropReference::Store(const CDbValue& value, eWRITEKIND /*kind*/)
{
    m_group = FindItem(std::get<QString>(value));
}

void CDbPropReference::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<CDbPropHist<t_State>>(*this, GetState());
}

bool CDbPropReference::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<CDbPropHist<t_State>&>(record).Complete(GetState());
}

void CDbPropReference::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const t_State& state = static_cast<const CDbPropHist<t_State>&>(record).State(newState);
    SetCommonState(state.common);
    m_group = state.group;
}

std::shared_ptr<IKWReferenceProperty> CDbPropReference::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWReferenceProperty*>(EnsureFIM())};
}
