// SPDX-License-Identifier: MIT
#include "DbContainerBase.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Values/DbBounds.h"

KW_ACCEPTANCE CDbContainerBase::CheckClientAccess() const
{
    const CDbPgRoot* const root = GetDbRoot();
    if (root == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (!IsDynamic())
    {
        return eKW_ACC_FIXED_SIZE;
    }
    if (!root->MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    return GetAvailability() == eAVAILABILITY_AVAILABLE ? eKW_ACC_OK : eKW_ACC_NOT_AVAILABLE;
}

std::shared_ptr<CDbPropertyGroup> CDbContainerBase::Own(CDbPropertyGroup* item)
{
    return std::shared_ptr<CDbPropertyGroup>(item, CDbNodeDeleter{});
}

void CDbContainerBase::Adopt(CDbPropertyGroup& item, const QString& name, eWRITEKIND kind)
{
    item.SetNodeName(name);
    item.SetParent(this);
    CDbPgRoot* const root = GetDbRoot();
    if (root == nullptr || !root->IsTreeCreated())
    {
        return;
    }
    if (kind == eWRITEKIND::Undo)
    {
        item.VisitChildrenFirst([root](CDbPropertyGroup& group) { group.EnterTree(*root); });
        root->GetDependencies().EnterItem(*this);
        return;
    }
    SkipRecords(item);
    item.OnTreeCreated();
    root->GetDependencies().EnterItem(*this);
    item.OnFIMCreated();
    item.VisitChildrenFirst([](CDbPropertyGroup& group) { group.UpdateGroup(); });
}

/** What comes into being with a step leaves with it when that is undone, and comes back as it was:
    records of its values would say nothing. */
void CDbContainerBase::SkipRecords(CDbPropertyGroup& item) const
{
    const UINT32 step = IsRecording() ? GetDbRoot()->GetStepId() : 0;
    const auto skip = [step](CDbPropertyGroup& group)
    {
        for (const auto& property : group.Properties())
        {
            property->SetRecordedStep(step);
        }
    };
    if (step != 0)
    {
        item.VisitChildrenFirst(skip);
    }
}

void CDbContainerBase::Detach(CDbPropertyGroup& item)
{
    item.LeaveTree();
    item.SetParent(nullptr);
}

CDbUndoStep* CDbContainerBase::RecordedStep() const
{
    const CDbPgRoot* const root = GetDbRoot();
    return root != nullptr ? root->GetStep() : nullptr;
}

const CDbContainerBase::t_ItemClass& CDbContainerBase::GetItemClass() const
{
    if (m_itemClass.pattern < 0)
    {
        const auto item = Own(CreateItem(0));
        m_itemClass = {item->GetSavedPattern(), item->CountNodes()};
    }
    return m_itemClass;
}

INT32 CDbContainerBase::GetSavedPattern() const
{
    return GetItemClass().pattern & GetSaveRecallType();
}

std::size_t CDbContainerBase::GetNodesPerItem() const
{
    return GetItemClass().nodes;
}

bool CDbContainerBase::HasRoomFor(INT32 count) const
{
    using namespace NDbBounds;
    return count <= m_maxCount && (count <= kSmallContainer ||
                                   static_cast<std::size_t>(count) <=
                                       kMaxContainerBytes / (GetNodesPerItem() * kBytesPerNode));
}

void CDbContainerBase::WriteDefaults(INT32 pattern)
{
    if (IsDynamic() && (GetSavedPattern() & pattern) != 0)
    {
        RemoveAllItems();
    }
    CDbPropertyGroup::WriteDefaults(pattern);
}
