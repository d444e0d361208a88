// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/DbStepping.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsReadings.h"
#include "Names/Channel.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/SpectrumHardware.h"
#include "Spectrum/SpectrumRange.h"

#include <algorithm>

using namespace NNames;

namespace
{
/** Part of the screen's width that one press of a key moves the axis by. */
constexpr double kShift = 0.1;
} // namespace

CSpectrumAxis CPgSpectrum::AxisRules() const
{
    return {m_pHorizontalScaling->Get(), m_pHorizontalStop->GetMax()};
}

t_SpectrumAxis CPgSpectrum::Axis() const
{
    return {m_pHorizontalStart->Get(), m_pHorizontalStop->Get(), m_pHorizontalSpan->Get(),
            m_pHorizontalCenter->Get()};
}

void CPgSpectrum::SetAxis(const t_SpectrumAxis& axis, std::initializer_list<CDbPropBase*> held)
{
    const t_SpectrumAxis min = AxisRules().Minimum(axis);
    const t_SpectrumAxis max = AxisRules().Maximum(axis);
    const auto write = [held](CDbPropNumDouble& number, double low, double value, double high)
    {
        const bool isHeld = std::find(held.begin(), held.end(), &number) != held.end();
        (isHeld ? HoldInRange : WriteInRange)(number, low, value, high);
    };
    write(*m_pHorizontalStart, min.start, axis.start, max.start);
    write(*m_pHorizontalStop, min.stop, axis.stop, max.stop);
    write(*m_pHorizontalSpan, min.span, axis.span, max.span);
    write(*m_pHorizontalCenter, min.center, axis.center, max.center);
    const CSpectrumScreen screen = Screen();
    for (CDbPropNumDouble* const number :
         {m_pHorizontalStart, m_pHorizontalStop, m_pHorizontalCenter})
    {
        screen.UpdateStep(*number);
    }
}

void CPgSpectrum::OnStart()
{
    SetAxis(AxisRules().WithStart(Axis(), m_pHorizontalStart->Get()), {m_pHorizontalStart});
}

void CPgSpectrum::OnStop()
{
    SetAxis(AxisRules().WithStop(Axis(), m_pHorizontalStop->Get()), {m_pHorizontalStop});
}

void CPgSpectrum::OnSpan()
{
    SetAxis(AxisRules().WithSpan(Axis(), m_pHorizontalSpan->Get()), {m_pHorizontalSpan});
}

void CPgSpectrum::OnCenter()
{
    const t_SpectrumAxis axis = AxisRules().WithCenter(Axis(), m_pHorizontalCenter->Get(),
                                                       m_pHorizontalSpan->GetUserValue());
    if (AxisRules().IsLogarithmic())
    {
        SetAxis(axis, {m_pHorizontalCenter});
        return;
    }
    // A span that does not fit about the center comes back with a center about which it does.
    SetAxis(axis, {m_pHorizontalCenter, m_pHorizontalSpan});
}

void CPgSpectrum::OnScaling()
{
    SetAxis(AxisRules().FromOtherScaling(Axis()));
}

void CPgSpectrum::UpdateAxis()
{
    const CSpectrumAxis rules = AxisRules();
    const t_SpectrumAxis axis = Axis();
    if (!rules.IsConsistent(axis))
    {
        SetAxis(rules.FromEnds(axis.start, axis.stop));
        return;
    }
    SetAxis(axis, {m_pHorizontalStart, m_pHorizontalStop, m_pHorizontalSpan, m_pHorizontalCenter});
}

CSpectrumScreen CPgSpectrum::Screen() const
{
    return {AxisRules(), Axis(), {m_pVerticalScaling->Get(), m_pVerticalStop->Get(), AxisUnit()}};
}

KW_ACCEPTANCE CPgSpectrum::StepSpan(INT32 steps)
{
    bool overflow = false;
    const double wanted =
        NStepping::Ladder(NStepping::kLadder125, m_pHorizontalSpan->Get(), steps, overflow);
    const double span =
        BoundReported(m_pHorizontalSpan->GetMin(), wanted, m_pHorizontalSpan->GetMax());
    return std::max<KW_ACCEPTANCE>(span == wanted ? eKW_ACC_OK : eKW_ACC_WARNING,
                                   m_pHorizontalSpan->Set(span));
}

KW_ACCEPTANCE CPgSpectrum::WidenSpan()
{
    return StepSpan(1);
}

KW_ACCEPTANCE CPgSpectrum::NarrowSpan()
{
    return StepSpan(-1);
}

KW_ACCEPTANCE CPgSpectrum::ShiftLeft()
{
    return ShiftAxis(-kShift);
}

KW_ACCEPTANCE CPgSpectrum::ShiftRight()
{
    return ShiftAxis(kShift);
}

KW_ACCEPTANCE CPgSpectrum::ShiftAxis(double share)
{
    const double before = m_pHorizontalCenter->Get();
    SetAxis(AxisRules().Shifted(Axis(), share));
    UpdateBandwidth();
    return m_pHorizontalCenter->Get() != before ? eKW_ACC_OK : eKW_ACC_WARNING;
}

void CPgSpectrum::ShowFullSpan()
{
    SetAxis(AxisRules().FromEnds(0.0, m_pHorizontalStop->GetMax()));
    UpdateBandwidth();
}

void CPgSpectrum::ShowInputBandwidth()
{
    const auto& limit = *At(Input() / Channel::BandwidthLimit);
    const double filter = limit.GetNameInfo().GetNumber(limit.GetAsInt()).value_or(0.0);
    const auto [start, stop, span, center] = CZELDatabaseHelperFFT::GetFrequencyRange(
        m_pHorizontalScaling->Get(), NSpectrumHardware::kLogarithmicStartMinimum,
        At(ZEL::Horizontal / Horizontal::SampleRate)->Get(),
        filter > 0.0 ? filter : NSpectrumHardware::kInputBandwidth);
    SetAxis(AxisRules().FromEnds(start, stop));
    UpdateBandwidth();
}

void CPgSpectrum::ChangeScaling()
{
    const bool isLinear = m_pHorizontalScaling->Get() == eKW_SCALING_TYPE_LINEAR;
    KW_CHECKED(m_pHorizontalScaling->DbSet(isLinear ? eKW_SCALING_TYPE_LOGARITHMIC
                                                    : eKW_SCALING_TYPE_LINEAR));
    OnScaling();
    UpdateBandwidth();
}
