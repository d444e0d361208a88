// SPDX-License-Identifier: MIT
#include "Analysis/PgCursorMeasurement.h"

#include "Analysis/MeasurementRules.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsUnits.h"
#include "Names/CursorMeasurement.h"
#include "Rules/ChannelRules.h"

#include <utility>

using namespace NNames;

t_Couplings CPgCursorMeasurement::Rules() const
{
    using M = CPgCursorMeasurement;
    static constexpr auto rows =
        Table<Names>(On(Names::Type, Names::Source) >> Derive<&M::Follow>,
                     On(Names::Type, Names::Source) >> Do<&M::DropMeasured>,
                     NRules::kProbes >> Do<&M::DropOfProbe>,
                     NRules::kMathematicsCurve >> Do<&M::DropOfMathematics>);
    return rows;
}

void CPgCursorMeasurement::Follow()
{
    const auto measured = [this] { return std::pair(m_pSource->Get(), m_pUnit->Get()); };
    const auto before = measured();
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
    UpdateUnit();
    if (measured() != before || !m_pSource->IsValueEnabled(m_pSource->Get()))
    {
        DropMeasured();
    }
}

void CPgCursorMeasurement::UpdateUnit()
{
    const KW_UNIT level = NRules::UnitOf(*this, m_pSource->Get());
    const KW_UNIT unit = NMeasurementRules::UnitOfQuantity(m_pType->Get(), level, level);
    KW_CHECKED(m_pUnit->DbSet(unit));
    KW_CHECKED(m_pResult->SetUnit(unit));
}

void CPgCursorMeasurement::DropOfProbe(const CDbPropBase* probe)
{
    if (NRules::RestsOn(m_pSource->Get(), *probe))
    {
        DropMeasured();
    }
}

void CPgCursorMeasurement::DropOfMathematics()
{
    if (m_pSource->Get() == eKW_ZEL_CHANNEL_M1)
    {
        DropMeasured();
    }
}
