// SPDX-License-Identifier: MIT
#include "Rules/ChannelRules.h"

#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsUnits.h"
#include "Rules/SourceDependencies.h"

using namespace NNames;
using namespace NApplicationDefinitions;

namespace
{
/** Accepts channels by their kind. */
class CSourceKinds final : public IApplicationOnSources
{
public:
    CSourceKinds(UINT32 kinds, KW_ZEL_CHANNEL except) : m_kinds(kinds), m_except(except) {}

    bool IsSourceApplicable(KW_ZEL_CHANNEL channel) const override
    {
        return channel != m_except && (m_kinds & KindOf(channel)) != 0;
    }

private:
    static UINT32 KindOf(KW_ZEL_CHANNEL channel)
    {
        switch (NRules::TraceTypeOf(channel))
        {
        case eKW_ZEL_TRACE_TYPE_ANALOG:
            return NRules::eSOURCES_ANALOG;
        case eKW_ZEL_TRACE_TYPE_MATHEMATICS:
            return NRules::eSOURCES_MATHEMATICS;
        case eKW_ZEL_TRACE_TYPE_REFERENCE:
            return NRules::eSOURCES_REFERENCE;
        case eKW_ZEL_TRACE_TYPE_FFT:
            return NRules::eSOURCES_FFT;
        case eKW_ZEL_TRACE_TYPE_DIGITAL:
            return NRules::eSOURCES_DIGITAL;
        default:
            return 0;
        }
    }

    UINT32 m_kinds;
    KW_ZEL_CHANNEL m_except;
};

NRules::t_Screen ScreenAround(double scale, double position, KW_UNIT unit)
{
    const double top = (NRules::kVerticalDivisions / 2.0 - position) * scale;
    return {top - scale * NRules::kVerticalDivisions, top, scale, unit};
}
} // namespace

namespace NRules
{
void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds)
{
    OfferSources(selector, kinds, eKW_ZEL_CHANNEL_NONE);
}

void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds, KW_ZEL_CHANNEL except)
{
    const CSourceKinds application(kinds, except);
    CSourceDependencies(application, eSOURCE_ACTIVITY_SWITCHED_ON)
        .SetAvailableSources(selector, true);
}

void RestrictSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds)
{
    const CSourceKinds application(kinds, eKW_ZEL_CHANNEL_NONE);
    CSourceDependencies(application, eSOURCE_ACTIVITY_SWITCHED_ON)
        .SetAvailableSources(selector, false);
}

void OfferInputs(CDbPropEnumIntAccess& selector)
{
    const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, selector.GetParent());
    INT32 lowest = selector.GetAsInt();
    for (INT32 value = selector.GetEnumSize() - 1; value >= 0; --value)
    {
        const bool isOn = activity.IsSourceActive(
            MapAnalogChannelToApplicationChannel(static_cast<KW_ZEL_ANALOG_CHANNEL>(value)));
        KW_CHECKED(selector.EnableValue(value, isOn));
        lowest = isOn ? value : lowest;
    }
    KW_CHECKED(selector.FollowWish(lowest));
    selector.UpdateAvailability(eAVAILABILITY_NOT_AVAILABLE);
}

INT32 ConvertersPerChannel(KW_ZEL_MODE mode)
{
    switch (mode)
    {
    case eKW_ZEL_MODE_ZEL_B:
        return 2;
    case eKW_ZEL_MODE_ZEL_C:
        return 4;
    default:
        return 1;
    }
}

std::vector<KW_ZEL_ANALOG_CHANNEL> ChannelsDroppedBy(const CDbPropertyGroup& group,
                                                     KW_ZEL_MODE mode)
{
    const CSourceActivity activity(eSOURCE_ACTIVITY_SWITCHED_ON, &group);
    std::vector<KW_ZEL_ANALOG_CHANNEL> dropped;
    INT32 served = -1;
    for (INT32 value = eKW_ZEL_ANALOG_CHANNEL_C1; value <= eKW_ZEL_ANALOG_CHANNEL_C4; ++value)
    {
        const auto channel = static_cast<KW_ZEL_ANALOG_CHANNEL>(value);
        if (!activity.IsSourceActive(MapAnalogChannelToApplicationChannel(channel)))
        {
            continue;
        }
        const INT32 shared = value / ConvertersPerChannel(mode);
        if (shared == served)
        {
            dropped.push_back(channel);
        }
        served = shared;
    }
    return dropped;
}

KW_ZEL_TRACE_TYPE TraceTypeOf(KW_ZEL_CHANNEL channel)
{
    if (IsAnalogChannel(channel))
    {
        return eKW_ZEL_TRACE_TYPE_ANALOG;
    }
    switch (channel)
    {
    case eKW_ZEL_CHANNEL_M1:
        return eKW_ZEL_TRACE_TYPE_MATHEMATICS;
    case eKW_ZEL_CHANNEL_R1:
        return eKW_ZEL_TRACE_TYPE_REFERENCE;
    case eKW_ZEL_CHANNEL_XY:
        return eKW_ZEL_TRACE_TYPE_XY;
    case eKW_ZEL_CHANNEL_S1:
        return eKW_ZEL_TRACE_TYPE_BUS;
    case eKW_ZEL_CHANNEL_FFT1:
    case eKW_ZEL_CHANNEL_FFT2:
    case eKW_ZEL_CHANNEL_FFT3:
    case eKW_ZEL_CHANNEL_FFT4:
        return eKW_ZEL_TRACE_TYPE_FFT;
    default:
        return eKW_ZEL_TRACE_TYPE_DIGITAL;
    }
}

std::optional<t_Screen> ScreenOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel)
{
    switch (TraceTypeOf(channel))
    {
    case eKW_ZEL_TRACE_TYPE_ANALOG:
    {
        const auto c = group.Find(ZEL::Vertical / Vertical::Channel / channel);
        return t_Screen{c.At(Channel::Bottom)->Get(), c.At(Channel::Top)->Get(),
                        c.At(Channel::Scale)->Get(), c.At(Channel::ProbeUnit)->Get()};
    }
    case eKW_ZEL_TRACE_TYPE_MATHEMATICS:
    {
        const auto m = group.Find(ZEL::Mathematics);
        return ScreenAround(m.At(Mathematics::Scale)->Get(), m.At(Mathematics::Position)->Get(),
                            m.At(Mathematics::Unit)->Get());
    }
    case eKW_ZEL_TRACE_TYPE_REFERENCE:
    {
        constexpr auto reference = ZEL::Vertical / Vertical::ReferenceCurve;
        const auto r = group.Find(reference);
        return ScreenAround(r.At(ReferenceCurve::Scale)->Get(),
                            r.At(ReferenceCurve::Position)->Get(),
                            group
                                .At(reference / ReferenceCurve::ReferenceCurveAttributes /
                                    ReferenceCurveAttributes::Unit)
                                ->Get());
    }
    default:
        return std::nullopt;
    }
}

void PutOnScreen(CDbPropNumDouble& level, const t_Screen& screen)
{
    KW_CHECKED(level.SetUnit(screen.unit));
    SetLimits(level, screen.bottom, screen.top);
    KW_CHECKED(level.SetStep(StepOf(screen.division)));
}

bool RestsOn(KW_ZEL_CHANNEL channel, const CDbPropBase& probe)
{
    return channel == eKW_ZEL_CHANNEL_M1 || channel == IndexInArray(*probe.GetParent());
}

KW_UNIT UnitOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel)
{
    const std::optional<t_Screen> screen = ScreenOf(group, channel);
    return screen ? screen->unit : eKW_UNIT_NONE;
}
} // namespace NRules
