// SPDX-License-Identifier: MIT
#include "SourceDependencies.h"

#include "CheckedAccess.h"
#include "CommonDatabase/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"

using namespace NApplicationDefinitions;

CSourceActivity::CSourceActivity(ESOURCE_ACTIVITY_CHECK check, const CDbObject& node)
    : m_check(check), m_root(node.GetDbRoot())
{
}

bool CSourceActivity::IsSourceActive(KW_ZEL_CHANNEL channel) const
{
    if (channel < eKW_ZEL_CHANNEL_C1 || channel >= eKW_ZEL_CHANNEL_NONE)
    {
        return false;
    }
    switch (m_check)
    {
    case eSOURCE_ACTIVITY_EXISTS:
        return true;
    case eSOURCE_ACTIVITY_ACQUIRED:
        return IsAcquisitionChannel(channel);
    default:
        return IsSwitchedOn(channel);
    }
}

bool CSourceActivity::IsSwitchedOn(KW_ZEL_CHANNEL channel) const
{
    if (IsAnalogChannel(channel))
    {
        return IsOn(QStringLiteral("Vertical/Channel[%1]/Enabled").arg(channel));
    }
    if (IsDigitalChannel(channel))
    {
        return IsOn(QStringLiteral("Logic/Enabled")) &&
               IsOn(QStringLiteral("Logic/LogicChannel[%1]/Enabled")
                        .arg(channel - eKW_ZEL_CHANNEL_D0));
    }
    switch (channel)
    {
    case eKW_ZEL_CHANNEL_M1:
        return IsOn(QStringLiteral("Mathematics/Enabled"));
    case eKW_ZEL_CHANNEL_R1:
        return IsOn(QStringLiteral("Vertical/ReferenceCurve/Enabled"));
    case eKW_ZEL_CHANNEL_XY:
        return IsOn(QStringLiteral("XY/State"));
    case eKW_ZEL_CHANNEL_S1:
        return IsOn(QStringLiteral("SerialBus/Enabled"));
    default:
        return IsOn(QStringLiteral("FFT/State"));
    }
}

/** Whether a switch of the tree is on; a switch that is missing counts as off. */
bool CSourceActivity::IsOn(const QString& path) const
{
    const auto node = m_root != nullptr ? m_root->Find(path) : nullptr;
    const auto* const state = dynamic_cast<const CDbPropEnumIntAccess*>(node.get());
    return state != nullptr && state->GetAsInt() == eKW_ONOFF_ON;
}

bool CSourceDependencies::SetAvailableSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector,
                                              bool adjust) const
{
    const CSourceActivity activity(m_check, selector);
    const KW_ZEL_CHANNEL present = selector.Get();
    KW_ZEL_CHANNEL firstUsable = eKW_ZEL_CHANNEL_NONE;
    for (INT32 value = 0; value < selector.GetEnumSize(); ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        const bool usable =
            activity.IsSourceActive(channel) && m_application.IsSourceApplicable(channel);
        KW_CHECKED(selector.EnableValueInternally(channel, usable ? eVALUESTATE_SELECTABLE
                                                                  : eVALUESTATE_NOT_SELECTABLE));
        firstUsable = usable && firstUsable == eKW_ZEL_CHANNEL_NONE ? channel : firstUsable;
    }
    const bool anyUsable = firstUsable != eKW_ZEL_CHANNEL_NONE;
    KW_CHECKED(selector.EnableValueInternally(
        eKW_ZEL_CHANNEL_NONE, anyUsable ? eVALUESTATE_NOT_SELECTABLE : eVALUESTATE_LAST_RESORT));
    const bool canStay = selector.IsValueEnabled(present);
    if (adjust && anyUsable && !canStay)
    {
        KW_CHECKED(selector.DbSet(firstUsable));
    }
    selector.UpdateAvailability(eAVAILABILITY_NOT_AVAILABLE);
    return anyUsable && (adjust || canStay);
}
