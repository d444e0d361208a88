// SPDX-License-Identifier: MIT
#include "DbPropBase.h"

#include "CommonDatabase/Files/DbSettings.h"
#include "DbPgRoot.h"
#include "KWEnumerationsUnits.h"
#include "KWTexts.h"
#include "LockManager.h"

CDbPropBase::~CDbPropBase() = default;

KW_ACCEPTANCE CDbPropBase::WriteValue(CDbValue value, eWRITEKIND kind)
{
    const CLockGuard lock;
    CDbPgRoot* const root = GetDbRoot();
    if (IsClientWrite(kind))
    {
        if (const KW_ACCEPTANCE access = CheckAccess(root); access > eKW_ACC_WARNING)
        {
            return access;
        }
    }
    const KW_ACCEPTANCE code = Validate(value, kind);
    if (code > eKW_ACC_WARNING)
    {
        return code;
    }
    const bool unchanged = IsStored(value) && GetValidity() == eKW_VALIDITY_VALID;
    CDbPropertyGroup* const group = GetParent();
    if (unchanged && group != nullptr)
    {
        group->OnPropertyUnchanged(this);
    }
    const bool isClient = IsClientWrite(kind);
    if (unchanged && !m_forceDependencies && !(m_confirm && isClient))
    {
        return code;
    }
    const KW_ACCEPTANCE taken = unchanged ? Confirm(kind, root) : Take(value, kind, root);
    // Only now have all rules run that could move the value or take it back.
    return isClient && !Stands(value) ? static_cast<KW_ACCEPTANCE>(eKW_ACC_WARNING)
                                      : std::max(code, taken);
}

KW_ACCEPTANCE CDbPropBase::Take(const CDbValue& value, eWRITEKIND kind, CDbPgRoot* root)
{
    const CDbRootScope scope(root, kind);
    CDbPropertyGroup* const group = GetParent();
    if (group != nullptr)
    {
        group->PrePropertySet(this);
    }
    scope.Record(*this);
    Store(value, kind);
    m_validity.store(eKW_VALIDITY_VALID, std::memory_order_release);
    scope.Changed(*this);
    return RunHook(kind, root);
}

/** What stands was written again: rules and dependants run, but there is no change to count. */
KW_ACCEPTANCE CDbPropBase::Confirm(eWRITEKIND kind, CDbPgRoot* root)
{
    const CDbRootScope scope(root, kind);
    if (root != nullptr)
    {
        root->MarkDependants(*this);
    }
    return RunHook(kind, root);
}

KW_ACCEPTANCE CDbPropBase::RunHook(eWRITEKIND kind, CDbPgRoot* root)
{
    CDbPropertyGroup* const group = GetParent();
    if (group == nullptr)
    {
        return eKW_ACC_OK;
    }
    switch (kind)
    {
    case eWRITEKIND::Client:
    case eWRITEKIND::Wish:
    {
        // The value stands whatever the rules answer: a refusal further down was reported there
        // and leaves a warning here.
        const KW_ACCEPTANCE rows = RunRows(*group, eCAUSE::On | eCAUSE::OnAny);
        const KW_ACCEPTANCE own = std::max(rows, group->OnPropertySet(this));
        const KW_ACCEPTANCE others = RunFollowers(eCAUSE::On, root);
        return std::min<KW_ACCEPTANCE>(std::max(own, others), eKW_ACC_WARNING);
    }
    case eWRITEKIND::Internal:
        RunRows(*group, static_cast<UINT8>(eCAUSE::Delivered));
        group->OnPropertyDbSet(this);
        RunFollowers(eCAUSE::Delivered, root);
        break;
    case eWRITEKIND::Auto:
        group->OnPropertyAutoSet(this);
        break;
    default:
        break;
    }
    return eKW_ACC_OK;
}

