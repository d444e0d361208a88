// SPDX-License-Identifier: MIT
#include "DbPropNum.h"

#include "CommonDatabase/Values/DbStepping.h"
#include "CommonDatabase/Values/DbValueList.h"
#include "CommonDatabase/Values/NumberText.h"
#include "KWEnumerationsUnits.h"
#include "LockManager.h"
#include "MatConstants.h"

#include <algorithm>
#include <cmath>

// Readers never wait: a processor without atomic words of 64 bits would need a lock for each.
static_assert(std::atomic<double>::is_always_lock_free &&
              std::atomic<UINT64>::is_always_lock_free &&
              std::atomic<long long>::is_always_lock_free);

KW_ACCEPTANCE CDbPropNumBase::SetUnit(KW_UNIT unit)
{
    if (!GetStaticEnumNameInfo<KW_UNIT>().IsValue(unit))
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    CDbChange change(*this);
    if (!m_unit.Compare(CDbUnit(unit)))
    {
        change.Touch();
        m_unit.SetUnit(unit);
    }
    return eKW_ACC_OK;
}

KW_UNIT CDbPropNumBase::GetUnit() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_unit.GetUnit();
}

template <typename T>
CDbPropNum<T>::CDbPropNum()
    : m_step(std::is_same_v<T, double> ? T{} : T{1}), m_stepDefault(m_step.load())
{
}

template <typename T>
bool CDbPropNum<T>::IsNumber(T value)
{
    return value == value;
}

/** Negative zero equals zero, but reads and saves differently: it stays outside of the tree. */
template <typename T>
T CDbPropNum<T>::PlainZero(T value)
{
    return value == T{} ? T{} : value;
}

template <typename T>
void CDbPropNum<T>::DbSetDefault(T value)
{
    m_default = std::clamp(value, m_declaredMin, m_declaredMax);
    m_value.store(m_default, std::memory_order_release);
    m_userValue.store(m_default, std::memory_order_release);
}

template <typename T>
void CDbPropNum<T>::DeclareMinAndMax(T min, T max)
{
    m_declaredMin = min;
    m_declaredMax = max;
    m_min.store(min, std::memory_order_release);
    m_max.store(max, std::memory_order_release);
    DbSetDefault(m_default);
}

template <typename T>
void CDbPropNum<T>::DeclareStep(T step)
{
    m_stepDefault = step;
    m_step.store(step, std::memory_order_release);
}

template <typename T>
T CDbPropNum<T>::RoundToResolution(T value) const
{
    if constexpr (std::is_same_v<T, double>)
    {
        return m_resolution > 0.0 ? CMatConstants::AdjustToResolution(value, m_resolution) : value;
    }
    else
    {
        // Nearest multiple, half away from zero, without leaving the type.
        const T rest = m_resolution > T{} ? static_cast<T>(value % m_resolution) : T{};
        const bool away = rest > T{} ? rest >= m_resolution - rest : -rest >= m_resolution + rest;
        if (rest == T{} || !away)
        {
            return static_cast<T>(value - rest);
        }
        bool overflow = false;
        return NStepping::Linear<T>(static_cast<T>(value - rest), m_resolution, rest > T{} ? 1 : -1,
                                    overflow);
    }
}

template <typename T>
T CDbPropNum<T>::GetNearestLegal(T value) const
{
    return GetValueList().isEmpty()
               ? std::clamp(RoundToResolution(value), GetMin(), GetMax())
               : NValueList::Nearest(GetValueList(), GetOffered(), value, GetMin(), GetMax());
}

