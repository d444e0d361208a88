// SPDX-License-Identifier: MIT
#include "DbPropEnum.h"

#include "LockManager.h"

#include <algorithm>
#include <limits>
#include <numeric>

KW_VALUE_STATE CDbPropEnumBase::GetValueState(INT32 value) const
{
    const CLockGuard lock(eACCESS_READ);
    if (!GetNameInfo().IsValue(value))
    {
        return eVALUESTATE_NOT_SELECTABLE;
    }
    return m_states.empty() ? eVALUESTATE_SELECTABLE : m_states[value];
}

KW_ACCEPTANCE CDbPropEnumBase::EnableValue(INT32 value, bool on)
{
    return EnableValueInternally(value, on ? eVALUESTATE_SELECTABLE : eVALUESTATE_NOT_SELECTABLE);
}

KW_ACCEPTANCE CDbPropEnumBase::EnableAllValues()
{
    CDbChange change(*this);
    if (!m_states.empty())
    {
        change.Touch();
        m_states.clear();
    }
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPropEnumBase::EnableValueInternally(INT32 value, KW_VALUE_STATE state)
{
    if (!GetNameInfo().IsValue(value))
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    CDbChange change(*this);
    if (state != GetValueState(value))
    {
        change.Touch();
        if (m_states.empty())
        {
            m_states.assign(GetEnumSize(), eVALUESTATE_SELECTABLE);
        }
        m_states[value] = state;
    }
    return eKW_ACC_OK;
}

void CDbPropEnumBase::DeclareEnabledValues(std::initializer_list<INT32> values)
{
    m_states.assign(GetEnumSize(), eVALUESTATE_NOT_SELECTABLE);
    for (const INT32 value : values)
    {
        m_states[value] = eVALUESTATE_SELECTABLE;
    }
}

std::vector<INT32> CDbPropEnumBase::StepOrder() const
{
    const CEnumNameInfo& info = GetNameInfo();
    std::vector<INT32> order(info.GetEnumSize());
    std::iota(order.begin(), order.end(), 0);
    if (StepsByNumber())
    {
        const auto number = [&info](INT32 value)
        { return info.GetNumber(value).value_or(std::numeric_limits<double>::infinity()); };
        std::stable_sort(order.begin(), order.end(),
                         [&number](INT32 a, INT32 b) { return number(a) < number(b); });
    }
    return order;
}

void CDbPropEnumBase::UpdateAvailability(KW_AVAILABILITY otherwise)
{
    const CLockGuard lock;
    const bool any = m_states.empty() || std::any_of(m_states.begin(), m_states.end(),
                                                     [](KW_VALUE_STATE state) {
                                                         return state != eVALUESTATE_NOT_SELECTABLE;
                                                     });
    SetAvailability(any ? eAVAILABILITY_AVAILABLE : otherwise);
}

QStringList CDbPropEnumBase::GetValueTexts() const
{
    const CLockGuard lock(eACCESS_READ);
    QStringList names;
    for (INT32 value = 0; value < GetEnumSize(); ++value)
    {
        if (IsValueEnabled(value))
        {
            names.append(GetSerialName(value));
        }
    }
    return names;
}

void CDbPropEnumIntAccess::DbSetDefault(INT32 value)
{
    m_default = static_cast<INT16>(GetNameInfo().IsValue(value) ? value : 0);
    m_userValue = m_default;
    m_value.store(m_default, std::memory_order_release);
}

KW_ACCEPTANCE CDbPropEnumIntAccess::Validate(CDbValue& value, eWRITEKIND kind) const
{
    const INT64* const carried = std::get_if<INT64>(&value);
    if (carried == nullptr)
    {
        return eKW_ACC_WRONG_KIND;
    }
    if (*carried < 0 || *carried >= GetEnumSize())
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    const bool mustBeEnabled = IsClientWrite(kind) && !m_states.empty();
    return mustBeEnabled &&
                   m_states[static_cast<std::size_t>(*carried)] == eVALUESTATE_NOT_SELECTABLE
               ? eKW_ACC_NOT_ENABLED
               : eKW_ACC_OK;
}

void CDbPropEnumIntAccess::Store(const CDbValue& value, eWRITEKIND kind)
{
    const INT64 number = std::get<INT64>(value);
    m_value.store(static_cast<INT32>(number), std::memory_order_release);
    if (kind != eWRITEKIND::Auto)
    {
        m_userValue = static_cast<INT16>(number);
    }
}

bool CDbPropEnumIntAccess::IsStored(const CDbValue& value) const
{
    return Stands(value) && GetAsInt() == m_userValue;
}

KW_ACCEPTANCE CDbPropEnumIntAccess::FollowWish(INT32 otherwise)
{
    const CLockGuard lock;
    const INT32 kept = IsValueEnabled(GetAsInt()) ? GetAsInt() : otherwise;
    return SetForNow(IsValueEnabled(m_userValue) ? m_userValue : kept);
}

KW_ACCEPTANCE CDbPropEnumIntAccess::SetForNow(INT32 value)
{
    return value == GetAsInt() ? static_cast<KW_ACCEPTANCE>(eKW_ACC_OK)
                               : WriteValue(INT64{value}, eWRITEKIND::Auto);
}

QString CDbPropEnumIntAccess::GetWishText() const
{
    return m_userValue != GetAsInt() ? TextOf(m_userValue) : QString();
}

void CDbPropEnumIntAccess::RestoreWish(QStringView text)
{
    CDbValue wish;
    if (ParseText(text.toString(), wish) > eKW_ACC_WARNING)
    {
        return;
    }
    CDbChange change(*this);
    change.Touch();
    m_userValue = static_cast<INT16>(std::get<INT64>(wish));
}

KW_ACCEPTANCE CDbPropEnumIntAccess::IncDec(INT32 steps)
{
    const CLockGuard lock;
    const INT32 direction = steps > 0 ? 1 : -1;
    INT32 reached = GetAsInt();
    INT64 left = steps > 0 ? INT64{steps} : -INT64{steps};
    const std::vector<INT32> order = StepOrder();
    const auto place = std::find(order.begin(), order.end(), reached) - order.begin();
    for (auto i = place + direction; left > 0 && GetNameInfo().IsValue(static_cast<INT32>(i));
         i += direction)
    {
        if (IsValueEnabled(order[i]))
        {
            reached = order[i];
            --left;
        }
    }
    const KW_ACCEPTANCE code = SetAsInt(reached);
    return left > 0 ? std::max<KW_ACCEPTANCE>(code, eKW_ACC_WARNING) : code;
}

QString CDbPropEnumIntAccess::TextOf(INT32 value) const
{
    const QString name = GetSerialName(value);
    return name.isEmpty() ? QString::number(value) : name;
}

QString CDbPropEnumIntAccess::GetText() const
{
    return TextOf(GetAsInt());
}

QString CDbPropEnumIntAccess::GetDefaultText() const
{
    return TextOf(m_default);
}

KW_ACCEPTANCE CDbPropEnumIntAccess::ParseText(const QString& text, CDbValue& value) const
{
    const CEnumNameInfo& names = GetNameInfo();
    auto match = names.ConvertName(text, KW_ENUM_NAME::Serial);
    if (match.match == CEnumNameInfo::eMATCH::None)
    {
        match = names.ConvertName(text, KW_ENUM_NAME::Remote);
    }
    if (match.match == CEnumNameInfo::eMATCH::Several)
    {
        return eKW_ACC_AMBIGUOUS_NAME;
    }
    bool isNumber = false;
    const INT32 number = text.toInt(&isNumber);
    // A number stands only for a value that has no name to be called by.
    if (match.match == CEnumNameInfo::eMATCH::None && isNumber && names.IsValue(number) &&
        names.GetSerialName(number).isEmpty())
    {
        match = {CEnumNameInfo::eMATCH::One, number};
    }
    if (match.match == CEnumNameInfo::eMATCH::None)
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    value = INT64{match.value};
    return eKW_ACC_OK;
}

void CDbPropEnumIntAccess::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<CDbPropHist<t_State>>(*this, GetState());
}

bool CDbPropEnumIntAccess::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<CDbPropHist<t_State>&>(record).Complete(GetState());
}

void CDbPropEnumIntAccess::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const t_State& state = static_cast<const CDbPropHist<t_State>&>(record).State(newState);
    SetCommonState(state.common);
    m_value.store(state.value, std::memory_order_release);
    m_userValue = static_cast<INT16>(state.userValue);
    m_states = state.states;
}
