// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"
#include "CommonDatabase/Values/DbUnit.h"

#include <atomic>
#include <limits>
#include <type_traits>

/** What all numeric properties share whatever their type: unit, display format, step modes. */
class CDbPropNumBase : public CDbPropBase
{
public:
    /** Declaration, before the tree is complete: these are read without a lock later on. */
    void DeclareUnit(KW_UNIT unit) { m_unit.SetUnit(unit); }
    /** A rule's change: recorded and counted; eKW_ACC_UNKNOWN_VALUE outside the catalogue. The
        number stays, whatever it meant in the former unit. */
    KW_ACCEPTANCE SetUnit(KW_UNIT unit);
    const CDbUnit& GetDbUnit() const { return m_unit; }
    KW_UNIT GetUnit() const;
    KW_UNIT GetUnitCode() const override { return GetUnit(); }

    void DeclareStepMode(E_STEPMODES mode) { m_stepMode = mode; }
    void DeclareStepBehaviour(E_STEP_BEHAVIOUR behaviour) { m_stepBehaviour = behaviour; }
    /** Above 1; of eSTEPMODE_FACTOR only. */
    void DeclareStepFactor(double factor) { m_stepFactor = factor; }
    void DeclareFormat(E_NUMBERFORMAT format) { m_format = format; }
    /** Digits of hex and binary displays that stand together; 0 for no groups. */
    void DeclareBitGroupSize(INT32 size) { m_bitGroupSize = static_cast<UINT8>(size); }

    E_STEPMODES GetStepMode() const { return m_stepMode; }
    E_STEP_BEHAVIOUR GetStepBehaviour() const { return m_stepBehaviour; }
    double GetStepFactor() const { return m_stepFactor; }
    E_NUMBERFORMAT GetFormat() const { return m_format; }
    INT32 GetBitGroupSize() const { return m_bitGroupSize; }

private:
    double m_stepFactor = 2.0;
    CDbUnit m_unit;
    E_STEPMODES m_stepMode : 8 = eSTEPMODE_LINEAR;
    E_STEP_BEHAVIOUR m_stepBehaviour : 8 = eSTEP_BEHAVIOUR_LIMIT;
    E_NUMBERFORMAT m_format : 8 = eNUMBERFORMAT_DECIMAL;
    UINT8 m_bitGroupSize = 0;
};

/**
 * Numeric property; T is one of INT16, UINT16, INT32, UINT32, INT64, UINT64, double.
 *
 * There are two pairs of limits. The declared ones come from the model and never move: they are
 * the range of the quantity. The present ones (GetMin, GetMax) move inside them as the instrument's
 * state asks, and take the value with them. Files and defaults are checked against the declared
 * limits only, and widen the present ones, because the settings that would move them may still
 * follow.
 *
 * Value, limits, step and wish are read without a lock.
 */
template <typename T>
class CDbPropNum : public CDbPropNumBase
{
public:
    /** The largest finite range of T. */
    static constexpr T kLowest = std::numeric_limits<T>::lowest();
    static constexpr T kHighest = std::numeric_limits<T>::max();

    CDbPropNum();

    // Declaration, before the tree is complete: no notifications.
    /** Default and initial value; a value outside the declared limits is taken as the nearer. */
    void DbSetDefault(T value);
    void DeclareMinAndMax(T min, T max);
    void DeclareStep(T step);
    void DeclareResolution(T resolution) { m_resolution = resolution; }

    T Get() const { return m_value.load(std::memory_order_acquire); }
    T GetNum() const { return Get(); }
    T GetMin() const { return m_min.load(std::memory_order_acquire); }
    T GetMax() const { return m_max.load(std::memory_order_acquire); }
    T GetDefault() const { return m_default; }
    T GetDeclaredMin() const { return m_declaredMin; }
    T GetDeclaredMax() const { return m_declaredMax; }
    T GetStep() const { return m_step.load(std::memory_order_acquire); }
    T GetResolution() const { return m_resolution; }
    /** The last value asked for; differs from Get() while limits hold the value back. */
    T GetUserValue() const { return m_userValue.load(std::memory_order_acquire); }

    /** Client writes: see IKWNumericProperty. */
    KW_ACCEPTANCE Set(T value) { return WriteValue(Carry(value), eWRITEKIND::Client); }
    /** Limits the value first; code 1 where that made a difference. */
    KW_ACCEPTANCE SetLimited(T value);
    /** The wish is stored before the rules run, so that one that settles for less erases it. */
    KW_ACCEPTANCE SetUserValue(T value);
    /** As writes of the present limit, as it is when the lock is there. */
    KW_ACCEPTANCE SetToMin();
    KW_ACCEPTANCE SetToMax();
    KW_ACCEPTANCE Inc() { return IncDec(1); }
    KW_ACCEPTANCE Dec() { return IncDec(-1); }
    /** From the present value; the end is met as the step behaviour says. */
    KW_ACCEPTANCE IncDec(INT32 steps) override;
    /** Internal write, of a rule. */
    KW_ACCEPTANCE DbSet(T value) { return WriteValue(Carry(value), eWRITEKIND::Internal); }
    KW_ACCEPTANCE SetResult(T value) { return WriteResult(Carry(value)); }

