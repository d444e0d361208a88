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

    QString GetName(INT32 value) const { return GetNameInfo().GetName(value); }
    QString GetRemoteName(INT32 value) const { return GetNameInfo().GetRemoteName(value); }
    QString GetSerialName(INT32 value) const { return GetNameInfo().GetSerialName(value); }
    QString GetShortName(INT32 value) const { return GetNameInfo().GetShortName(value); }
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
    t_States m_states;
};

/** An enumeration property handled as an integer. Reading the value never blocks. */
class CDbPropEnumIntAccess : public CDbPropEnumBase
{
public:
    /** Default and initial value; a value outside the type is taken as 0. */
    void DbSetDefault(INT32 value);

    INT32 GetAsInt() const { return m_value.load(std::memory_order_acquire); }
    INT32 GetDefaultAsInt() const { return m_default; }
    /** Client write: eKW_ACC_UNKNOWN_VALUE, eKW_ACC_NOT_ENABLED. */
    KW_ACCEPTANCE SetAsInt(INT32 value) { return WriteValue(INT64{value}, eWRITEKIND::Client); }
    /** Internal write. A rule may set a value that clients can not select. */
    KW_ACCEPTANCE DbSetAsInt(INT32 value) { return WriteValue(INT64{value}, eWRITEKIND::Internal); }
    KW_ACCEPTANCE SetResultAsInt(INT32 value) { return WriteResult(INT64{value}); }
    /** Over the selectable values in the order of steps; stops at the ends with code 1. */
    KW_ACCEPTANCE IncDec(INT32 steps) override;

    CDbValue GetValue() const override { return INT64{GetAsInt()}; }
    CDbValue GetDefaultValue() const override { return INT64{m_default}; }
    QString GetText() const override;
    QString GetDefaultText() const override;
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;

    struct t_State
    {
        CDbPropBase::t_CommonState common;
        INT32 value;
        std::vector<KW_VALUE_STATE> states;
        CDbValue AsValue() const { return INT64{value}; }
        bool operator==(const t_State&) const = default;
    };

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void SaveState(CDbPropBaseHist& record, bool newState) const override;
    std::unique_ptr<IKWPropertyBase> CreateFIM() override = 0;
    /** Serial name; the number where a value has none. */
    QString TextOf(INT32 value) const;

private:
    std::atomic<INT32> m_value{0};
    INT32 m_default = 0;
};

template <typename T>
class CDbPropEnum;

/** History record of a CDbPropEnum<T>. */
template <typename T>
class CDbPropEnumHist : public CDbPropHist<CDbPropEnumIntAccess::t_State>
{
public:
    using CDbPropHist::CDbPropHist;
    /** The old state is the property's present one. */
    void Init(const CDbPropEnum<T>& property) { property.SaveOldState(*this); }
};

template <typename T>
class CFIMEnum;

/** An enumeration property of type T; its name table is GetStaticEnumNameInfo<T>(). */
template <typename T>
class CDbPropEnum : public CDbPropEnumIntAccess
{
public:
    T Get() const { return static_cast<T>(GetAsInt()); }
    T GetDefault() const { return static_cast<T>(GetDefaultAsInt()); }
    KW_ACCEPTANCE Set(T value) { return SetAsInt(value); }
    KW_ACCEPTANCE DbSet(T value) { return DbSetAsInt(value); }

    const CEnumNameInfo& GetNameInfo() const override { return GetStaticEnumNameInfo<T>(); }
    bool StepsByNumber() const override { return KW_STEPS_BY_NUMBER<T>; }
    std::unique_ptr<CDbPropBaseHist> MakeNewHistValueEntry() override
    {
        auto record = std::make_unique<CDbPropEnumHist<T>>(*this);
        record->Init(*this);
        return record;
    }
    void SaveOldState(CDbPropEnumHist<T>& record) const { SaveState(record, false); }
    std::shared_ptr<IKWEnumProperty<T>> GetFIMPointer()
    {
        return {shared_from_this(), static_cast<IKWEnumProperty<T>*>(EnsureFIM())};
    }

protected:
    std::unique_ptr<IKWPropertyBase> CreateFIM() override
    {
        return std::make_unique<CFIMEnum<T>>(*this);
    }
};

/** Handle of a CDbPropEnum<T>. */
template <typename T>
class CFIMEnum final : public IKWEnumProperty<T>
{
public:
    explicit CFIMEnum(CDbPropEnum<T>& node) : m_node(node) {}
    INT32 GetAsInt() const override { return m_node.GetAsInt(); }
    KW_ACCEPTANCE SetAsInt(INT32 value) override { return m_node.SetAsInt(value); }
    const CEnumNameInfo& GetEnumNameInfo() const override { return m_node.GetNameInfo(); }
    KW_VALUE_STATE GetValueState(INT32 v) const override { return m_node.GetValueState(v); }
    KW_ACCEPTANCE IncDec(INT32 steps) override { return m_node.IncDec(steps); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }
    T Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(T value) override { return m_node.SetAsInt(value); }
    T GetDefault() const override { return m_node.GetDefault(); }
    bool IsValueEnabled(T value) const override { return m_node.IsValueEnabled(value); }
    KW_ACCEPTANCE SetResult(T value) override { return m_node.SetResultAsInt(value); }

private:
    CDbPropEnum<T>& m_node;
};
