// SPDX-License-Identifier: MIT
#include "Analysis/PgMaskSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Names/MaskSettings.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgMaskSettings::Rules() const
{
    static constexpr auto sources = Derive<&CPgMaskSettings::OfferSources>;
    static constexpr auto rows =
        Table<Names>(NRules::kSwitched >> sources, NRules::kMathematicsScreen >> sources);
    return rows;
}

void CPgMaskSettings::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_LEVELS);
}
