// SPDX-License-Identifier: MIT
#include "DbPgMap.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Values/DbBounds.h"
#include "KWErrorReport.h"
#include "LockManager.h"

#include <algorithm>

namespace
{
constexpr char kMapSource[] = "CommonDatabase/Src/DbPgMap";

/** The one spelling of a name that maps keep. */
QString Canonical(const QString& name)
{
    return name.normalized(QString::NormalizationForm_C);
}

/** An item that left its map answers its last name, no key, and refuses to be renamed. */
class CFIMMapItem final : public IKWMapItem
{
public:
    explicit CFIMMapItem(CDbPropertyGroup& item) : m_item(item) {}
    QString GetName() const override { return m_item.GetNodeName(); }
    QString GetDisplayName() const override
    {
        const CLockGuard lock(eACCESS_READ);
        return Map() != nullptr ? Map()->DisplayNameOf(m_item) : m_item.NodeName();
    }
    INT32 GetNumericKey() const override
    {
        const CLockGuard lock(eACCESS_READ);
        return Map() != nullptr ? Map()->NumericKeyOf(m_item) : -1;
    }
    bool IsActive() const override
    {
        const CLockGuard lock(eACCESS_READ);
        return Map() != nullptr && Map()->GetActiveItem() == m_item.NodeName();
    }
    KW_ACCEPTANCE Rename(const QString& newName) override
    {
        const CLockGuard lock;
        // A copy: the node's own name changes on the way.
        const QString oldName = m_item.NodeName();
        return Map() != nullptr ? Map()->Rename(oldName, newName)
                                : static_cast<KW_ACCEPTANCE>(eKW_ACC_DETACHED);
    }
    std::shared_ptr<IKWFunctionBase> GetGroup() const override { return m_item.GetHandle(); }

private:
    CDbPgMapBase* Map() const { return dynamic_cast<CDbPgMapBase*>(m_item.GetParent()); }

    CDbPropertyGroup& m_item;
};
} // namespace

/** Name of a map's active item, empty when none is. */
class CDbPgMapBase::CActiveKey final : public CDbPropString
{
public:
    QStringList GetValueTexts() const override
    {
        const CLockGuard lock(eACCESS_READ);
        return Map() != nullptr ? Map()->GetNames() : QStringList();
    }

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override
    {
        const bool isAsked = kind == eWRITEKIND::Client || kind == eWRITEKIND::Recall;
        const QString* name = std::get_if<QString>(&value);
        if (name != nullptr)
        {
            value = Canonical(*name);
            name = std::get_if<QString>(&value);
        }
        const bool isUnknown = isAsked && name != nullptr && !name->isEmpty() && Map() != nullptr &&
                               !Map()->IsItem(*name);
        return isUnknown ? static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_FOUND)
                         : CDbPropString::Validate(value, kind);
    }

private:
    /** Null when the tree is gone. */
    const CDbPgMapBase* Map() const { return static_cast<const CDbPgMapBase*>(GetParent()); }
};

CDbPgMapBase::CDbPgMapBase(INT32 maxCount) : CDbContainerBase(true, maxCount)
{
    SetPropertyListSize(1);
    AddPropertyToList(m_pActiveKey = new CActiveKey, QStringLiteral("ActiveKey"));
}

CDbPgMapBase::~CDbPgMapBase()
{
    std::for_each(m_items.begin(), m_items.end(),
                  [](const auto& entry) { Detach(*entry.second.group); });
}

void CDbPgMapBase::ReportContainer(const QString& text, int line, const char* signature)
{
    _KW_ProcessErrorString(text, line, kMapSource, signature, e_KW_MESSAGE_TYPE_ERROR);
}

#define KW_REPORT_MAP(text) ReportContainer(text, __LINE__, signature)

KW_ACCEPTANCE CDbPgMapBase::CheckDisplayName(const QString& displayName)
{
    if (displayName.size() > NDbBounds::kMaxDisplayNameLength)
    {
        return eKW_ACC_TOO_LONG;
    }
    return CDbPropTextBase::IsSavable(displayName) ? eKW_ACC_OK : eKW_ACC_BAD_NAME;
}

