// SPDX-License-Identifier: MIT
#include "Channels/PgChannel.h"

#include "Channels/PgChannelSourceTypes.h"
#include "Channels/PgChannelType.h"
#include "Channels/PgLevels.h"
#include "Channels/VerticalHardware.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperVertical.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "Mathematics/UnitRules.h"
#include "Names/Channel.h"
#include "Names/EdgeTriggerLevel.h"
#include "Names/HysteresisLevel.h"
#include "Names/Levels.h"
#include "Names/Simulation.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

using namespace NNames;
using namespace NVerticalHardware;

t_Couplings CPgChannel::Rules() const
{
    using C = CPgChannel;
    constexpr auto hysteresis = Names::Levels / Levels::HysteresisLevel / each;
    constexpr auto edge = Names::Levels / Levels::EdgeTriggerLevel / each;
    static constexpr auto rows = Table<Names>(
        On(Names::ProbeType, Names::ProbeUserFactor) >> Do<&C::KeepPicture>,
        OnAny() >> Derive<&C::UpdateType, &C::UpdateUse, &C::UpdateProbe, &C::UpdateUnits,
                          &C::UpdateScreen, &C::LimitLevels>,
        On(Names::ResetPosition) >> Do<&C::ResetPosition, &C::UpdateGroup>,
        On(Names::Levels / Levels::ResetLevels, hysteresis / HysteresisLevel::NoiseReject,
           edge / EdgeTriggerLevel::LevelSet, edge / EdgeTriggerLevel::Level) >>
            Do<&C::LimitLevels>,
        Changed(ZEL::Simulation / Simulation::Enabled) >> Derive<&C::UpdateType>);
    return rows;
}

void CPgChannel::ResetPosition()
{
    KW_CHECKED(m_pPosition->DbSet(0.0));
    KW_CHECKED(m_pOffset->DbSet(0.0));
}

void CPgChannel::UpdateType()
{
    const bool isSimulated = At(ZEL::Simulation / Simulation::Enabled)->Get() == eKW_ONOFF_ON;
    m_pChannelType->Identify(NRules::IndexInArray(*this), isSimulated);
}

void CPgChannel::UpdateUse()
{
    m_pChannelSourceTypes->SetUsable(m_pEnabled->Get() == eKW_ONOFF_ON);
}

CZELDatabaseHelperCommon::ProbeSettings CPgChannel::Probe() const
{
    return CZELDatabaseHelperCommon::GetProbeSettingsScope(
        {m_pProbeType->Get(), m_pProbeUserFactor->Get(), m_pProbeUserUnit->Get()});
}

void CPgChannel::KeepPicture()
{
    const double ratio = Probe().factor / m_pProbeFactor->Get();
    if (ratio != 1.0)
    {
        NRules::Rescale(*m_pScale, ratio);
        NRules::Rescale(*m_pOffset, ratio);
        m_pLevels->Rescale(ratio);
    }
}

void CPgChannel::UpdateProbe()
{
    using t_Helper = CZELDatabaseHelperCommon;
    const t_Helper::ProbeSettings probe = Probe();
    KW_CHECKED(m_pProbeFactor->DbSet(probe.factor));
    KW_CHECKED(m_pProbeUnit->DbSet(t_Helper::GetProbeUnit(probe.unit)));
    NRules::SetLimits(*m_pScale, kSmallestScale * probe.factor, kLargestScale * probe.factor);
    NRules::SetLimits(*m_pOffset, -kLargestOffset * probe.factor, kLargestOffset * probe.factor);
}

void CPgChannel::UpdateUnits()
{
    const KW_UNIT unit = m_pProbeUnit->Get();
    KW_CHECKED(m_pScale->SetUnit(NUnits::PerDivision(unit)));
    for (CDbPropNumDouble* const level : {m_pOffset, m_pRange, m_pTop, m_pBottom})
    {
        KW_CHECKED(level->SetUnit(unit));
    }
}

void CPgChannel::UpdateScreen()
{
    using t_Helper = CZELDatabaseHelperVertical;
    const double scale = m_pScale->Get();
    const double range = t_Helper::GetPhysicalValueRange(scale, NRules::kVerticalDivisions);
    // The upper edge is what would be the middle if the trace stood half a screen lower.
    const double top = t_Helper::GetPhysicalValueOffset(
        m_pOffset->Get(), m_pPosition->Get() - NRules::kVerticalDivisions / 2.0, scale);
    KW_CHECKED(m_pOffset->SetStep(NRules::StepOf(scale)));
    KW_CHECKED(m_pRange->DbSet(range));
    KW_CHECKED(m_pTop->DbSet(top));
    KW_CHECKED(m_pBottom->DbSet(top - range));
}

void CPgChannel::LimitLevels()
{
    m_pLevels->FollowScreen(
        {m_pBottom->Get(), m_pTop->Get(), m_pScale->Get(), m_pProbeUnit->Get()});
}
