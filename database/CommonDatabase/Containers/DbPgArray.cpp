// SPDX-License-Identifier: MIT
#include "DbPgArray.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Values/DbBounds.h"
#include "CommonDatabase/Values/NumberText.h"
#include "KWErrorReport.h"
#include "LockManager.h"

#include <algorithm>

namespace
{
constexpr char kArraySource[] = "CommonDatabase/Src/DbPgArray";
} // namespace

CDbPgArrayBase::CDbPgArrayBase(INT32 dynamic, INT32 maxCount)
    : CDbContainerBase(dynamic != 0, maxCount)
{
    SetPropertyListSize(1);
    AddPropertyToList(m_pActiveIndex = new CDbPropNumInt32, QStringLiteral("ActiveIndex"));
    m_pActiveIndex->DeclareMinAndMax(-1, kUnlimited);
    m_pActiveIndex->DbSetDefault(-1);
    m_pActiveIndex->SetMax(-1);
}

CDbPgArrayBase::~CDbPgArrayBase()
{
    std::for_each(m_items.begin(), m_items.end(), [](const auto& item) { Detach(*item); });
}

void CDbPgArrayBase::ReportContainer(const QString& text, int line, const char* signature)
{
    _KW_ProcessErrorString(text, line, kArraySource, signature, e_KW_MESSAGE_TYPE_ERROR);
}

#define KW_REPORT_ARRAY(text) ReportContainer(text, __LINE__, signature)