/** Values that lie beside a limit by rounding alone count as the limit. */
template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::ValidateRange(T& value, T min, T max) const
{
    if (value < min && !NValueList::IsSame(value, min))
    {
        return eKW_ACC_BELOW_MINIMUM;
    }
    if (value > max && !NValueList::IsSame(value, max))
    {
        return eKW_ACC_ABOVE_MAXIMUM;
    }
    value = std::clamp(value, min, max);
    return eKW_ACC_OK;
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::Validate(CDbValue& value, eWRITEKIND kind) const
{
    const t_Carrier* const carried = std::get_if<t_Carrier>(&value);
    if (carried == nullptr)
    {
        return eKW_ACC_WRONG_KIND;
    }
    T number = static_cast<T>(*carried);
    if (!IsNumber(number))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    const bool limitsFollow = kind == eWRITEKIND::Recall || kind == eWRITEKIND::Default;
    const T min = limitsFollow ? m_declaredMin : GetMin();
    const T max = limitsFollow ? m_declaredMax : GetMax();
    if (const KW_ACCEPTANCE code = ValidateRange(number, min, max); code > eKW_ACC_WARNING)
    {
        return code;
    }
    T legal = number;
    if (!GetValueList().isEmpty())
    {
        const int index =
            NValueList::Find(GetValueList(), limitsFollow ? kAllOffered : GetOffered(), number);
        if (index < 0)
        {
            return eKW_ACC_NOT_IN_VALUE_LIST;
        }
        NValueList::ReadEntry(GetValueList()[index], legal);
    }
    else if (kind != eWRITEKIND::Auto)
    {
        legal = std::clamp(RoundToResolution(number), min, max);
    }
    value = Carry(PlainZero(legal));
    return NValueList::IsSame(legal, number) ? eKW_ACC_OK : eKW_ACC_WARNING;
}

template <typename T>
bool CDbPropNum<T>::Stands(const CDbValue& value) const
{
    return static_cast<T>(std::get<t_Carrier>(value)) == Get();
}

template <typename T>
bool CDbPropNum<T>::IsStored(const CDbValue& value) const
{
    return Stands(value) && Get() == GetUserValue();
}

template <typename T>
void CDbPropNum<T>::Store(const CDbValue& value, eWRITEKIND kind)
{
    const T number = static_cast<T>(std::get<t_Carrier>(value));
    m_min.store(std::min(GetMin(), number), std::memory_order_release);
    m_max.store(std::max(GetMax(), number), std::memory_order_release);
    m_value.store(number, std::memory_order_release);
    if (kind != eWRITEKIND::Auto && kind != eWRITEKIND::Wish)
    {
        m_userValue.store(number, std::memory_order_release);
    }
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetLimited(T value)
{
    if (!IsNumber(value))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    const CLockGuard lock;
    const T legal = GetNearestLegal(value);
    const KW_ACCEPTANCE code = Set(legal);
    return code == eKW_ACC_OK && legal != value ? static_cast<KW_ACCEPTANCE>(eKW_ACC_WARNING)
                                                : code;
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetUserValue(T value)
{
    if (!IsNumber(value))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckAccess(GetDbRoot()); access > eKW_ACC_WARNING)
    {
        return access;
    }
    const T wish = PlainZero(std::clamp(value, m_declaredMin, m_declaredMax));
    const T legal = GetNearestLegal(value);
    CDbValue carried = Carry(legal);
    if (const KW_ACCEPTANCE refusal = Validate(carried, eWRITEKIND::Wish);
        refusal > eKW_ACC_WARNING)
    {
        return refusal;
    }
    const bool isOpen = wish != legal;
    KW_ACCEPTANCE code = eKW_ACC_OK;
    {
        CDbChange change(*this, eWRITEKIND::Wish);
        if (isOpen && wish != GetUserValue())
        {
            // Before the hooks of the write, which may settle for less.
            change.Touch();
            m_userValue.store(wish, std::memory_order_release);
        }
        code = WriteValue(std::move(carried), isOpen ? eWRITEKIND::Wish : eWRITEKIND::Client);
    }
    // Dependants have run by now, too.
    return Get() == value ? code : std::max<KW_ACCEPTANCE>(code, eKW_ACC_WARNING);
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetToMin()
{
    const CLockGuard lock;
    return Set(GetMin());
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetToMax()
{
    const CLockGuard lock;
    return Set(GetMax());
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetMin(T min)
{
    const CLockGuard lock;
    return SetMinAndMax(min, GetMax());
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetMax(T max)
{
    const CLockGuard lock;
    return SetMinAndMax(GetMin(), max);
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetMinAndMax(T min, T max)
{
    const CLockGuard lock;
    if (!IsNumber(min) || !IsNumber(max))
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    if (min > max)
    {
        return eKW_ACC_LIMITS_CROSSED;
    }
    if (min < m_declaredMin || max > m_declaredMax)
    {
        return eKW_ACC_OUTSIDE_DECLARED;
    }
    if (!NValueList::HasEntryWithin(GetValueList(), GetOffered(), min, max))
    {
        return eKW_ACC_NOT_IN_VALUE_LIST;
    }
    if (min == GetMin() && max == GetMax())
    {
        return eKW_ACC_OK;
    }
    CDbChange change(*this);
    change.Touch();
    m_min.store(PlainZero(min), std::memory_order_release);
    m_max.store(PlainZero(max), std::memory_order_release);
    FollowLimits();
    return eKW_ACC_OK;
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::OfferEntries(UINT64 offered)
{
    const CLockGuard lock;
    if (!NValueList::HasEntryWithin(GetValueList(), offered, GetMin(), GetMax()))
    {
        return eKW_ACC_NOT_IN_VALUE_LIST;
    }
    CDbChange change(*this);
    if (offered != GetOffered())
    {
        change.Touch();
        SetOffered(offered);
    }
    // Also for what a file brought.
    FollowLimits();
    return eKW_ACC_OK;
}

/** The value goes where its wish is, as near as the limits let it. */
template <typename T>
void CDbPropNum<T>::FollowLimits()
{
    const T target = GetNearestLegal(GetUserValue());
    if (target != Get())
    {
        const KW_VALIDITY validity = GetValidity();
        WriteValue(Carry(target), eWRITEKIND::Auto);
        SetValidity(validity);
    }
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetStep(T step)
{
    if (!(step > T{}) || step > kHighest)
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    if (step == GetStep())
    {
        return eKW_ACC_OK; // as for most that follow a scale
    }
    CDbChange change(*this);
    change.Touch();
    m_step.store(step, std::memory_order_release);
    return eKW_ACC_OK;
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetStepDefault()
{
    return m_stepDefault > T{} ? SetStep(m_stepDefault)
                               : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_A_NUMBER);
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::SetResolution(T resolution)
{
    if (!(resolution >= T{}) || resolution > kHighest)
    {
        return eKW_ACC_NOT_A_NUMBER;
    }
    CDbChange change(*this);
    if (resolution != m_resolution)
    {
        change.Touch();
        m_resolution = resolution;
    }
    const T rounded = std::clamp(RoundToResolution(Get()), GetMin(), GetMax());
    if (rounded == Get())
    {
        return eKW_ACC_OK;
    }
    return std::max<KW_ACCEPTANCE>(WriteValue(Carry(rounded), eWRITEKIND::Auto), eKW_ACC_WARNING);
}

/** The minimum; but the ladder of whole numbers begins at 1, and who stands below goes no lower. */
template <typename T>
T CDbPropNum<T>::GetLowestStep() const
{
    const bool isLadder = !std::is_same_v<T, double> && !NStepping::LadderOf(GetStepMode()).empty();
    return isLadder ? std::max(GetMin(), std::min(T{1}, Get())) : GetMin();
}

template <typename T>
bool CDbPropNum<T>::FindStep(INT32 steps, T& next, bool& overflow) const
{
    switch (GetStepMode())
    {
    case eSTEPMODE_LINEAR:
        if (!(GetStep() > T{}))
        {
            return false;
        }
        next = NStepping::Linear<T>(Get(), GetStep(), steps, overflow);
        return true;
    case eSTEPMODE_FACTOR:
        next = NStepping::Factor<T>(Get(), GetStepFactor(), steps, overflow);
        return true;
    case eSTEPMODE_LADDER125:
    case eSTEPMODE_LADDER1245:
        next = NStepping::Ladder<T>(NStepping::LadderOf(GetStepMode()), Get(), steps, overflow);
        return true;
    default:
        return false;
    }
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::IncDec(INT32 steps)
{
    const CLockGuard lock;
    if (!GetValueList().isEmpty())
    {
        return StepInList(steps);
    }
    T next{};
    bool overflow = false;
    if (!FindStep(steps, next, overflow))
    {
        return eKW_ACC_WRONG_KIND;
    }
    return StepOver(next, steps > 0, overflow);
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::StepOver(T next, bool up, bool overflow)
{
    const T low = GetLowestStep();
    const T high = GetMax();
    T inside = next;
    const bool beyond = overflow || ValidateRange(inside, GetMin(), high) > eKW_ACC_WARNING;
    return beyond ? StepPastEnd(up, up ? low : high, up ? high : low) : Set(inside);
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::StepPastEnd(bool up, T wrapped, T end)
{
    switch (GetStepBehaviour())
    {
    case eSTEP_BEHAVIOUR_WRAP:
        return Set(wrapped);
    case eSTEP_BEHAVIOUR_REFUSE:
        return up ? eKW_ACC_ABOVE_MAXIMUM : eKW_ACC_BELOW_MINIMUM;
    default:
        return std::max<KW_ACCEPTANCE>(Set(end), eKW_ACC_WARNING);
    }
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::StepInList(INT32 steps)
{
    std::vector<T> entries;
    const QVariantList& list = GetValueList();
    for (int i = 0; i < list.size(); ++i)
    {
        T entry{};
        if (NValueList::IsOffered(GetOffered(), i) && NValueList::ReadEntry(list[i], entry) &&
            entry >= GetMin() && entry <= GetMax())
        {
            entries.push_back(entry);
        }
    }
    const auto present = std::find(entries.begin(), entries.end(), Get());
    if (present == entries.end())
    {
        return SetLimited(Get());
    }
    const INT64 count = static_cast<INT64>(entries.size());
    const INT64 wanted = (present - entries.begin()) + INT64{steps};
    if (wanted >= 0 && wanted < count)
    {
        return Set(entries[static_cast<std::size_t>(wanted)]);
    }
    const auto wrapped = static_cast<std::size_t>(((wanted % count) + count) % count);
    return StepPastEnd(steps > 0, entries[wrapped], steps > 0 ? entries.back() : entries.front());
}

template <typename T>
void CDbPropNum<T>::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<t_Hist>(*this, GetState());
}

template <typename T>
bool CDbPropNum<T>::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<t_Hist&>(record).Complete(GetState());
}

template <typename T>
void CDbPropNum<T>::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const t_State& state = static_cast<const t_Hist&>(record).State(newState);
    SetCommonState(state.common);
    m_min.store(state.min, std::memory_order_release);
    m_max.store(state.max, std::memory_order_release);
    m_value.store(state.value, std::memory_order_release);
    m_userValue.store(state.userValue, std::memory_order_release);
    m_step.store(state.step, std::memory_order_release);
    m_resolution = state.resolution;
    SetOffered(state.offered);
    DeclareUnit(state.unit);
}

template <typename T>
QString CDbPropNum<T>::GetTypeName() const
{
    if constexpr (std::is_same_v<T, double>)
    {
        return QStringLiteral("double");
    }
    else
    {
        return QLatin1String(std::is_signed_v<T> ? "int" : "uint") + QString::number(8 * sizeof(T));
    }
}

template <typename T>
QString CDbPropNum<T>::GetText() const
{
    return KW_NumberToText(Get());
}

template <typename T>
QString CDbPropNum<T>::GetDefaultText() const
{
    return KW_NumberToText(m_default);
}

template <typename T>
QString CDbPropNum<T>::GetMinText() const
{
    const T min = GetMin();
    return min == kLowest ? QStringLiteral("") : KW_NumberToText(min);
}

template <typename T>
QString CDbPropNum<T>::GetMaxText() const
{
    const T max = GetMax();
    return max == kHighest ? QStringLiteral("") : KW_NumberToText(max);
}

template <typename T>
QString CDbPropNum<T>::GetStepText() const
{
    const bool stepsLinear = GetStepMode() == eSTEPMODE_LINEAR && GetValueList().isEmpty();
    return stepsLinear && GetStep() > T{} ? KW_NumberToText(GetStep()) : QStringLiteral("");
}

template <typename T>
QString CDbPropNum<T>::ToText(const QVariant& entry) const
{
    T number{};
    return NValueList::ReadEntry(entry, number) ? KW_NumberToText(number) : entry.toString();
}

template <typename T>
KW_ACCEPTANCE CDbPropNum<T>::ParseText(const QString& text, CDbValue& value) const
{
    T number{};
    const KW_ACCEPTANCE code = KW_ParseNumber(QStringView(text), number);
    value = Carry(number);
    return code;
}

template <typename T>
QString CDbPropNum<T>::GetWishText() const
{
    return GetUserValue() != Get() ? KW_NumberToText(GetUserValue()) : QString();
}

template <typename T>
void CDbPropNum<T>::RestoreWish(QStringView text)
{
    T wish{};
    if (!KW_TextToNumber(text, wish) || !IsNumber(wish))
    {
        return;
    }
    CDbChange change(*this);
    change.Touch();
    m_userValue.store(PlainZero(std::clamp(wish, m_declaredMin, m_declaredMax)),
                      std::memory_order_release);
}

template class CDbPropNum<INT16>;
template class CDbPropNum<UINT16>;
template class CDbPropNum<INT32>;
template class CDbPropNum<UINT32>;
template class CDbPropNum<INT64>;
template class CDbPropNum<UINT64>;
template class CDbPropNum<double>;
