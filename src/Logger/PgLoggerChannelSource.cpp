// SPDX-License-Identifier: MIT
#include "Logger/PgLoggerChannelSource.h"

#include "Analysis/PgMeasurement.h"
#include "CheckedAccess.h"
#include "CommonDatabase/Properties/DbPropReference.h"
#include "KWEnumerationsLogger.h"
#include "Meter/PgCounterChannel.h"
#include "Meter/PgMeterChannel.h"

KW_ACCEPTANCE CPgLoggerChannelSource::OnPropertySet(const CDbPropBase* property)
{
    UpdateGroup();
    return CPgLoggerChannelSourceBase::OnPropertySet(property);
}

void CPgLoggerChannelSource::UpdateGroup()
{
    const auto item = m_pItem->GetReferencedGroup();
    if (item && !FitsSource(*item))
    {
        KW_CHECKED(m_pItem->DbSet(QString()));
    }
}

bool CPgLoggerChannelSource::FitsSource(const CDbPropertyGroup& item) const
{
    switch (m_pSource->Get())
    {
    case eKW_ZEL_LOGGER_SOURCE_METER:
        return dynamic_cast<const CPgMeterChannel*>(&item) != nullptr;
    case eKW_ZEL_LOGGER_SOURCE_MEASUREMENT:
        return dynamic_cast<const CPgMeasurement*>(&item) != nullptr;
    case eKW_ZEL_LOGGER_SOURCE_COUNTER:
        return dynamic_cast<const CPgCounterChannel*>(&item) != nullptr;
    default:
        return false;
    }
}
