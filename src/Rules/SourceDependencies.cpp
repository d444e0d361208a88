// SPDX-License-Identifier: MIT
#include "Rules/SourceDependencies.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsOnOff.h"
#include "Mathematics/MathExpression.h"
#include "Names/Channel.h"
#include "Names/FFT.h"
#include "Names/Logic.h"
#include "Names/LogicChannel.h"
#include "Names/Mathematics.h"
#include "Names/ReferenceCurve.h"
#include "Names/SerialBus.h"
#include "Names/Vertical.h"
#include "Names/XY.h"
#include "Names/ZEL.h"

#include <algorithm>
#include <array>

using namespace NApplicationDefinitions;
using namespace NNames;

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
    const auto isOn = [this](const auto& way)
    {
        const CDbPropEnum<KW_ONOFF>* const state = m_group != nullptr ? m_group->At(way) : nullptr;
        return state != nullptr && state->Get() == eKW_ONOFF_ON; // null in a tree of another kind
    };
    if (IsAnalogChannel(channel))
    {
        return isOn(ZEL::Vertical / Vertical::Channel / channel / Channel::Enabled);
    }
    if (IsDigitalChannel(channel))
    {
        const INT32 line = channel - eKW_ZEL_CHANNEL_D0;
        return isOn(ZEL::Logic / Logic::Enabled) &&
               isOn(ZEL::Logic / Logic::LogicChannel / line / LogicChannel::Enabled);
    }
    switch (channel)
    {
    case eKW_ZEL_CHANNEL_M1:
        return isOn(ZEL::Mathematics / Mathematics::Enabled) && IsMathematicsFed();
    case eKW_ZEL_CHANNEL_R1:
        return isOn(ZEL::Vertical / Vertical::ReferenceCurve / ReferenceCurve::Enabled);
    case eKW_ZEL_CHANNEL_XY:
        return isOn(ZEL::XY / XY::State);
    case eKW_ZEL_CHANNEL_S1:
        return isOn(ZEL::SerialBus / SerialBus::Enabled);
    default:
        return isOn(ZEL::FFT / FFT::State);
    }
}

bool CSourceActivity::IsMathematicsFed() const
{
    const auto isOn = [this](KW_ZEL_CHANNEL channel) { return IsSwitchedOn(channel); };
    if (m_group->At(ZEL::Mathematics / Mathematics::UseExpression)->Get() == eKW_ONOFF_ON)
    {
        KW_MathElements elements; // also of an expression that is not complete
        KW_MathError error;
        KW_ReadMathElements(m_group->At(ZEL::Mathematics / Mathematics::Expression)->Get(),
                            elements, error);
        return std::all_of(elements.begin(), elements.end(),
                           [isOn](const KW_MathElement& element) {
                               return element.type != eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE ||
                                      isOn(element.source);
                           });
    }
    // The sources of an operation are among those that are on, if there is any.
    constexpr std::array kSources{eKW_ZEL_CHANNEL_C1, eKW_ZEL_CHANNEL_C2, eKW_ZEL_CHANNEL_C3,
                                  eKW_ZEL_CHANNEL_C4, eKW_ZEL_CHANNEL_R1};
    return std::any_of(kSources.begin(), kSources.end(), isOn);
}

bool CSourceDependencies::SetAvailableSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector,
                                              bool adjust) const
{
    const CSourceActivity activity(m_check, selector.GetParent());
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
    if (adjust && anyUsable)
    {
        KW_CHECKED(selector.FollowWish(firstUsable));
    }
    selector.UpdateAvailability(eAVAILABILITY_NOT_AVAILABLE);
    return anyUsable && (adjust || canStay);
}