    /** Move the present limits; a value outside them moves too, as an automatic write. Refused:
        eKW_ACC_NOT_A_NUMBER, eKW_ACC_LIMITS_CROSSED, eKW_ACC_OUTSIDE_DECLARED,
        eKW_ACC_NOT_IN_VALUE_LIST when no entry of the value list would be left. */
    KW_ACCEPTANCE SetMin(T min);
    KW_ACCEPTANCE SetMax(T max);
    KW_ACCEPTANCE SetMinAndMax(T min, T max);
    /** For rules, of a property with a value list: these entries alone can be taken now (bits as of
        GetOffered). A value that is none of them moves to the nearest one, as an automatic write,
        and what the user chose returns with its entry. Refused: eKW_ACC_NOT_IN_VALUE_LIST when no
        entry would be left. */
    KW_ACCEPTANCE OfferEntries(UINT64 offered);
    /** eKW_ACC_NOT_A_NUMBER unless positive and finite. */
    KW_ACCEPTANCE SetStep(T step);
    KW_ACCEPTANCE SetStepDefault();
    /** 0 for no rounding; eKW_ACC_NOT_A_NUMBER when negative or not finite; code 1 when the present
        value was rounded. */
    KW_ACCEPTANCE SetResolution(T resolution);

    /** The nearest legal value: of the list, else rounded to the resolution, within the limits. */
    T GetNearestLegal(T value) const;

    std::shared_ptr<IKWNumericProperty<T>> GetFIMPointer()
    {
        return {shared_from_this(), static_cast<IKWNumericProperty<T>*>(EnsureFIM())};
    }

    CDbValue GetValue() const override { return Carry(Get()); }
    CDbValue GetDefaultValue() const override { return Carry(m_default); }
    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;
    QString GetTypeName() const override;
    QString GetText() const override;
    QString GetDefaultText() const override;
    QString GetMinText() const override;
    QString GetMaxText() const override;
    QString GetStepText() const override;
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;
    QString GetWishText() const override;

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    bool Stands(const CDbValue& value) const override;
    bool IsStored(const CDbValue& value) const override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;
    QString ToText(const QVariant& entry) const override;
    void RestoreWish(QStringView text) override;

private:
    /** The alternative of CDbValue that carries T. */
    using t_Carrier = std::conditional_t<std::is_same_v<T, double>, double,
                                         std::conditional_t<std::is_signed_v<T>, INT64, UINT64>>;
    struct t_State
    {
        CDbPropBase::t_CommonState common;
        KW_UNIT unit;
        T value;
        T userValue;
        T min;
        T max;
        T step;
        T resolution;
        UINT64 offered;
        CDbValue AsValue() const { return Carry(value); }
        bool operator==(const t_State&) const = default;
    };
    t_State GetState() const
    {
        return {GetCommonState(),
                GetDbUnit().GetUnit(),
                Get(),
                GetUserValue(),
                GetMin(),
                GetMax(),
                GetStep(),
                m_resolution,
                GetOffered()};
    }
    using t_Hist = CDbPropHist<t_State>;

    /** Exact: each type fits its carrier. */
    static CDbValue Carry(T value) { return CDbValue(static_cast<t_Carrier>(value)); }
    static bool IsNumber(T value);
    static T PlainZero(T value);
    /** As it is without a resolution; may lie beyond a limit, by half a resolution at most. */
    T RoundToResolution(T value) const;
    /** A value beside a limit by rounding counts as the limit, and becomes it. */
    KW_ACCEPTANCE ValidateRange(T& value, T min, T max) const;
    /** After limits moved: the wish where they let it, else the nearest legal value, as an
        automatic write. */
    void FollowLimits();
    /** `overflow`: the next value is more than T can hold. */
    KW_ACCEPTANCE StepOver(T next, bool up, bool overflow);
    /** What the step behaviour says: `wrapped` at the other end, a refusal, or `end` with code 1.
     */
    KW_ACCEPTANCE StepPastEnd(bool up, T wrapped, T end);
    KW_ACCEPTANCE StepInList(INT32 steps);
    /** Where steps down end. */
    T GetLowestStep() const;
    /** False for a step mode that has no steps, or without a step. */
    bool FindStep(INT32 steps, T& next, bool& overflow) const;

    /** Min ≤ value ≤ max and declared min ≤ min ≤ max ≤ declared max, whenever the lock is free. */
    std::atomic<T> m_value{};
    /** Within the declared limits; the value where nothing holds it back. */
    std::atomic<T> m_userValue{};
    std::atomic<T> m_min{kLowest};
    std::atomic<T> m_max{kHighest};
    std::atomic<T> m_step;
    T m_stepDefault; ///< from the model
    T m_default{};
    T m_declaredMin = kLowest;
    T m_declaredMax = kHighest;
    T m_resolution{}; ///< ≥ 0; guarded by the tree's lock
};

using CDbPropNumInt16 = CDbPropNum<INT16>;
using CDbPropNumUInt16 = CDbPropNum<UINT16>;
using CDbPropNumInt32 = CDbPropNum<INT32>;
using CDbPropNumUInt32 = CDbPropNum<UINT32>;
using CDbPropNumInt64 = CDbPropNum<INT64>;
using CDbPropNumUInt64 = CDbPropNum<UINT64>;
using CDbPropNumDouble = CDbPropNum<double>;

extern template class CDbPropNum<INT16>;
extern template class CDbPropNum<UINT16>;
extern template class CDbPropNum<INT32>;
extern template class CDbPropNum<UINT32>;
extern template class CDbPropNum<INT64>;
extern template class CDbPropNum<UINT64>;
extern template class CDbPropNum<double>;
