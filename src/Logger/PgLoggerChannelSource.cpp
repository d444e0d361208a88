// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerChannelSource.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Containers/DbPropReference.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsLogger.h"
#include "Names/Counter.h"
#include "Names/LoggerChannelSource.h"
#include "Names/Measurements.h"
#include "Names/Meter.h"
#include "Names/ZEL.h"

using namespace NNames;

t_Couplings CPgLoggerChannelSource::Rules() const
{
    static constexpr auto rows =
        Table<Names>(OnAny() >> Derive<&CPgLoggerChannelSource::DropItemOfOtherSource>);
    return rows;
}

void CPgLoggerChannelSource::DropItemOfOtherSource()
{
    const auto item = m_pItem->GetReferencedGroup();
    if (item && !FitsSource(*item))
    {
        KW_CHECKED(m_pItem->DbSet(QString()));
    }
}

bool CPgLoggerChannelSource::FitsSource(const CDbPropertyGroup& item) const
{
    const CDbPropertyGroup* const container = item.GetParent();
    switch (m_pSource->Get())
    {
    case eKW_ZEL_LOGGER_SOURCE_METER:
        return container == At(ZEL::Meter / Meter::MeterChannel);
    case eKW_ZEL_LOGGER_SOURCE_MEASUREMENT:
        return container == At(ZEL::Measurements / Measurements::Measurement);
    case eKW_ZEL_LOGGER_SOURCE_COUNTER:
        return container == At(ZEL::Counter / Counter::CounterChannel);
    default:
        return false;
    }
}
