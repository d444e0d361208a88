// SPDX-License-Identifier: MIT
#include "Rules/RuleHelpers.h"

#include "Analysis/PgMathematics.h"
#include "Channels/PgLogic.h"
#include "Channels/PgLogicChannel.h"
#include "Channels/PgReferenceCurve.h"
#include "Channels/PgReferenceCurveAttributes.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "Channels/PgaLogicChannel.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbStepping.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "Root/PgZEL.h"
#include "Rules/SourceDependencies.h"
#include "Spectrum/PgFFT.h"

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
double RoundStep(double step)
{
    return NStepping::FloorToLadder125(step);
}

INT32 IndexInArray(const CDbPropertyGroup& item)
{
    const auto* const container = dynamic_cast<const CDbContainerBase*>(item.GetParent());
    return container != nullptr ? container->PositionOf(item) : 0;
}

void UpdateSubtree(CDbPropertyGroup& group)
{
    group.VisitChildrenFirst([](CDbPropertyGroup& below) { below.UpdateGroup(); });
}

void WriteUserDefaults(CDbPropertyGroup& group)
{
    group.WriteDefaults(eSAVERECALL_SETTINGS);
}

KW_ACCEPTANCE MovePartner(const CDbPropNumDouble& moved, CDbPropNumDouble& partner,
                          double difference)
{
    return MoveTo(partner, moved.Get() + difference);
}

void WriteResult(CDbPropNumDouble& result, double value)
{
    const bool inRange = value >= result.GetDeclaredMin() && value <= result.GetDeclaredMax();
    KW_CHECKED(inRange ? result.DbSet(value) : result.SetValidity(eKW_VALIDITY_INVALID));
}

void InvalidateResults(CDbPropertyGroup& group)
{
    for (const auto& property : group.Properties())
    {
        if (property->GetObjectType() == eOBJECTTYPE_RESULT)
        {
            KW_CHECKED(property->SetValidity(eKW_VALIDITY_INVALID));
        }
    }
}

void OfferSources(CDbPropEnum<KW_ZEL_CHANNEL>& selector, UINT32 kinds, KW_ZEL_CHANNEL except)
{
    const CSourceKinds application(kinds, except);
    CSourceDependencies(application, eSOURCE_ACTIVITY_SWITCHED_ON)
        .SetAvailableSources(selector, true);
}

void AddSourceDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                         const QString& name)
{
    CPgZEL* const root = CPgZEL::Of(owner);
    if (root == nullptr)
    {
        return;
    }
    const auto analog = [root](INT32 i)
    { return root->GetPgVertical()->GetPgChannel()->ItemDirect(i)->GetPrEnabled(); };
    const auto digital = [root](INT32 i)
    { return root->GetPgLogic()->GetPgLogicChannel()->ItemDirect(i)->GetPrEnabled(); };
    root->GetDependencies().Add(owner,
                                {analog(0), analog(1), analog(2), analog(3),
                                 root->GetPgLogic()->GetPrEnabled(), digital(0), digital(1),
                                 digital(2), digital(3), digital(4), digital(5), digital(6),
                                 digital(7), root->GetPgMathematics()->GetPrEnabled(),
                                 root->GetPgVertical()->GetPgReferenceCurve()->GetPrEnabled(),
                                 root->GetPgFFT()->GetPrState()},
                                update, name);
}

void AddScreenDependency(CDbPropertyGroup& owner, const std::function<void()>& update,
                         const QString& name)
{
    CPgZEL* const root = CPgZEL::Of(owner);
    if (root == nullptr)
    {
        return;
    }
    const auto channel = [root](INT32 i)
    { return root->GetPgVertical()->GetPgChannel()->ItemDirect(i); };
    const CPgReferenceCurve* const reference = root->GetPgVertical()->GetPgReferenceCurve();
    root->GetDependencies().Add(
        owner,
        {channel(0)->GetPrTop(), channel(0)->GetPrBottom(), channel(0)->GetPrProbeUnit(),
         channel(1)->GetPrTop(), channel(1)->GetPrBottom(), channel(1)->GetPrProbeUnit(),
         channel(2)->GetPrTop(), channel(2)->GetPrBottom(), channel(2)->GetPrProbeUnit(),
         channel(3)->GetPrTop(), channel(3)->GetPrBottom(), channel(3)->GetPrProbeUnit(),
         reference->GetPrScale(), reference->GetPrPosition(),
         reference->GetPgReferenceCurveAttributes()->GetPrUnit()},
        update, name);
    // The mathematics channel follows the others: an entry of its own runs after they have.
    const CPgMathematics* const mathematics = root->GetPgMathematics();
    root->GetDependencies().Add(
        owner, {mathematics->GetPrScale(), mathematics->GetPrPosition(), mathematics->GetPrUnit()},
        update, name);
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

std::optional<t_Screen> ScreenOf(const CPgZEL& root, KW_ZEL_CHANNEL channel)
{
    switch (TraceTypeOf(channel))
    {
    case eKW_ZEL_TRACE_TYPE_ANALOG:
    {
        const CPgChannel* const c = root.GetPgVertical()->GetPgChannel()->ItemDirect(channel);
        return t_Screen{c->GetPrBottom()->Get(), c->GetPrTop()->Get(), c->GetPrScale()->Get(),
                        c->GetPrProbeUnit()->Get()};
    }
    case eKW_ZEL_TRACE_TYPE_MATHEMATICS:
    {
        const CPgMathematics* const m = root.GetPgMathematics();
        return ScreenAround(m->GetPrScale()->Get(), m->GetPrPosition()->Get(),
                            m->GetPrUnit()->Get());
    }
    case eKW_ZEL_TRACE_TYPE_REFERENCE:
    {
        const CPgReferenceCurve* const r = root.GetPgVertical()->GetPgReferenceCurve();
        return ScreenAround(r->GetPrScale()->Get(), r->GetPrPosition()->Get(),
                            r->GetPgReferenceCurveAttributes()->GetPrUnit()->Get());
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

KW_UNIT UnitOf(const CPgZEL* root, KW_ZEL_CHANNEL channel)
{
    const std::optional<t_Screen> screen =
        root != nullptr ? ScreenOf(*root, channel) : std::nullopt;
    return screen ? screen->unit : eKW_UNIT_NONE;
}
} // namespace NRules
