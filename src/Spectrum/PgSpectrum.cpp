// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrum.h"

#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "ErrorReport.h"
#include "Root/PgControl.h"
#include "Root/PgSMMode.h"
#include "Root/PgZEL.h"
#include "Rules/RuleDispatch.h"
#include "Spectrum/PgDDC.h"
#include "Spectrum/PgFFT.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgSpectrumCursors.h"
#include "Spectrum/PgSpectrumMarkers.h"
#include "Timebase/PgHorizontal.h"

#include <algorithm>

KW_ACCEPTANCE CPgSpectrum::OnPropertySet(const CDbPropBase* property)
{
    using S = CPgSpectrum;
    const NRules::t_DispatchRow<CPgSpectrum> rows[] = {
        {{m_pHorizontalStart}, {&S::OnStart, &S::UpdateBandwidth}},
        {{m_pHorizontalStop}, {&S::OnStop, &S::UpdateBandwidth}},
        {{m_pHorizontalSpan}, {&S::OnSpan, &S::UpdateBandwidth}},
        {{m_pHorizontalCenter}, {&S::OnCenter, &S::UpdateBandwidth}},
        {{m_pHorizontalScaling}, {&S::OnScaling, &S::UpdateBandwidth}},
        {{m_pMode}, {&S::EnterFunction, &S::UpdateBandwidth}},
        {{m_pFFTFrequencySpan, m_pAutoRBW, m_pRBWRatio}, {&S::UpdateBandwidth}},
        {{m_pRBW}, {&S::OnBandwidth}},
        {{m_pWindowType}, {&S::UpdateWindow}},
        {{m_pSource}, {&S::OnSource}},
        {{m_pMagnitudeUnit, m_pImpedance, m_pVerticalScaling, m_pVerticalRefPoint,
          m_pVerticalRefLevel},
         {&S::UpdateMagnitudeAxis}},
    };
    NRules::Dispatch(*this, rows, property);
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (!IsAnalysis() && (property == m_pHorizontalCenter || property == m_pHorizontalSpan))
    {
        KW_REPORT_ERROR(QStringLiteral("center/span was changed in basic fft"), __FILE__);
        code = eKW_ACC_WARNING;
    }
    return std::max(code, CPgSpectrumBase::OnPropertySet(property));
}

KW_ACCEPTANCE CPgSpectrum::OnFunction(const CDbFunction* function)
{
    const std::pair<const CDbFunction*, t_Step> actions[] = {
        {m_pResetNextRun, &CPgSpectrum::ResetTraces},
        {m_pHorizontalFullSpan, &CPgSpectrum::ShowFullSpan},
        {m_pHorizontalAutoSet, &CPgSpectrum::ShowInputBandwidth},
        {m_pVerticalAutoSet, &CPgSpectrum::ShowInputRange},
        {m_pChangeGrid, &CPgSpectrum::ChangeScaling},
    };
    for (const auto& [action, step] : actions)
    {
        if (function == action)
        {
            (this->*step)();
            return eKW_ACC_OK;
        }
    }
    constexpr double kShift = 0.1;
    const bool isRange =
        function == m_pOnPressHorizontalRangeLeft || function == m_pOnPressHorizontalRangeRight;
    return isRange ? StepSpan(function == m_pOnPressHorizontalRangeLeft ? 1 : -1)
                   : ShiftAxis(function == m_pOnPressHorizontalPosLeft ? -kShift : kShift);
}

void CPgSpectrum::UpdateGroup()
{
    UpdateWindow();
    UpdateAxis();
    UpdateBandwidth();
    UpdateMagnitudeAxis();
    // Before any dependency runs: the timebase looks at the down-converter, which still stands as
    // the settings before a recall had it.
    UpdateDownConverter();
}

/** Start and stop lead: a file that names another number of the axis alone would lose it. */
std::vector<CDbPropertyGroup::t_Twins> CPgSpectrum::GetTwins() const
{
    return {{m_pHorizontalStart, m_pHorizontalSpan},
            {m_pHorizontalStart, m_pHorizontalCenter},
            {m_pAutoRBW, m_pRBW}};
}

