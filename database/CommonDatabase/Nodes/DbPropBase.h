// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Couplings/DbCouplings.h"
#include "CommonDatabase/History/DbHistory.h"
#include "DbObject.h"
#include "IKWProperties.h"
#include "LazyHandle.h"
#include "LockManager.h"

#include <QVariant>
#include <atomic>
#include <initializer_list>

class CDbPropBaseHist;

/** What of a result the acquisition delivers. */
enum class eMEASURED : UINT8
{
    Nothing, ///< it is computed, or tells a state
    Reading, ///< its value: without a delivery there is none
    Count    ///< how much of it there is: without a delivery nothing
};

/**
 * Base of every property, and the one way to write: every change of every property passes
 * WriteValue, whatever its kind and whoever asks. The steps: access → validation → unchanged? →
 * PrePropertySet of the group → history → store → validity → change counters → hook of the group
 * → what depends on it → does a client's value still stand? A refusal at any step leaves value,
 * limits, counters and history alone.
 *
 * A property of a concrete kind adds what its value type needs: Validate, Store, GetValue, its
 * history record, its texts.
 */
class CDbPropBase : public CDbNode<IDbProperty>
{
public:
    ~CDbPropBase() override;

    /** The pipeline. Codes: those of IKWNumericProperty::Set and its siblings. */
    KW_ACCEPTANCE WriteValue(CDbValue value, eWRITEKIND kind);
    virtual CDbValue GetValue() const = 0;
    virtual CDbValue GetDefaultValue() const = 0;
    /** Takes over the value of another property of the same kind, as an internal write. */
    KW_ACCEPTANCE RestoreValue(const CDbPropBase& other);
    /** Back to the default; limits follow. */
    KW_ACCEPTANCE WriteDefault();
    /** The same as a client write. */
    KW_ACCEPTANCE SetToDefault() override;
    KW_ACCEPTANCE SetText(const QString& text) override;

    KW_VALIDITY GetValidity() const override { return m_validity.load(std::memory_order_acquire); }
    KW_ACCEPTANCE SetValidity(KW_VALIDITY validity);
    void SetAvailability(KW_AVAILABILITY availability) override;

    /** The only values that the property takes, in stepping order; empty for no such list.
        Numbers must be numbers, texts texts; an entry of another kind never matches. */
    const QVariantList& GetValueList() const;
    void DeclareValueList(std::initializer_list<QVariant> values);
    void DeclareValueList(const QVariantList& values);
    /** The entries of the list that can be taken now, bit 0 for the first one; those behind the
        64th always can. Guarded by the tree's lock. */
    UINT64 GetOffered() const { return m_valueList ? m_valueList->offered : kAllOffered; }

    /** A secret's value is kept out of everything that is shown, reports included. */
    void DeclareSecret() { m_secret = true; }
    bool IsSecret() const { return m_secret; }

    /** Any write of the value that stands runs the rules and what depends on the property, too. */
    void SetForceDependencies(bool force) { m_forceDependencies = force; }
    /** The same for writes of clients alone: confirming what stands is a choice. The model says so
       by `confirm = true`. Neither counts a change of its own. */
    void DeclareConfirm() { m_confirm = true; }
    /** What the acquisition delivers: a reading is invalid until it does, a count at its default.
        Declaration, before the tree is complete. */
    void DeclareMeasured(eMEASURED measured);
    /** As if nothing had been delivered, since what it was measured with has changed. Nothing for
        what is not measured. */
    void DropMeasured();

    /** Drops references to other nodes; called before the owning group goes. */
    virtual void ReleaseReferences() {}

    /** Adds a record to the step that holds the present state as the old one. */
    virtual void MakeNewHistValueEntry(CDbUndoStep& step) = 0;
    /** Gives the record the present state as the new one; false when it is the old one. */
    virtual bool FinishNewHistValueEntry(CDbPropBaseHist& record) const = 0;
    /** Restore the record's old or new state whole: value, limits, validity, availability. */
    void RollbackValue(const CDbPropBaseHist& record);
    void RedoValue(const CDbPropBaseHist& record);
    /** Internal writes of a recorded value, and of another property's value. */
    KW_ACCEPTANCE CloneHistoryData(const CDbPropBaseHist& record, bool newValue);
    KW_ACCEPTANCE ClonePropData(const CDbPropBase& source);
    /** Step of the root that already holds a record of this property. */
    UINT32 GetRecordedStep() const { return m_recordedStep; }
    void SetRecordedStep(UINT32 step) { m_recordedStep = step; }

    KW_NODE_KIND GetKind() const override { return eKW_NODE_PROPERTY; }
    QString GetMinText() const override { return QStringLiteral(""); }
    QString GetMaxText() const override { return QStringLiteral(""); }
    QString GetStepText() const override { return QStringLiteral(""); }
    QStringList GetValueTexts() const override;
    const CEnumNameInfo* GetEnumNameInfo() const override { return nullptr; }
    KW_UNIT GetUnitCode() const override;
    KW_ACCEPTANCE IncDec(INT32 steps) override;
    std::shared_ptr<IKWPropertyBase> GetHandle() override;
    std::shared_ptr<IDbProperty> ShareProperty();

    /** The handle (LazyHandle.h), made on the first call and kept. */
    IKWPropertyBase* EnsureFIM();

    QString GetXMLElementName() const override;
    bool SerializeProp(CDbSettingsWriter& writer) const override;
    void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall) override;

    /** The user's value where something holds it back; a null text where it stands. */
    virtual QString GetWishText() const { return QString(); }

    /** Reads a text as a candidate for WriteValue; eKW_ACC_BAD_TEXT and siblings. */
    virtual KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const = 0;

