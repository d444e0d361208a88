// SPDX-License-Identifier: MIT
// What every write of a property, every run of an action and every other change passes: the
// members of nodes that ask something of the root. Access first, then a scope of the root, which
// records and counts, then the rules, then what follows.
#include "DbPgRoot.h"
#include "LockManager.h"

#include <algorithm>

// A write of a property ---------------------------------------------------------------------------

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

void CDbPropBase::RestoreState(const CDbPropBaseHist& record, bool newState)
{
    const CLockGuard lock;
    LoadState(record, newState);
    if (CDbPropertyGroup* const group = GetParent())
    {
        group->IncChangeCounter();
    }
}

// Any other change of a property ------------------------------------------------------------------

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

// A run of an action ------------------------------------------------------------------------------

KW_ACCEPTANCE CDbFunction::CheckAccess() const
{
    const CDbPgRoot* const root = GetDbRoot();
    if (root == nullptr)
    {
        return eKW_ACC_DETACHED;
    }
    if (!root->MayWrite())
    {
        return eKW_ACC_NO_WRITE_ACCESS;
    }
    return GetAvailability() == eAVAILABILITY_AVAILABLE ? eKW_ACC_OK : eKW_ACC_NOT_AVAILABLE;
}

void CDbFunction::CountRun()
{
    m_runs.IncChangeCounter();
    GetParent()->IncChangeCounter();
}

std::optional<KW_ACCEPTANCE> CDbFunction::RunOnFile()
{
    // Without the lock another thread may let the tree go: it stays until this has ended.
    std::shared_ptr<CDbObject> keptRoot;
    std::shared_ptr<CDbObject> keptGroup;
    CDbPropertyGroup* group = nullptr;
    {
        const CLockGuard lock;
        if (const KW_ACCEPTANCE access = CheckAccess(); access > eKW_ACC_WARNING)
        {
            return access;
        }
        group = GetParent();
        keptGroup = group->weak_from_this().lock();
        keptRoot = GetDbRoot()->weak_from_this().lock();
    }
    const auto code = group->OnFileFunction(this);
    const CLockGuard lock;
    if (code && *code <= eKW_ACC_WARNING && GetParent() != nullptr)
    {
        CountRun();
    }
    return code;
}

/** Rows of other groups run only for what the own group accepts. */
KW_ACCEPTANCE CDbFunction::RunRules(CDbPgRoot& root)
{
    CDbPropertyGroup& group = *GetParent();
    const auto on = static_cast<UINT8>(eCAUSE::On);
    KW_ACCEPTANCE own = group.HasRows(on) ? group.RunRows(on, *this, nullptr) : eKW_ACC_OK;
    if (own <= eKW_ACC_WARNING)
    {
        own = std::max(own, group.OnFunction(this));
    }
    const bool isFollowed = own <= eKW_ACC_WARNING && HasCause(GetFollowed(), eCAUSE::On);
    return isFollowed
               ? std::max(own, root.GetDependencies().RunFollowers(eCAUSE::On, *this, nullptr))
               : own;
}

KW_ACCEPTANCE CDbFunction::Order(KW_OP_EVENT event)
{
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckAccess(); access > eKW_ACC_WARNING)
    {
        return access;
    }
    CDbPgRoot* const root = GetDbRoot();
    const CDbRootScope scope(root, eWRITEKIND::Client);
    root->NameStep(GetPath());
    const KW_ACCEPTANCE code =
        event == eKW_OP_EVENT_START ? RunRules(*root) : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
    if (code <= eKW_ACC_WARNING)
    {
        CountRun();
    }
    return code;
}

// Availability of a group -------------------------------------------------------------------------

/** Availability of a group before and after a step. The group is held weakly: one that is gone for
    good has none to restore, and the root would hold itself. */
class CDbPropertyGroup::CAvailabilityHist final : public CDbHistRecord
{
public:
    explicit CAvailabilityHist(CDbPropertyGroup& group)
        : CDbHistRecord(eOPERATIONTYPE::Availability),
          m_group(std::static_pointer_cast<CDbPropertyGroup>(group.shared_from_this())),
          m_before(group.GetCurrentAvailability()), m_after(m_before)
    {
    }
    std::size_t GetHeldBytes() const override { return sizeof(*this); }
    QString GetText() const override
    {
        const auto group = m_group.lock();
        return group ? group->GetPath() : QStringLiteral("");
    }

protected:
    bool DoFinish() override
    {
        const auto group = m_group.lock();
        m_after = group ? group->GetCurrentAvailability() : m_before;
        return m_before != m_after;
    }
    void DoUndo() override { Restore(m_before); }
    void DoRedo() override { Restore(m_after); }

private:
    void Restore(KW_AVAILABILITY availability)
    {
        if (const auto group = m_group.lock())
        {
            group->StoreAvailability(availability);
        }
    }

    std::weak_ptr<CDbPropertyGroup> m_group;
    KW_AVAILABILITY m_before;
    KW_AVAILABILITY m_after;
};

void CDbPropertyGroup::SetAvailability(KW_AVAILABILITY availability)
{
    const CLockGuard lock;
    if (availability == GetCurrentAvailability())
    {
        return;
    }
    CDbPgRoot* const root = GetDbRoot();
    CDbUndoStep* const step = root != nullptr ? root->GetStep() : nullptr;
    if (step != nullptr && m_recordedStep != root->GetStepId())
    {
        step->Make<CAvailabilityHist>(*this);
        m_recordedStep = root->GetStepId();
    }
    StoreAvailability(availability);
    CRowTrace::NoteChange(*this);
}
