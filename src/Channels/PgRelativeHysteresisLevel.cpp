// SPDX-License-Identifier: MIT
#include "Channels/PgRelativeHysteresisLevel.h"

#include "Analysis/PgCursor.h"
#include "Analysis/PgCursorMeasurement.h"
#include "Analysis/PgCursorMeasurements.h"
#include "Analysis/PgaCursorMeasurement.h"
#include "Channels/PgChannel.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "Instrument/PgHwConfig.h"
#include "Instrument/PgRelativeHysteresisSettingsForBandwidth.h"
#include "Instrument/PgSetup.h"
#include "Instrument/PgaRelativeHysteresisSettingsForBandwidth.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsVertical.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"

namespace
{
const CPgaRelativeHysteresisSettingsForBandwidth& TableOf(const CPgZEL& root)
{
    return *root.GetPgSetup()->GetPgHwConfig()->GetPgRelativeHysteresisSettingsForBandwidth();
}

const CPgCursorMeasurement* MeasurementOf(const CPgRelativeHysteresisLevel& level)
{
    const auto* const cursor = NRules::Above<CPgCursor>(level);
    return cursor != nullptr
               ? cursor->GetPgCursorMeasurements()->GetPgCursorMeasurement()->ItemDirect(
                     NRules::IndexInArray(level))
               : nullptr;
}
} // namespace

KW_ACCEPTANCE CPgRelativeHysteresisLevel::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pUserHysteresis)
    {
        KW_CHECKED(m_pAutoHysteresis->DbSet(eKW_ONOFF_OFF));
    }
    UpdateGroup();
    return CPgRelativeHysteresisLevelBase::OnPropertySet(property);
}

void CPgRelativeHysteresisLevel::UpdateGroup()
{
    const bool isAutomatic = m_pAutoHysteresis->Get() == eKW_ONOFF_ON;
    KW_CHECKED(m_pHysteresis->DbSet(isAutomatic ? Automatic() : m_pUserHysteresis->Get()));
}

void CPgRelativeHysteresisLevel::OnTreeCreated()
{
    CPgRelativeHysteresisLevelBase::OnTreeCreated();
    CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    std::vector<CDbPropBase*> sources;
    const CPgaRelativeHysteresisSettingsForBandwidth& table = TableOf(*root);
    for (INT32 i = 0; i < table.GetCount(); ++i)
    {
        sources.push_back(table.ItemDirect(i)->GetPrHysteresis());
    }
    const CPgaChannel& channels = *root->GetPgVertical()->GetPgChannel();
    for (INT32 i = 0; i < channels.GetCount(); ++i)
    {
        sources.push_back(channels.ItemDirect(i)->GetPrBandwidthLimit());
    }
    if (const CPgCursorMeasurement* const measurement = MeasurementOf(*this))
    {
        sources.push_back(measurement->GetPrSource());
    }
    root->GetDependencies().Add(
        *this, sources, [this] { UpdateGroup(); },
        QStringLiteral("RelativeHysteresisLevel/Hysteresis"));
}

KW_ZEL_CHANNEL CPgRelativeHysteresisLevel::Trace() const
{
    if (const CPgCursorMeasurement* const measurement = MeasurementOf(*this))
    {
        return measurement->GetPrSource()->Get();
    }
    const auto* const channel = NRules::Above<CPgChannel>(*this);
    return channel != nullptr ? static_cast<KW_ZEL_CHANNEL>(NRules::IndexInArray(*channel))
                              : eKW_ZEL_CHANNEL_NONE;
}

/** Traces that no channel limits may have noise of any frequency. */
double CPgRelativeHysteresisLevel::Automatic() const
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return m_pHysteresis->GetDefault();
    }
    const KW_ZEL_CHANNEL trace = Trace();
    const KW_VERTICAL_BANDWIDTH_LIMIT limit =
        NApplicationDefinitions::IsAnalogChannel(trace)
            ? root->GetPgVertical()->GetPgChannel()->ItemDirect(trace)->GetPrBandwidthLimit()->Get()
            : eKW_VERTICAL_BANDWIDTH_LIMIT_FULL;
    const CPgaRelativeHysteresisSettingsForBandwidth& table = TableOf(*root);
    return limit < table.GetCount() ? table.ItemDirect(limit)->GetPrHysteresis()->Get()
                                    : m_pHysteresis->GetDefault();
}