KW_ACCEPTANCE CDbPgMapBase::CheckNew(const QString& name, const QString& displayName,
                                     INT32 numericKey) const
{
    if (!IsNameValid(name))
    {
        return eKW_ACC_BAD_NAME;
    }
    if (const KW_ACCEPTANCE code = CheckDisplayName(displayName); code > eKW_ACC_WARNING)
    {
        return code;
    }
    if (IsItem(name) || IsItem(numericKey))
    {
        return eKW_ACC_NAME_IN_USE;
    }
    return HasRoomFor(GetCount() + 1) ? eKW_ACC_OK : eKW_ACC_CONTAINER_FULL;
}

KW_ACCEPTANCE CDbPgMapBase::InsertFor(const QString& asked, const QString& displayName,
                                      INT32 numericKey, bool makeActive,
                                      std::shared_ptr<CDbPropertyGroup>* inserted,
                                      const char* signature)
{
    const CLockGuard lock;
    const QString name = Canonical(asked);
    const KW_ACCEPTANCE code = CheckNew(name, displayName, numericKey);
    if (code == eKW_ACC_BAD_NAME)
    {
        KW_REPORT_MAP(QStringLiteral("\"%1\" is no valid name in ").arg(name) +
                      QLatin1String(signature));
    }
    if (code == eKW_ACC_NAME_IN_USE)
    {
        KW_REPORT_MAP((IsItem(name) ? name : QString::number(numericKey)) +
                      QStringLiteral(" already exists in ") + QLatin1String(signature));
    }
    if (code > eKW_ACC_WARNING)
    {
        return code;
    }
    const INT32 key = numericKey < 0 ? LowestFreeKey() : numericKey;
    const t_Item item{Own(CreateItem(key)), displayName.isEmpty() ? name : displayName, key};
    if (!item.group)
    {
        KW_REPORT_MAP(QStringLiteral("CreatePropertyGroup for ") + name +
                      QStringLiteral(" failed in ") + QLatin1String(signature));
        return eKW_ACC_INTERNAL;
    }
    if (inserted != nullptr)
    {
        *inserted = item.group;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Internal);
    Place(name, item, eWRITEKIND::Internal);
    return makeActive ? m_pActiveKey->DbSet(name) : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

KW_ACCEPTANCE CDbPgMapBase::RemoveFor(const QString& name, const char* signature)
{
    const CLockGuard lock;
    const auto found = m_items.find(Canonical(name));
    if (found == m_items.end())
    {
        KW_REPORT_MAP(QStringLiteral("Item ") + name + QStringLiteral(" does not exist in ") +
                      QLatin1String(signature));
        return eKW_ACC_NOT_FOUND;
    }
    if (m_namesByKey.count(found->second.numericKey) == 0)
    {
        KW_REPORT_MAP(QStringLiteral("Element not found"));
        return eKW_ACC_INTERNAL;
    }
    Take(QString(found->first), eWRITEKIND::Internal);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPgMapBase::AdaptFor(const QString& askedOld, const QString& askedNew,
                                     INT32 numericKey, const char* signature)
{
    const CLockGuard lock;
    const QString oldName = Canonical(askedOld);
    const QString newName = Canonical(askedNew);
    const auto found = m_items.find(oldName);
    if (found == m_items.end())
    {
        KW_REPORT_MAP(QStringLiteral("PropertyGroup ") + oldName +
                      QStringLiteral(" not exists in ") + QLatin1String(signature));
        return eKW_ACC_NOT_FOUND;
    }
    const INT32 oldKey = found->second.numericKey;
    const INT32 newKey = numericKey < 0 ? oldKey : numericKey;
    if (!IsNameValid(newName))
    {
        KW_REPORT_MAP(QStringLiteral("\"%1\" is no valid name in ").arg(newName) +
                      QLatin1String(signature));
        return eKW_ACC_BAD_NAME;
    }
    if ((newName != oldName && IsItem(newName)) || (newKey != oldKey && IsItem(newKey)))
    {
        KW_REPORT_MAP(newName + QStringLiteral(" already exists in ") + QLatin1String(signature));
        return eKW_ACC_NAME_IN_USE;
    }
    if (m_namesByKey.count(oldKey) == 0)
    {
        KW_REPORT_MAP(QStringLiteral("erase numeric key"));
        return eKW_ACC_INTERNAL;
    }
    if (newName == oldName && newKey == oldKey)
    {
        return eKW_ACC_OK;
    }
    t_Item item = found->second;
    item.displayName = item.displayName == oldName ? newName : item.displayName;
    item.numericKey = newKey;
    Move(oldName, newName, item, eWRITEKIND::Internal);
    return eKW_ACC_OK;
}

void CDbPgMapBase::Place(const QString& name, const t_Item& item, eWRITEKIND kind)
{
    const CDbRootScope scope(GetDbRoot(), kind);
    const auto placed = m_items.emplace(name, item).first;
    try
    {
        m_namesByKey.emplace(item.numericKey, name);
        Adopt(*item.group, name, kind);
        AddRecord<CDbPgMapHist>(*this, eOPERATIONTYPE::Insert, name, item);
    }
    catch (...)
    {
        // No record takes it back.
        Detach(*item.group);
        m_namesByKey.erase(item.numericKey);
        m_items.erase(placed);
        throw;
    }
    IncChangeCounter();
    CDbPropertyGroup* const owner = GetParent();
    if (owner != nullptr && kind != eWRITEKIND::Undo)
    {
        owner->RunItemRows(*this);
        owner->OnItemInserted(this, name);
    }
}

void CDbPgMapBase::Take(const QString& name, eWRITEKIND kind)
{
    const CDbRootScope scope(GetDbRoot(), kind);
    const auto found = m_items.find(name);
    const t_Item item = found->second;
    AddRecord<CDbPgMapHist>(*this, eOPERATIONTYPE::Remove, name, item);
    m_namesByKey.erase(item.numericKey);
    m_items.erase(found);
    m_lowestNumber = 1;
    Detach(*item.group);
    IncChangeCounter();
    if (kind == eWRITEKIND::Undo)
    {
        return;
    }
    if (m_pActiveKey->Get() == name)
    {
        m_pActiveKey->DbSet(QStringLiteral(""));
    }
    if (CDbPropertyGroup* const owner = GetParent())
    {
        owner->RunItemRows(*this);
        owner->OnItemRemoved(this, name);
    }
}

void CDbPgMapBase::Move(const QString& oldName, const QString& newName, const t_Item& item,
                        eWRITEKIND kind)
{
    const CDbRootScope scope(GetDbRoot(), kind);
    CDbPropertyGroup* const owner = kind == eWRITEKIND::Undo ? nullptr : GetParent();
    if (owner != nullptr)
    {
        owner->OnItemRenaming(this, oldName, newName);
    }
    AddRecord<CDbPgMapHist>(*this, oldName, m_items.at(oldName), newName, item);
    // From the record on nothing needs memory.
    auto entry = m_items.extract(oldName);
    m_lowestNumber = 1;
    auto keyEntry = m_namesByKey.extract(entry.mapped().numericKey);
    item.group->SetNodeName(newName);
    keyEntry.key() = item.numericKey;
    keyEntry.mapped() = newName;
    m_namesByKey.insert(std::move(keyEntry));
    entry.key() = newName;
    entry.mapped() = item;
    m_items.insert(std::move(entry));
    IncChangeCounter();
    if (owner == nullptr)
    {
        return;
    }
    if (m_pActiveKey->Get() == oldName)
    {
        m_pActiveKey->DbSet(newName);
    }
    owner->RunItemRows(*this);
    owner->OnItemRenamed(this, oldName, newName);
}

void CDbPgMapBase::RollbackValue(const CDbPgMapHist& record)
{
    switch (record.GetOperationType())
    {
    case eOPERATIONTYPE::Insert:
        Take(record.GetName(), eWRITEKIND::Undo);
        break;
    case eOPERATIONTYPE::Remove:
        Place(record.GetName(), record.GetItem(), eWRITEKIND::Undo);
        break;
    default:
        Move(record.GetNewName(), record.GetName(), record.GetItem(), eWRITEKIND::Undo);
        break;
    }
}

void CDbPgMapBase::RedoValue(const CDbPgMapHist& record)
{
    switch (record.GetOperationType())
    {
    case eOPERATIONTYPE::Insert:
        Place(record.GetName(), record.GetItem(), eWRITEKIND::Undo);
        break;
    case eOPERATIONTYPE::Remove:
        Take(record.GetName(), eWRITEKIND::Undo);
        break;
    default:
        Move(record.GetName(), record.GetNewName(), record.GetNewItem(), eWRITEKIND::Undo);
        break;
    }
}

KW_ACCEPTANCE CDbPgMapBase::CheckGroupActionAvailable(eACTION action) const
{
    const CLockGuard lock(eACCESS_READ);
    const KW_ACCEPTANCE access = CheckClientAccess();
    const bool full = action == eACTION::Insert && IsMaxCountReached();
    return access <= eKW_ACC_WARNING && full ? static_cast<KW_ACCEPTANCE>(eKW_ACC_CONTAINER_FULL)
                                             : access;
}

KW_ACCEPTANCE CDbPgMapBase::Insert(const QString& name)
{
    return InsertAsClient(name, nullptr);
}

KW_ACCEPTANCE CDbPgMapBase::InsertAsClient(const QString& name,
                                           std::shared_ptr<CDbPropertyGroup>* inserted)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckGroupActionAvailable(eACTION::Insert);
        access > eKW_ACC_WARNING)
    {
        return access;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    return InsertInternal(name.isEmpty() ? CreateUniqueName() : name, QString(), -1, false, true,
                          inserted);
}

KW_ACCEPTANCE CDbPgMapBase::Remove(const QString& name)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckGroupActionAvailable(eACTION::Remove);
        access > eKW_ACC_WARNING)
    {
        return access;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    return ProcessRemove(name);
}

