// SPDX-License-Identifier: MIT
#include "Buses/PgSerialBus.h"

#include "Buses/BusRules.h"
#include "Buses/PgBusResults.h"
#include "CommonDatabase/Containers/DbPgArray.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsSerialBus.h"
#include "Names/BusResults.h"
#include "Names/SerialBus.h"

using namespace NNames;

namespace
{
/** Removes the decoded frames of a protocol and sets its counts invalid. */
void ClearFrames(CDbPropertyGroup& results)
{
    for (const auto& group : results.Groups())
    {
        if (auto* const frames = dynamic_cast<CDbPgArrayBase*>(group.get()))
        {
            KW_CHECKED(frames->DbRemovePriv(0, frames->GetCount()));
        }
    }
    NRules::InvalidateResults(results);
}
} // namespace

t_Couplings CPgSerialBus::Rules() const
{
    using B = CPgSerialBus;
    static constexpr auto rows =
        Table<Names>(On(Names::ResetSettings) >> Do<&B::ResetSettings>,
                     On(Names::BusResults / BusResults::Clear) >> Do<&B::ClearResults>);
    return rows;
}

void CPgSerialBus::ResetSettings()
{
    CDbPropertyGroup& settings = *NRules::OfProtocol(*this, m_pProtocol->GetText(), "BusSettings");
    NRules::WriteUserDefaults(settings);
    NRules::UpdateSubtree(settings);
}

void CPgSerialBus::ClearResults()
{
    for (INT32 protocol = 0; protocol < m_pProtocol->GetEnumSize(); ++protocol)
    {
        ClearFrames(*NRules::OfProtocol(*this, m_pProtocol->GetSerialName(protocol), "BusResults"));
    }
    NRules::InvalidateResults(*m_pBusResults);
}
