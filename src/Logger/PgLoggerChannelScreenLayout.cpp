// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerChannelScreenLayout.h"

#include "KWEnumerationsLogger.h"
#include "KWEnumerationsReadings.h"
#include "Rules/NumberRules.h"

#include <cmath>

namespace
{
constexpr double kLowestOnLogarithm = 1e-15;
constexpr double kSmallestLogarithmicSpan = 10.0;
constexpr double kSmallestRange = 0.01;
/** Far from zero a range of a hundredth would vanish in the rounding. */
constexpr double kSmallestShare = 1e-6;

double Distance(double end)
{
    return std::max(kSmallestRange, std::fabs(end) * kSmallestShare);
}
} // namespace

KW_ACCEPTANCE CPgLoggerChannelScreenLayout::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pTop || property == m_pBottom)
    {
        KW_CHECKED(m_pVerticalRange->DbSet(eKW_ZEL_LOGGER_VERTICAL_RANGE_USER));
    }
    UpdateLimits();
    return std::max(KeepApart(property), CPgLoggerChannelScreenLayoutBase::OnPropertySet(property));
}

void CPgLoggerChannelScreenLayout::UpdateGroup()
{
    UpdateLimits();
    KeepApart(nullptr);
}

void CPgLoggerChannelScreenLayout::UpdateLimits()
{
    for (CDbPropNumDouble* const end : {m_pBottom, m_pTop})
    {
        NRules::SetLimits(*end, IsLogarithmic() ? kLowestOnLogarithm : end->GetDeclaredMin(),
                          end->GetDeclaredMax());
    }
}

KW_ACCEPTANCE CPgLoggerChannelScreenLayout::Show(double bottom, double top)
{
    KW_CHECKED(m_pVerticalRange->DbSet(eKW_ZEL_LOGGER_VERTICAL_RANGE_USER));
    const KW_ACCEPTANCE lower = NRules::MoveTo(*m_pBottom, bottom);
    const KW_ACCEPTANCE upper = NRules::MoveTo(*m_pTop, top);
    return std::max({lower, upper, KeepApart(m_pBottom)});
}

bool CPgLoggerChannelScreenLayout::IsLogarithmic() const
{
    return m_pVerticalScaling->Get() == eKW_SCALING_TYPE_LOGARITHMIC;
}

KW_ACCEPTANCE CPgLoggerChannelScreenLayout::KeepApart(const CDbPropBase* written)
{
    const auto below = [this](double end)
    { return IsLogarithmic() ? end / kSmallestLogarithmicSpan : end - Distance(end); };
    const auto above = [this](double end)
    { return IsLogarithmic() ? end * kSmallestLogarithmicSpan : end + Distance(end); };
    if (m_pTop->Get() > m_pBottom->Get())
    {
        return eKW_ACC_OK;
    }
    CDbPropNumDouble& kept = written == m_pTop ? *m_pTop : *m_pBottom;
    written == m_pTop ? NRules::MoveTo(*m_pBottom, below(kept.Get()))
                      : NRules::MoveTo(*m_pTop, above(kept.Get()));
    if (m_pTop->Get() > m_pBottom->Get())
    {
        return eKW_ACC_OK;
    }
    // The end that gave way stands at its limit: what was written comes back from there.
    written == m_pTop ? NRules::MoveTo(*m_pTop, above(m_pBottom->Get()))
                      : NRules::MoveTo(*m_pBottom, below(m_pTop->Get()));
    return eKW_ACC_WARNING;
}
