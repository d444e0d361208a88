// SPDX-License-Identifier: MIT
#pragma once

#include "DbPropEnum.h"

// What each enumeration type adds to the frame. Only the generated sources of the name tables
// include it: there each type is instantiated, once, by its constructor.

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
    CDbPropEnum<T>& m_node; ///< owns the handle
};

// GCC 12 instantiates no constructor that is "= default".
template <typename T>
CDbPropEnum<T>::CDbPropEnum()
{
}

template <typename T>
CDbPropEnum<T>::~CDbPropEnum() = default;

template <typename T>
const CEnumNameInfo& CDbPropEnum<T>::GetNameInfo() const
{
    return GetStaticEnumNameInfo<T>();
}

template <typename T>
bool CDbPropEnum<T>::StepsByNumber() const
{
    return KW_STEPS_BY_NUMBER<T>;
}

template <typename T>
void CDbPropEnum<T>::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMEnum<T>>(*this);
}
