// SPDX-License-Identifier: MIT
#include "Channels/PgRelativeHysteresisLevel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsVertical.h"
#include "Names/Channel.h"
#include "Names/Cursor.h"
#include "Names/CursorMeasurement.h"
#include "Names/CursorMeasurements.h"
#include "Names/HwConfig.h"
#include "Names/Levels.h"
#include "Names/RelativeHysteresisLevel.h"
#include "Names/RelativeHysteresisSettingsForBandwidth.h"
#include "Names/Setup.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
constexpr auto kBandwidthTable =
    ZEL::Setup / Setup::HwConfig / HwConfig::RelativeHysteresisSettingsForBandwidth;
constexpr auto kCursorMeasurements =
    ZEL::Cursor / Cursor::CursorMeasurements / CursorMeasurements::CursorMeasurement;
} // namespace

t_Couplings CPgRelativeHysteresisLevel::Rules() const
{
    using L = CPgRelativeHysteresisLevel;
    static constexpr auto rows = Table<Names>(
        On(Names::UserHysteresis) >> Do<&L::SelectUser>, OnAny() >> Derive<&L::UpdateHysteresis>,
        Changed(kBandwidthTable / each / RelativeHysteresisSettingsForBandwidth::Hysteresis,
                ZEL::Vertical / Vertical::Channel / each / Channel::BandwidthLimit) >>
            Derive<&L::UpdateHysteresis>,
        // A row of its own: the source follows later, when channels come and go.
        Changed(kCursorMeasurements / each / CursorMeasurement::Source) >>
            Derive<&L::UpdateHysteresis>);
    return rows;
}

void CPgRelativeHysteresisLevel::SelectUser()
{
    KW_CHECKED(m_pAutoHysteresis->DbSet(eKW_ONOFF_OFF));
}

void CPgRelativeHysteresisLevel::UpdateHysteresis()
{
    const bool isAutomatic = m_pAutoHysteresis->Get() == eKW_ONOFF_ON;
    KW_CHECKED(m_pHysteresis->DbSet(isAutomatic ? Automatic() : m_pUserHysteresis->Get()));
}

KW_ZEL_CHANNEL CPgRelativeHysteresisLevel::Trace() const
{
    if (GetParent() == At(ZEL::Cursor / Cursor::RelativeHysteresisLevel))
    {
        const INT32 place = NRules::IndexInArray(*this);
        return At(kCursorMeasurements / place / CursorMeasurement::Source)->Get();
    }
    for (INT32 channel = eKW_ZEL_CHANNEL_C1; channel <= eKW_ZEL_CHANNEL_C4; ++channel)
    {
        if (GetParent() == At(ZEL::Vertical / Vertical::Channel / channel / Channel::Levels /
                              Levels::RelativeHysteresisLevel))
        {
            return static_cast<KW_ZEL_CHANNEL>(channel);
        }
    }
    return eKW_ZEL_CHANNEL_NONE;
}

/** Traces that no channel limits may have noise of any frequency. */
double CPgRelativeHysteresisLevel::Automatic() const
{
    const KW_ZEL_CHANNEL trace = Trace();
    const KW_VERTICAL_BANDWIDTH_LIMIT limit =
        NApplicationDefinitions::IsAnalogChannel(trace)
            ? At(ZEL::Vertical / Vertical::Channel / trace / Channel::BandwidthLimit)->Get()
            : eKW_VERTICAL_BANDWIDTH_LIMIT_FULL;
    const CDbPropNumDouble* const known =
        At(kBandwidthTable / limit / RelativeHysteresisSettingsForBandwidth::Hysteresis);
    return known != nullptr ? known->Get() : m_pHysteresis->GetDefault();
}