KW_ACCEPTANCE CDbPgMapBase::Rename(const QString& oldName, const QString& newName)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckGroupActionAvailable(eACTION::Rename);
        access > eKW_ACC_WARNING)
    {
        return access;
    }
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    return AdaptNumericKeyAndName(oldName, NormalizeName(newName), -1);
}

KW_ACCEPTANCE CDbPgMapBase::Copy(const QString& source, const QString& target)
{
    const CLockGuard lock;
    const auto found = m_items.find(Canonical(source));
    if (found == m_items.end())
    {
        return eKW_ACC_NOT_FOUND;
    }
    const std::shared_ptr<CDbPropertyGroup> original = found->second.group;
    std::shared_ptr<CDbPropertyGroup> copy;
    const CDbRootScope scope(GetDbRoot(), eWRITEKIND::Client);
    const KW_ACCEPTANCE code = InsertAsClient(NormalizeName(target), &copy);
    if (code <= eKW_ACC_WARNING)
    {
        CopyContents(*original, *copy);
    }
    return code;
}

KW_ACCEPTANCE CDbPgMapBase::SetActive(const QString& name)
{
    return m_pActiveKey->Set(name);
}

INT32 CDbPgMapBase::GetCount() const
{
    const CLockGuard lock(eACCESS_READ);
    return static_cast<INT32>(m_items.size());
}

