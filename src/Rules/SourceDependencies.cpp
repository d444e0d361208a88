// SPDX-License-Identifier: MIT
#include "Rules/SourceDependencies.h"

#include "Analysis/PgMathematics.h"
#include "Analysis/PgXY.h"
#include "Buses/PgSerialBus.h"
#include "Channels/PgChannel.h"
#include "Channels/PgLogic.h"
#include "Channels/PgLogicChannel.h"
#include "Channels/PgReferenceCurve.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "Channels/PgaLogicChannel.h"
#include "CheckedAccess.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgFFT.h"

using namespace NApplicationDefinitions;

namespace
{
bool IsOn(const CDbPropEnum<KW_ONOFF>* state)
{
    return state->Get() == eKW_ONOFF_ON;
}
} // namespace

CSourceActivity::CSourceActivity(ESOURCE_ACTIVITY_CHECK check, const CDbObject& node)
    : m_check(check), m_root(CPgZEL::Of(node))
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
    if (m_root == nullptr)
    {
        return false;
    }
    if (IsAnalogChannel(channel))
    {
        return IsOn(m_root->GetPgVertical()->GetPgChannel()->ItemDirect(channel)->GetPrEnabled());
    }
    if (IsDigitalChannel(channel))
    {
        const CPgLogic* const logic = m_root->GetPgLogic();
        const INT32 line = channel - eKW_ZEL_CHANNEL_D0;
        return IsOn(logic->GetPrEnabled()) &&
               IsOn(logic->GetPgLogicChannel()->ItemDirect(line)->GetPrEnabled());
    }
    switch (channel)
    {
    case eKW_ZEL_CHANNEL_M1:
        return IsOn(m_root->GetPgMathematics()->GetPrEnabled());
    case eKW_ZEL_CHANNEL_R1:
        return IsOn(m_root->GetPgVertical()->GetPgReferenceCurve()->GetPrEnabled());
    case eKW_ZEL_CHANNEL_XY:
        return IsOn(m_root->GetPgXY()->GetPrState());
    case eKW_ZEL_CHANNEL_S1:
        return IsOn(m_root->GetPgSerialBus()->GetPrEnabled());
    default:
        return IsOn(m_root->GetPgFFT()->GetPrState());
    }
}

bool CSourceDependencies::SetAvailableSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector,
                                              bool adjust) const
{
    const CSourceActivity activity(m_check, selector);
    const KW_ZEL_CHANNEL present = selector.Get();
    KW_ZEL_CHANNEL firstUsable = eKW_ZEL_CHANNEL_NONE;
    // Without "none", the last value: it is never active, and what it becomes is known only then.
    // To write it twice would count changes where nothing has changed.
    for (INT32 value = 0; value < eKW_ZEL_CHANNEL_NONE; ++value)
    {
        const auto channel = static_cast<KW_ZEL_CHANNEL>(value);
        const bool usable =
            m_application.IsSourceApplicable(channel) && activity.IsSourceActive(channel);
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
