// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"
#include "EnumNameInfo.h"

#include <atomic>
#include <initializer_list>

/** An enumeration property by its names and value states, whatever it holds. */
class CDbPropEnumBase : public CDbPropBase
{
public:
    virtual const CEnumNameInfo& GetNameInfo() const = 0;
    /** KW_STEPS_BY_NUMBER of the type. */
    virtual bool StepsByNumber() const = 0;
    const CEnumNameInfo* GetEnumNameInfo() const override { return &GetNameInfo(); }

    QString GetSerialName(INT32 value) const { return GetNameInfo().GetSerialName(value); }
    INT32 GetEnumSize() const { return GetNameInfo().GetEnumSize(); }
    const QString& GetType() const { return GetNameInfo().GetType(); }

    /** Whether a client can select a value now; a value outside the type can not be. */
    KW_VALUE_STATE GetValueState(INT32 value) const;
    bool IsValueEnabled(INT32 value) const
    {
        return GetValueState(value) != eVALUESTATE_NOT_SELECTABLE;
    }
    /** Restrict the selectable values; the present value stays, selectable or not. Refused with
        eKW_ACC_UNKNOWN_VALUE outside the type. */
    KW_ACCEPTANCE EnableValue(INT32 value, bool on);
    /** Recorded and counted, as EnableValue, where it makes a difference. */
    KW_ACCEPTANCE EnableAllValues();
    /** As EnableValue, with all three states. */
    KW_ACCEPTANCE EnableValueInternally(INT32 value, KW_VALUE_STATE state);
    /** Declaration: only these values can be selected. */
    void DeclareEnabledValues(std::initializer_list<INT32> values);
    /** The property becomes available when any value can be selected, else takes `otherwise`. */
    void UpdateAvailability(KW_AVAILABILITY otherwise);

    QStringList GetValueTexts() const override;
    QString GetTypeName() const override { return GetType(); }

protected:
    /** All values, from the lowest step to the highest. */
    std::vector<INT32> StepOrder() const;

    /** One state per value; empty while every value is selectable. */
    using t_States = std::vector<KW_VALUE_STATE>;
    /** Guarded by the tree's lock; empty, or one for each value of the type. */
    t_States m_states;
};

/** An enumeration property handled as an integer. Reading the value never blocks. */
class CDbPropEnumIntAccess : public CDbPropEnumBase
{
public:
    /** Default and initial value; a value outside the type is taken as 0. */
    void DbSetDefault(INT32 value);

    /** Always a value of the type. */
    INT32 GetAsInt() const { return m_value.load(std::memory_order_acquire); }
    INT32 GetDefaultAsInt() const { return m_default; }
    /** Client write: eKW_ACC_UNKNOWN_VALUE, eKW_ACC_NOT_ENABLED. */
    KW_ACCEPTANCE SetAsInt(INT32 value) { return WriteValue(INT64{value}, eWRITEKIND::Client); }
    /** Internal write. A rule may set a value that clients can not select. */
    KW_ACCEPTANCE DbSetAsInt(INT32 value) { return WriteValue(INT64{value}, eWRITEKIND::Internal); }
    KW_ACCEPTANCE SetResultAsInt(INT32 value) { return WriteResult(INT64{value}); }
    /** What a client or a rule set last; the value itself, except where FollowWish had to take
        another. Guarded by the tree's lock. */
    INT32 GetUserValueAsInt() const { return m_userValue; }
    /**
     * For rules, after they have said what can be selected: the value becomes the user's again
     * where that can be selected, else it stays where it can be itself, else it becomes
     * `otherwise`. An automatic write, which leaves the user's value alone: whatever comes and
     * goes, the choice returns.
     */
    KW_ACCEPTANCE FollowWish(INT32 otherwise);
    /** Takes a value for the time being: automatic, so that the user's value stays what it is. */
    KW_ACCEPTANCE SetForNow(INT32 value);
    /** Over the selectable values in the order of steps; stops at the ends with code 1. */
    KW_ACCEPTANCE IncDec(INT32 steps) override;

    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;
    CDbValue GetValue() const override { return INT64{GetAsInt()}; }
    CDbValue GetDefaultValue() const override { return INT64{m_default}; }
    QString GetText() const override;
    QString GetDefaultText() const override;
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;
    QString GetWishText() const override;

    struct t_State
    {
        CDbPropBase::t_CommonState common;
        INT32 value;
        INT32 userValue;
        std::vector<KW_VALUE_STATE> states;
        CDbValue AsValue() const { return INT64{value}; }
        bool operator==(const t_State&) const = default;
    };

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    bool IsStored(const CDbValue& value) const override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override = 0;
    void RestoreWish(QStringView text) override;
    /** Serial name; the number where a value has none. */
    QString TextOf(INT32 value) const;

private:
    t_State GetState() const { return {GetCommonState(), GetAsInt(), m_userValue, m_states}; }

    std::atomic<INT32> m_value{0};
    // Half words keep 600 properties as small as they were; types have some 400 values at most.
    INT16 m_userValue = 0; ///< a value of the type
    INT16 m_default = 0;   ///< does not move once the tree is complete
};

/** History record of a CDbPropEnum<T>: one for all types, as the value is an integer. */
template <typename T>
using CDbPropEnumHist = CDbPropHist<CDbPropEnumIntAccess::t_State>;

/**
 * An enumeration property of type T; its name table is GetStaticEnumNameInfo<T>(). What a type adds
 * to the base is compiled once, beside its name table (DbPropEnumType.h): a source that holds or
 * makes such a property needs no more of T than "enum T : INT32;".
 */
template <typename T>
class CDbPropEnum : public CDbPropEnumIntAccess
{
public:
    CDbPropEnum();
    ~CDbPropEnum() override;

    /** Without the lock. */
    T Get() const { return static_cast<T>(GetAsInt()); }
    T GetDefault() const { return static_cast<T>(GetDefaultAsInt()); }
    KW_ACCEPTANCE Set(T value) { return SetAsInt(value); }
    KW_ACCEPTANCE DbSet(T value) { return DbSetAsInt(value); }

    const CEnumNameInfo& GetNameInfo() const override;
    bool StepsByNumber() const override;
    std::shared_ptr<IKWEnumProperty<T>> GetFIMPointer()
    {
        return {shared_from_this(), static_cast<IKWEnumProperty<T>*>(EnsureFIM())};
    }

protected:
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;
};