KW_ACCEPTANCE CDbPgArrayBase::SetSizeFor(INT32 count, const char* signature)
{
    const CLockGuard lock;
    const QLatin1String where(signature);
    if (count < 0)
    {
        KW_REPORT_ARRAY(QStringLiteral("bad size argument in ") + where);
        return eKW_ACC_BAD_INDEX;
    }
    if (count < GetCount())
    {
        KW_REPORT_ARRAY(QStringLiteral("Cannot use SetSize() to reduce size of the array -- "
                                       "memory leaks! in ") +
                        where);
        return eKW_ACC_CAN_NOT_SHRINK;
    }
    if (!HasRoomFor(count))
    {
        KW_REPORT_ARRAY(QStringLiteral("bad size argument in ") + where);
        return eKW_ACC_CONTAINER_FULL;
    }
    t_Items items;
    for (INT32 i = GetCount(); i < count; ++i)
    {
        items.push_back(Own(CreateItem(i)));
    }
    Place(GetCount(), items, eWRITEKIND::Internal);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgArrayBase::InsertFor(INT32 index, std::shared_ptr<CDbPropertyGroup>* inserted,
                                        const char* signature)
{
    const CLockGuard lock;
    if (index < 0 || index > GetCount())
    {
        KW_REPORT_ARRAY(QStringLiteral("Bad index ") + QString::number(index));
        return eKW_ACC_BAD_INDEX;
    }
    if (!HasRoomFor(GetCount() + 1))
    {
        return eKW_ACC_CONTAINER_FULL;
    }
    auto item = Own(CreateItem(index));
    if (!item)
    {
        KW_REPORT_ARRAY(QStringLiteral("new failed in ") + QLatin1String(signature));
        return eKW_ACC_INTERNAL;
    }
    if (inserted != nullptr)
    {
        *inserted = item;
    }
    Place(index, {std::move(item)}, eWRITEKIND::Internal);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgArrayBase::RemoveFor(INT32 index, INT32 count, const char* signature)
{
    const CLockGuard lock;
    if (index < 0)
    {
        KW_REPORT_ARRAY(QStringLiteral("Negative index... in ") + QLatin1String(signature));
        return eKW_ACC_BAD_INDEX;
    }
    if (count < 0)
    {
        KW_REPORT_ARRAY(QStringLiteral("Negative nofElements... in ") + QLatin1String(signature));
        return eKW_ACC_BAD_INDEX;
    }
    if (INT64{index} + count > GetCount())
    {
        KW_REPORT_ARRAY(QStringLiteral("Index out of range."));
        return eKW_ACC_BAD_INDEX;
    }
    Take(index, count, eWRITEKIND::Internal);
    return eKW_ACC_OK;
}

// Undo and redo put back what was: the owner's rules do not run again, because what they changed
// is restored by records of its own.
void CDbPgArrayBase::Place(INT32 index, const t_Items& items, eWRITEKIND kind)
{
    if (items.empty())
    {
        return;
    }
    const CDbRootScope scope(GetDbRoot(), kind);
    const auto count = static_cast<INT32>(items.size());
    const std::vector<QString> names = NamesFrom(index, GetCount() + count);
    m_items.insert(m_items.begin() + index, items.begin(), items.end());
    Rename(index, names);
    try
    {
        for (const auto& item : items)
        {
            Adopt(*item, item->NodeName(), kind);
        }
        AddRecord<CDbPgArrayHist>(*this, eOPERATIONTYPE::Insert, index, items);
    }
    catch (...)
    {
        // No record takes it back.
        Drop(index, count);
        Rename(index, names);
        throw;
    }
    FollowActiveItem(index, count, kind);
    CDbPropertyGroup* const owner = GetParent();
    if (owner != nullptr && kind != eWRITEKIND::Undo)
    {
        owner->RunItemRows(*this);
        owner->OnItemInserted(this, items.front()->NodeName());
    }
}

void CDbPgArrayBase::Take(INT32 index, INT32 count, eWRITEKIND kind)
{
    if (count == 0)
    {
        return;
    }
    const CDbRootScope scope(GetDbRoot(), kind);
    const auto begin = m_items.begin() + index;
    if (IsRecording())
    {
        AddRecord<CDbPgArrayHist>(*this, eOPERATIONTYPE::Remove, index,
                                  t_Items(begin, begin + count));
    }
    // From the record on nothing needs memory: names move down with the items.
    const QString name = m_items[index]->NodeName();
    for (INT32 i = GetCount() - 1; i >= index + count; --i)
    {
        m_items[i]->SetNodeName(m_items[i - count]->NodeName());
    }
    Drop(index, count);
    FollowActiveItem(index, -count, kind);
    CDbPropertyGroup* const owner = GetParent();
    if (owner != nullptr && kind != eWRITEKIND::Undo)
    {
        owner->RunItemRows(*this);
        owner->OnItemRemoved(this, name);
    }
}

std::vector<QString> CDbPgArrayBase::NamesFrom(INT32 begin, INT32 end)
{
    std::vector<QString> names;
    for (INT32 i = begin; i < end; ++i)
    {
        names.push_back(QString::number(i));
    }
    return names;
}

void CDbPgArrayBase::Rename(INT32 from, const std::vector<QString>& names)
{
    for (INT32 i = from; i < GetCount(); ++i)
    {
        m_items[i]->SetNodeName(names[i - from]);
    }
}

void CDbPgArrayBase::Drop(INT32 index, INT32 count)
{
    const auto begin = m_items.begin() + index;
    std::for_each(begin, begin + count, [](const auto& item) { Detach(*item); });
    m_items.erase(begin, begin + count);
}

// Counts every change of the array, too: none leaves the number of items as it was.
void CDbPgArrayBase::UpdateActiveLimits()
{
    m_pActiveIndex->SetMax(GetCount() - 1);
}

void CDbPgArrayBase::FollowActiveItem(INT32 index, INT32 count, eWRITEKIND kind)
{
    const INT32 active = GetActive();
    // Undo and redo restore the index by a record of its own.
    if (active < index || kind == eWRITEKIND::Undo)
    {
        UpdateActiveLimits();
        return;
    }
    if (count > 0)
    {
        UpdateActiveLimits();
    }
    m_pActiveIndex->DbSet(std::min(std::max(active + count, index), GetCount() - 1));
    UpdateActiveLimits();
}

void CDbPgArrayBase::RollbackValue(const CDbPgArrayHist& record)
{
    if (record.GetOperationType() == eOPERATIONTYPE::Insert)
    {
        Take(record.GetIndex(), static_cast<INT32>(record.GetItems().size()), eWRITEKIND::Undo);
    }
    else
    {
        Place(record.GetIndex(), record.GetItems(), eWRITEKIND::Undo);
    }
}

void CDbPgArrayBase::RedoValue(const CDbPgArrayHist& record)
{
    if (record.GetOperationType() == eOPERATIONTYPE::Insert)
    {
        Place(record.GetIndex(), record.GetItems(), eWRITEKIND::Undo);
    }
    else
    {
        Take(record.GetIndex(), static_cast<INT32>(record.GetItems().size()), eWRITEKIND::Undo);
    }
}

KW_ACCEPTANCE CDbPgArrayBase::Insert(INT32 index)
{
    return InsertAsClient(index, nullptr);
}

KW_ACCEPTANCE CDbPgArrayBase::InsertAsClient(INT32 index,
                                             std::shared_ptr<CDbPropertyGroup>* inserted)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckClientAccess(); access > eKW_ACC_WARNING)
    {
        return access;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    return InsertInternal(index, inserted);
}

KW_ACCEPTANCE CDbPgArrayBase::Remove(INT32 index, INT32 count)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckClientAccess(); access > eKW_ACC_WARNING)
    {
        return access;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    return DbRemovePriv(index, count);
}

KW_ACCEPTANCE CDbPgArrayBase::Copy(INT32 source, INT32 target)
{
    const CLockGuard lock;
    if (ItemAt(source) == nullptr)
    {
        return eKW_ACC_BAD_INDEX;
    }
    const std::shared_ptr<CDbPropertyGroup> original = m_items[source];
    std::shared_ptr<CDbPropertyGroup> copy;
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    const KW_ACCEPTANCE code = InsertAsClient(target, &copy);
    if (code <= eKW_ACC_WARNING)
    {
        CopyContents(*original, *copy);
    }
    return code;
}

KW_ACCEPTANCE CDbPgArrayBase::SetActive(INT32 index)
{
    return m_pActiveIndex->Set(index);
}