/** Rows of the own group that this property starts. */
KW_ACCEPTANCE CDbPropBase::RunRows(CDbPropertyGroup& group, UINT8 causes)
{
    return group.HasRows(causes) ? group.RunRows(causes, *this, this)
                                 : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

/** Rows of other groups that follow this property at once. */
KW_ACCEPTANCE CDbPropBase::RunFollowers(eCAUSE cause, CDbPgRoot* root)
{
    return root != nullptr && HasCause(GetFollowed(), cause)
               ? root->GetDependencies().RunFollowers(cause, *this, this)
               : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

KW_ACCEPTANCE CDbPropBase::CheckAccess(const CDbPgRoot* root, bool ofResults) const
{
    if (root == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (!ofResults && GetObjectType() == eOBJECTTYPE_RESULT)
    {
        return eKW_ACC_READ_ONLY;
    }
    if (!root->MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    switch (AvailabilityUpToRoot())
    {
    case eAVAILABILITY_AVAILABLE:
        return eKW_ACC_OK;
    case eAVAILABILITY_READ_ONLY:
        return eKW_ACC_READ_ONLY;
    default:
        return eKW_ACC_NOT_AVAILABLE;
    }
}

KW_ACCEPTANCE CDbPropBase::WriteResult(CDbValue value)
{
    const CLockGuard lock;
    if (GetDbRoot() == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (GetObjectType() != eOBJECTTYPE_RESULT)
    {
        return eKW_ACC_READ_ONLY;
    }
    return WriteValue(std::move(value), eWRITEKIND::Internal);
}

KW_ACCEPTANCE CDbPropBase::RestoreValue(const CDbPropBase& other)
{
    const CLockGuard lock;
    return GetTypeName() == other.GetTypeName() ? WriteValue(other.GetValue(), eWRITEKIND::Internal)
                                                : static_cast<KW_ACCEPTANCE>(eKW_ACC_WRONG_KIND);
}

KW_ACCEPTANCE CDbPropBase::WriteDefault()
{
    return WriteValue(GetDefaultValue(), eWRITEKIND::Default);
}

KW_ACCEPTANCE CDbPropBase::SetToDefault()
{
    return WriteValue(GetDefaultValue(), eWRITEKIND::Client);
}

KW_ACCEPTANCE CDbPropBase::SetText(const QString& text)
{
    CDbValue value;
    const KW_ACCEPTANCE code = ParseText(text, value);
    return code > eKW_ACC_WARNING ? code : WriteValue(std::move(value), eWRITEKIND::Client);
}

KW_ACCEPTANCE CDbPropBase::SetValidity(KW_VALIDITY validity)
{
    CDbChange change(*this);
    if (validity != GetValidity())
    {
        change.Touch();
        m_validity.store(validity, std::memory_order_release);
    }
    return eKW_ACC_OK;
}

void CDbPropBase::SetAvailability(KW_AVAILABILITY availability)
{
    CDbChange change(*this);
    if (availability != GetCurrentAvailability())
    {
        change.Touch();
        CDbObject::SetAvailability(availability);
    }
}

const QVariantList& CDbPropBase::GetValueList() const
{
    static const QVariantList none;
    return m_valueList ? *m_valueList : none;
}

void CDbPropBase::DeclareValueList(std::initializer_list<QVariant> values)
{
    auto list = values.size() > 0 ? std::make_unique<QVariantList>() : nullptr;
    for (const QVariant& value : values)
    {
        list->append(value); // the list's own constructor does not look whether it got memory
    }
    m_valueList = std::move(list);
}

QStringList CDbPropBase::GetValueTexts() const
{
    const CLockGuard lock(eACCESS_READ);
    QStringList texts;
    for (const QVariant& entry : GetValueList())
    {
        texts.append(ToText(entry));
    }
    return texts;
}

KW_UNIT CDbPropBase::GetUnitCode() const
{
    return eKW_UNIT_NOT_DEFINED;
}

KW_ACCEPTANCE CDbPropBase::IncDec(INT32 /*steps*/)
{
    return eKW_ACC_WRONG_KIND;
}

void CDbPropBase::RollbackValue(const CDbPropBaseHist& record)
{
    RestoreState(record, false);
}

void CDbPropBase::RedoValue(const CDbPropBaseHist& record)
{
    RestoreState(record, true);
}

void CDbPropBase::RestoreState(const CDbPropBaseHist& record, bool newState)
{
    const CLockGuard lock;
    LoadState(record, newState);
    if (CDbPropertyGroup* const group = GetParent())
    {
        group->IncChangeCounter();
    }
}

KW_ACCEPTANCE CDbPropBase::CloneHistoryData(const CDbPropBaseHist& record, bool newValue)
{
    return WriteValue(record.GetValue(newValue), eWRITEKIND::Internal);
}

KW_ACCEPTANCE CDbPropBase::ClonePropData(const CDbPropBase& source)
{
    return RestoreValue(source);
}

void CDbPropBase::SetCommonState(const t_CommonState& state)
{
    m_validity.store(state.validity, std::memory_order_release);
    CDbObject::SetAvailability(state.availability);
}

IKWPropertyBase* CDbPropBase::EnsureFIM()
{
    return m_fim.Get([this] { return CreateFIM(); });
}

std::shared_ptr<IKWPropertyBase> CDbPropBase::GetHandle()
{
    return {shared_from_this(), EnsureFIM()};
}

std::shared_ptr<IDbProperty> CDbPropBase::ShareProperty()
{
    return {shared_from_this(), this};
}

QString CDbPropBase::GetXMLElementName() const
{
    return QStringLiteral("Prop");
}

bool CDbPropBase::SerializeProp(CDbSettingsWriter& writer) const
{
    writer.Attribute(KW_SETTINGS_VALUE, GetText());
    if (m_secret)
    {
        writer.NoteSecret();
    }
    return writer.IsGood();
}

void CDbPropBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    const QStringView text = element.Attribute(KW_SETTINGS_VALUE);
    CDbValue value;
    KW_ACCEPTANCE code = text.isNull() ? static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_TEXT)
                                       : ParseText(text.toString(), value);
    if (code <= eKW_ACC_WARNING)
    {
        code = WriteValue(std::move(value), eWRITEKIND::Recall);
    }
    if (code > eKW_ACC_WARNING)
    {
        const QString shown = m_secret ? KW_GetSecretText() : CDbRecall::Shortened(text.toString());
        recall.Skip(
            *this,
            QStringLiteral("Value \"%1\" skipped (%2)").arg(shown, KW_GetAcceptanceText(code)));
        return;
    }
    recall.Took(*this);
}

CDbChange::CDbChange(CDbPropBase& property, eWRITEKIND kind) : m_property(property)
{
    m_root = property.GetDbRoot();
    if (m_root != nullptr)
    {
        m_root->BeginScope(kind);
    }
}

namespace
{
/** Ends a scope of the root, also where what comes before runs out of memory. */
struct t_ScopeEnd
{
    CDbPgRoot* root;
    ~t_ScopeEnd() noexcept(false)
    {
        if (root != nullptr)
        {
            root->EndScope();
        }
    }
};
} // namespace

CDbChange::~CDbChange() noexcept(false)
{
    const t_ScopeEnd scope{m_root};
    if (m_touched && m_root != nullptr)
    {
        m_root->Changed(m_property);
    }
    else if (m_touched && m_property.GetParent() != nullptr)
    {
        m_property.GetParent()->IncChangeCounter();
    }
}

void CDbChange::Touch()
{
    if (m_root != nullptr && !m_touched)
    {
        m_root->Record(m_property);
    }
    m_touched = true;
}