void CPgSpectrum::OnTreeCreated()
{
    // Before the markers register theirs: what moves the screen moves the reference marker's steps.
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        RegisterDependencies(*root);
    }
    CPgSpectrumBase::OnTreeCreated();
}

void CPgSpectrum::RegisterDependencies(CPgZEL& root)
{
    CDependencies& dependencies = root.GetDependencies();
    CPgDDC* const ddc = root.GetPgDDC();
    CPgFFT* const fft = root.GetPgFFT();
    const auto probe = [&root](INT32 i)
    { return root.GetPgVertical()->GetPgChannel()->ItemDirect(i); };
    dependencies.Add(
        *this,
        {m_pSource, probe(0)->GetPrProbeType(), probe(0)->GetPrProbeUserUnit(),
         probe(1)->GetPrProbeType(), probe(1)->GetPrProbeUserUnit(), probe(2)->GetPrProbeType(),
         probe(2)->GetPrProbeUserUnit(), probe(3)->GetPrProbeType(),
         probe(3)->GetPrProbeUserUnit()},
        [this] { UpdateInput(); }, QStringLiteral("Spectrum/InputUnit"));
    dependencies.Add(
        *this, {fft->GetPrMinimumRBW(), fft->GetPrMaximumRBW()}, [this] { UpdateBandwidth(); },
        QStringLiteral("Spectrum/RBW"));
    dependencies.Add(
        *this,
        {m_pMode, m_pHorizontalStart, m_pHorizontalStop, m_pHorizontalSpan, m_pHorizontalCenter},
        [this] { UpdateDownConverter(); }, QStringLiteral("Spectrum/DDC"));
    dependencies.Add(
        *this,
        {m_pMode, m_pFFTFrequencySpan, m_pRBW, m_pWindowLengthFactor, ddc->GetPrState(),
         ddc->GetPrSampleDezimationFactor(), root.GetPgHorizontal()->GetPrSampleRate()},
        [this] { UpdateFFT(); }, QStringLiteral("Spectrum/FFT"));
    dependencies.Add(
        *this, {fft->GetPrAveragesDone(), fft->GetPrAverageLength()},
        [this] { UpdateAverageComplete(); }, QStringLiteral("Spectrum/AverageComplete"));
    dependencies.Add(
        *this,
        {m_pHorizontalScaling, m_pHorizontalStart, m_pHorizontalStop, m_pVerticalScaling,
         m_pVerticalStop},
        [this]
        {
            m_pSpectrumCursors->UpdateGroup();
            m_pSpectrumMarkers->GetPgReferenceMarker()->UpdateGroup();
            m_pSpectrumMarkers->UpdateGroup();
        },
        QStringLiteral("SpectrumCursor/Horizontal"));
}

void CPgSpectrum::EnterFunction()
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    CPgSMMode* const mode = root->GetPgControl()->GetPgSMMode();
    KW_CHECKED(mode->GetPrOperationMode()->DbSet(eKW_ZEL_OPERATION_MODE_SCOPE_YT));
    KW_CHECKED(mode->GetPrSwitchMode()->Set());
}

void CPgSpectrum::ResetTraces()
{
    for (CDbPropEnum<KW_ONOFF>* const result :
         {m_pClippingNormal, m_pClippingMaxHold, m_pClippingMinHold, m_pClippingAverage})
    {
        KW_CHECKED(result->DbSet(eKW_ONOFF_OFF));
    }
    if (const CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetPgFFT()->ResetAverage();
    }
}

void CPgSpectrum::UpdateAverageComplete()
{
    const CPgFFT* const fft = CPgZEL::Of(*this)->GetPgFFT();
    const bool isComplete = fft->GetPrAveragesDone()->Get() >= fft->GetPrAverageLength()->Get();
    KW_CHECKED(m_pAverageComplete->DbSet(isComplete ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
}