protected:
    CDbPropBase() = default;

    /** Checks a candidate and may round or bound it (code 1). */
    virtual KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const = 0;
    /** Takes a validated value. Kinds whose limits follow the value widen them here. */
    virtual void Store(const CDbValue& value, eWRITEKIND kind) = 0;
    /** Whether this validated value is the present one. */
    virtual bool Stands(const CDbValue& value) const { return value == GetValue(); }
    /** Whether a write of it would change nothing. */
    virtual bool IsStored(const CDbValue& value) const { return Stands(value); }
    virtual void LoadState(const CDbPropBaseHist& record, bool newState) = 0;
    /** Makes the handle of the kind in its place. */
    virtual void CreateFIM(CHandlePlace<IKWPropertyBase>& place) = 0;
    /** Takes the user's value of a file; what is none of the kind is passed over. */
    virtual void RestoreWish(QStringView /*text*/) {}
    /** Texts of value-list entries. */
    virtual QString ToText(const QVariant& entry) const { return entry.toString(); }

    /** Whether a client may write now, in the tree of this root; `ofResults` for what it may set of
        a result, too, such as how it is shown. */
    KW_ACCEPTANCE CheckAccess(const CDbPgRoot* root, bool ofResults = false) const;
    /** Writes a result that the acquisition delivers. */
    KW_ACCEPTANCE WriteResult(CDbValue value);

    /** What every kind records beside its own state. */
    struct t_CommonState
    {
        // Small, so that the records of a step with eight dependants fit the memory that it keeps.
        KW_VALIDITY validity : 8;
        KW_AVAILABILITY availability : 8;
        bool operator==(const t_CommonState&) const = default;
    };
    static constexpr UINT64 kAllOffered = ~UINT64{0};
    /** Without a list nothing. */
    void SetOffered(UINT64 offered);
    t_CommonState GetCommonState() const { return {GetValidity(), GetCurrentAvailability()}; }
    void SetCommonState(const t_CommonState& state);

private:
    KW_ACCEPTANCE Take(const CDbValue& value, eWRITEKIND kind, CDbPgRoot* root);
    KW_ACCEPTANCE Confirm(eWRITEKIND kind, CDbPgRoot* root);
    KW_ACCEPTANCE RunHook(eWRITEKIND kind, CDbPgRoot* root);
    KW_ACCEPTANCE RunRows(CDbPropertyGroup& group, UINT8 causes);
    KW_ACCEPTANCE RunFollowers(eCAUSE cause, CDbPgRoot* root);
    void RestoreState(const CDbPropBaseHist& record, bool newState);

    std::atomic<KW_VALIDITY> m_validity{eKW_VALIDITY_VALID};
    bool m_forceDependencies = false;
    bool m_confirm = false;
    bool m_secret = false;
    eMEASURED m_measured = eMEASURED::Nothing;
    std::atomic<bool> m_hasFim{false};
    UINT32 m_recordedStep = 0;
    struct t_ValueList
    {
        QVariantList entries;
        UINT64 offered = kAllOffered;
    };
    std::unique_ptr<t_ValueList> m_valueList;
    CHandlePlace<IKWPropertyBase> m_fim;
};

/** The state of one property before and after a step; the property's kind says what that holds. */
class CDbPropBaseHist : public CDbHistRecord
{
public:
    explicit CDbPropBaseHist(CDbPropBase& property);
    ~CDbPropBaseHist() override;

    QString GetText() const override;

    /** The recorded value, old or new, as a variant. */
    virtual CDbValue GetValue(bool newValue) const = 0;

protected:
    bool DoFinish() override;
    void DoUndo() override;
    void DoRedo() override;

private:
    std::shared_ptr<CDbPropBase> m_property;
};

/** The record of a property kind whose state is a value type TState with operator==. */
template <typename TState>
class CDbPropHist : public CDbPropBaseHist
{
public:
    CDbPropHist(CDbPropBase& property, TState before)
        : CDbPropBaseHist(property), m_before(std::move(before))
    {
    }
    /** Takes the new state; false when it is the old one. */
    bool Complete(TState after)
    {
        m_after = std::move(after);
        return !(m_before == m_after);
    }
    CDbValue GetValue(bool newValue) const override { return State(newValue).AsValue(); }
    std::size_t GetHeldBytes() const override
    {
        if constexpr (requires { m_before.HeldBytes(); })
        {
            // The state after the step is the tree's, or the next record's.
            return sizeof(*this) + m_before.HeldBytes();
        }
        return sizeof(*this);
    }
    const TState& State(bool newState) const { return newState ? m_after : m_before; }

private:
    TState m_before;
    TState m_after{};
};

/**
 * Brackets one change of a property that is not a write of its value (a limit, a validity): takes
 * the lock, opens a scope of the root, records the old state on Touch and counts the change.
 */
class CDbChange
{
public:
    explicit CDbChange(CDbPropBase& property, eWRITEKIND kind = eWRITEKIND::Internal);
    /** May throw as ~CDbRootScope. */
    ~CDbChange() noexcept(false);
    CDbChange(const CDbChange&) = delete;
    CDbChange& operator=(const CDbChange&) = delete;
    /** Call before the state changes. */
    void Touch();

private:
    CLockGuard m_lock;
    CDbPropBase& m_property;
    CDbPgRoot* m_root;
    bool m_touched = false;
};