KW_ACCEPTANCE CDbPgArrayBase::Grow(INT32 count)
{
    const CLockGuard lock;
    if (GetDbRoot() == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    return IsDynamic() ? DbSetSize(count) : static_cast<KW_ACCEPTANCE>(eKW_ACC_FIXED_SIZE);
}

INT32 CDbPgArrayBase::GetCount() const
{
    const CLockGuard lock(eACCESS_READ);
    return static_cast<INT32>(m_items.size());
}

CDbPropertyGroup* CDbPgArrayBase::ItemAt(INT32 index) const
{
    const CLockGuard lock(eACCESS_READ);
    return index < 0 || index >= GetCount() ? nullptr : m_items[index].get();
}

std::shared_ptr<IKWFunctionBase> CDbPgArrayBase::ShareItemHandle(INT32 index) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbPropertyGroup* const item = ItemAt(index);
    return item != nullptr ? item->GetHandle() : nullptr;
}

INT32 CDbPgArrayBase::IndexOf(QStringView key) const
{
    // One way to write an index, so that an item has one path.
    INT32 index = -1;
    const bool isIndex = KW_TextToNumber(key, index) && QString::number(index) == key;
    return isIndex && ItemAt(index) != nullptr ? index : -1;
}

bool CDbPgArrayBase::IsItem(const QString& name) const
{
    return IndexOf(name) >= 0;
}

INT32 CDbPgArrayBase::PositionOf(const CDbPropertyGroup& item) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [&item](const auto& own) { return own.get() == &item; });
    return found == m_items.end() ? -1 : static_cast<INT32>(found - m_items.begin());
}

std::shared_ptr<IDbGroup> CDbPgArrayBase::GetItemByPosition(INT32 position) const
{
    const CLockGuard lock(eACCESS_READ);
    CDbPropertyGroup* const item = ItemAt(position);
    return item != nullptr ? item->ShareGroup() : nullptr;
}

KW_ACCEPTANCE CDbPgArrayBase::InsertItem(const QString& key)
{
    const CLockGuard lock;
    bool isNumber = false;
    const INT32 index = key.isEmpty() ? GetCount() : key.toInt(&isNumber);
    return key.isEmpty() || isNumber ? Insert(index)
                                     : static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_INDEX);
}

KW_ACCEPTANCE CDbPgArrayBase::RemoveItem(const QString& key)
{
    const CLockGuard lock;
    const INT32 index = IndexOf(key);
    return index < 0 ? static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_INDEX) : Remove(index, 1);
}

KW_ACCEPTANCE CDbPgArrayBase::RenameItem(const QString& /*key*/, const QString& /*newKey*/)
{
    return eKW_ACC_WRONG_KIND;
}

KW_ACCEPTANCE CDbPgArrayBase::CopyItem(const QString& key, const QString& newKey)
{
    const CLockGuard lock;
    bool isNumber = false;
    const INT32 target = newKey.isEmpty() ? GetCount() : newKey.toInt(&isNumber);
    return newKey.isEmpty() || isNumber ? Copy(IndexOf(key), target)
                                        : static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_INDEX);
}

KW_ACCEPTANCE CDbPgArrayBase::SetActiveItem(const QString& key)
{
    const CLockGuard lock;
    const INT32 index = IndexOf(key);
    return index < 0 ? static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_INDEX) : SetActive(index);
}

QString CDbPgArrayBase::GetActiveItem() const
{
    const INT32 active = GetActive();
    return active < 0 ? QStringLiteral("") : QString::number(active);
}

void CDbPgArrayBase::VisitItems(const std::function<void(CDbPropertyGroup&)>& visit) const
{
    std::for_each(m_items.begin(), m_items.end(), [&visit](const auto& item) { visit(*item); });
}

CDbPropertyGroup* CDbPgArrayBase::FindItem(QStringView key) const
{
    return ItemAt(IndexOf(key));
}

void CDbPgArrayBase::RemoveAllItems()
{
    DbRemovePriv(0, GetCount());
}

CDbPgArrayHist::CDbPgArrayHist(CDbPgArrayBase& array, eOPERATIONTYPE operation, INT32 index,
                               t_Items items)
    : CDbHistRecord(operation),
      m_array(std::static_pointer_cast<CDbPgArrayBase>(array.shared_from_this())), m_index(index),
      m_items(std::move(items)),
      m_text((operation == eOPERATIONTYPE::Insert ? QStringLiteral("%1 inserted")
                                                  : QStringLiteral("%1 removed"))
                 .arg(m_items.front()->GetPath()))
{
}

QString CDbPgArrayHist::GetText() const
{
    return m_text;
}

std::size_t CDbPgArrayHist::GetHeldBytes() const
{
    // Items that came in are the tree's.
    const bool keeps = GetOperationType() == eOPERATIONTYPE::Remove;
    return sizeof(*this) +
           (keeps ? m_items.size() * m_array->GetNodesPerItem() : 0) * NDbBounds::kBytesPerNode;
}