QStringList CDbPgMapBase::GetNames() const
{
    const CLockGuard lock(eACCESS_READ);
    QStringList names;
    for (const auto& [key, name] : m_namesByKey)
    {
        names.append(name);
    }
    return names;
}

bool CDbPgMapBase::IsItem(const QString& name) const
{
    return ItemByName(name) != nullptr;
}

bool CDbPgMapBase::IsItem(INT32 numericKey) const
{
    return ItemByKey(numericKey) != nullptr;
}

CDbPropertyGroup* CDbPgMapBase::ItemByName(QStringView name) const
{
    const CLockGuard lock(eACCESS_READ);
    const auto found = m_items.find(Canonical(name.toString()));
    return found == m_items.end() ? nullptr : found->second.group.get();
}

CDbPropertyGroup* CDbPgMapBase::ItemByKey(INT32 numericKey) const
{
    const CLockGuard lock(eACCESS_READ);
    const auto found = m_namesByKey.find(numericKey);
    return found == m_namesByKey.end() ? nullptr : ItemByName(found->second);
}

const CDbPgMapBase::t_Item* CDbPgMapBase::Lookup(const CDbPropertyGroup& item) const
{
    const auto found = m_items.find(item.NodeName());
    return found != m_items.end() && found->second.group.get() == &item ? &found->second : nullptr;
}

