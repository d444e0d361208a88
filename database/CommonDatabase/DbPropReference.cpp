// SPDX-License-Identifier: MIT
#include "DbPropReference.h"

#include "DbContainerBase.h"
#include "DbHandles.h"
#include "DbPgRoot.h"
#include "DbSettings.h"
#include "LockManager.h"

std::shared_ptr<CDbPropertyGroup> CDbPropReference::FindItem(const QString& path) const
{
    const CDbPgRoot* const root = GetDbRoot();
    const auto node = root != nullptr ? root->Find(path) : nullptr;
    auto group = std::dynamic_pointer_cast<CDbPropertyGroup>(node);
    const bool isItem = group && dynamic_cast<CDbContainerBase*>(group->GetParent()) != nullptr;
    return isItem ? group : nullptr;
}

std::shared_ptr<CDbPropertyGroup> CDbPropReference::GetReferencedGroup() const
{
    const CLockGuard lock(eACCESS_READ);
    auto group = m_group.lock();
    // A removed item may live on in the history or in a client's hands.
    return group && group->GetParent() != nullptr ? group : nullptr;
}

QString CDbPropReference::Get() const
{
    const CLockGuard lock(eACCESS_READ);
    const auto group = GetReferencedGroup();
    return group ? group->GetPath() : QStringLiteral("");
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

KW_NODE_KIND CDbPropReference::GetContainerType() const
{
    const CLockGuard lock(eACCESS_READ);
    const CDbContainerBase* const container = GetContainer();
    return container != nullptr ? container->GetKind() : eKW_NODE_GROUP;
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

void CDbPropReference::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    recall.Defer([this, element](CDbRecall& later) { CDbPropBase::DeSerialize(element, later); });
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

std::unique_ptr<CDbPropBaseHist> CDbPropReference::MakeNewHistValueEntry()
{
    auto record = std::make_unique<CDbPropHist<t_State>>(*this);
    SaveState(*record, false);
    return record;
}

void CDbPropReference::SaveState(CDbPropBaseHist& record, bool newState) const
{
    static_cast<CDbPropHist<t_State>&>(record).State(newState) = {GetCommonState(), m_group, Get()};
}

void CDbPropReference::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const t_State& state = static_cast<const CDbPropHist<t_State>&>(record).State(newState);
    SetCommonState(state.common);
    m_group = state.group;
}

std::unique_ptr<IKWPropertyBase> CDbPropReference::CreateFIM()
{
    return std::make_unique<CFIMReference>(*this);
}

std::shared_ptr<IKWReferenceProperty> CDbPropReference::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWReferenceProperty*>(EnsureFIM())};
}
