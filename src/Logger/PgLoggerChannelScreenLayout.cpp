// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerChannelScreenLayout.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsReadings.h"
#include "Names/LoggerChannelScreenLayout.h"
#include "Rules/NumberRules.h"

#include <cmath>

using namespace NNames;

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

t_Couplings CPgLoggerChannelScreenLayout::Rules() const
{
    using L = CPgLoggerChannelScreenLayout;
    static constexpr auto rows =
        Table<Names>(On(Names::Top, Names::Bottom) >> Do<&L::SelectUserRange>,
                     OnAny() >> Derive<&L::UpdateLimits, &L::KeepApart>);
    return rows;
}

void CPgLoggerChannelScreenLayout::SelectUserRange()
{
    KW_CHECKED(m_pVerticalRange->DbSet(eKW_ZEL_LOGGER_VERTICAL_RANGE_USER));
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
    SelectUserRange();
    const KW_ACCEPTANCE lower = NRules::MoveTo(*m_pBottom, bottom);
    const KW_ACCEPTANCE upper = NRules::MoveTo(*m_pTop, top);
    KeepApart(m_pBottom);
    return std::max(lower, upper);
}

bool CPgLoggerChannelScreenLayout::IsLogarithmic() const
{
    return m_pVerticalScaling->Get() == eKW_SCALING_TYPE_LOGARITHMIC;
}

void CPgLoggerChannelScreenLayout::KeepApart(const CDbPropBase* written)
{
    const auto below = [this](double end)
    { return IsLogarithmic() ? end / kSmallestLogarithmicSpan : end - Distance(end); };
    const auto above = [this](double end)
    { return IsLogarithmic() ? end * kSmallestLogarithmicSpan : end + Distance(end); };
    if (m_pTop->Get() > m_pBottom->Get())
    {
        return;
    }
    CDbPropNumDouble& kept = written == m_pTop ? *m_pTop : *m_pBottom;
    written == m_pTop ? NRules::MoveTo(*m_pBottom, below(kept.Get()))
                      : NRules::MoveTo(*m_pTop, above(kept.Get()));
    if (m_pTop->Get() > m_pBottom->Get())
    {
        return;
    }
    // The end that gave way stands at its limit: what was written comes back from there.
    written == m_pTop ? NRules::MoveTo(*m_pTop, above(m_pBottom->Get()))
                      : NRules::MoveTo(*m_pBottom, below(m_pTop->Get()));
}