INT32 CDbPgMapBase::NumericKeyOf(const CDbPropertyGroup& item) const
{
    const CLockGuard lock(eACCESS_READ);
    const t_Item* const entry = Lookup(item);
    return entry != nullptr ? entry->numericKey : -1;
}

QString CDbPgMapBase::DisplayNameOf(const CDbPropertyGroup& item) const
{
    const CLockGuard lock(eACCESS_READ);
    const t_Item* const entry = Lookup(item);
    return entry != nullptr ? entry->displayName : QString();
}

INT32 CDbPgMapBase::PositionOf(const CDbPropertyGroup& item) const
{
    const CLockGuard lock(eACCESS_READ);
    const auto found = m_namesByKey.find(NumericKeyOf(item));
    return found == m_namesByKey.end()
               ? -1
               : static_cast<INT32>(std::distance(m_namesByKey.begin(), found));
}

std::shared_ptr<IKWMapItem> CDbPgMapBase::ShareMapItem(CDbPropertyGroup* item)
{
    if (item == nullptr)
    {
        return nullptr;
    }
    if (!item->MapItemHandle())
    {
        item->MapItemHandle() = std::make_unique<CFIMMapItem>(*item);
    }
    return {item->shared_from_this(), item->MapItemHandle().get()};
}

std::shared_ptr<IKWMapItem> CDbPgMapBase::ShareMapItem(const QString& name) const
{
    const CLockGuard lock;
    return ShareMapItem(ItemByName(name));
}

std::shared_ptr<IKWMapItem> CDbPgMapBase::ShareMapItem(INT32 numericKey) const
{
    const CLockGuard lock;
    return ShareMapItem(ItemByKey(numericKey));
}

INT32 CDbPgMapBase::LowestFreeKey() const
{
    INT32 key = 0;
    if (!m_namesByKey.empty() && m_namesByKey.rbegin()->first == GetCount() - 1)
    {
        return GetCount(); // no gap; filling a map must not look through it for each item
    }
    for (auto entry = m_namesByKey.begin(); entry != m_namesByKey.end() && entry->first == key;
         ++entry)
    {
        ++key;
    }
    return key;
}

void CDbPgMapBase::SetNamePattern(const QString& pattern)
{
    const CLockGuard lock;
    m_namePattern = pattern;
    m_lowestNumber = 1;
}

QString CDbPgMapBase::CreateUniqueName() const
{
    const CLockGuard lock(eACCESS_READ);
    const QString pattern = m_namePattern.contains(QLatin1String("%1"))
                                ? m_namePattern
                                : m_namePattern + QLatin1String("%1");
    QString name = pattern.arg(m_lowestNumber);
    while (IsItem(name))
    {
        name = pattern.arg(++m_lowestNumber);
    }
    return name;
}

QString CDbPgMapBase::NormalizeName(const QString& name)
{
    return Canonical(name.simplified());
}

bool CDbPgMapBase::IsNameValid(const QString& name)
{
    const QString canonical = Canonical(name);
    const auto isForbidden = [](QChar c) { return c == u'/' || c == u'[' || c == u']'; };
    const auto isCharacter = [](QChar c) { return !c.isLowSurrogate(); };
    const auto length = std::count_if(canonical.begin(), canonical.end(), isCharacter);
    return length > 0 && length <= kMaxNameLength && canonical == NormalizeName(canonical) &&
           CDbPropString::IsSavable(canonical) &&
           std::none_of(canonical.begin(), canonical.end(), isForbidden);
}

std::shared_ptr<IDbGroup> CDbPgMapBase::GetItemByPosition(INT32 position) const
{
    const CLockGuard lock(eACCESS_READ);
    if (position < 0 || position >= GetCount())
    {
        return nullptr;
    }
    return ItemByName(std::next(m_namesByKey.begin(), position)->second)->ShareGroup();
}

void CDbPgMapBase::VisitItems(const std::function<void(CDbPropertyGroup&)>& visit) const
{
    for (const auto& [key, name] : m_namesByKey)
    {
        visit(*m_items.at(name).group);
    }
}

/** A map counts like any group; the override is where a map that keeps items elsewhere hooks in. */
void CDbPgMapBase::IncChangeCounter()
{
    CDbContainerBase::IncChangeCounter();
}
