// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrum.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "ErrorReport.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Channel.h"
#include "Names/Control.h"
#include "Names/DDC.h"
#include "Names/FFT.h"
#include "Names/Horizontal.h"
#include "Names/SMMode.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Spectrum/PgFFT.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgSpectrumCursors.h"
#include "Spectrum/PgSpectrumMarkers.h"

using namespace NNames;

t_Couplings CPgSpectrum::Rules() const
{
    using S = CPgSpectrum;
    static constexpr auto rows = Table<Names>(
        On(Names::HorizontalStart) >> Do<&S::OnStart, &S::UpdateBandwidth>,
        On(Names::HorizontalStop) >> Do<&S::OnStop, &S::UpdateBandwidth>,
        On(Names::HorizontalSpan) >> Do<&S::OnSpan, &S::UpdateBandwidth>,
        On(Names::HorizontalCenter) >> Do<&S::OnCenter, &S::UpdateBandwidth>,
        On(Names::HorizontalScaling) >> Do<&S::OnScaling, &S::UpdateBandwidth>,
        On(Names::Mode) >> Do<&S::EnterFunction, &S::UpdateBandwidth>,
        On(Names::FFTFrequencySpan, Names::AutoRBW, Names::RBWRatio) >> Do<&S::UpdateBandwidth>,
        On(Names::RBW) >> Do<&S::OnBandwidth>, On(Names::Source) >> Do<&S::OnSource>,
        On(Names::HorizontalCenter, Names::HorizontalSpan) >> Do<&S::ReportAxisOfBasicFFT>,

        On(Names::ResetNextRun) >> Do<&S::ResetTraces>,
        On(Names::HorizontalFullSpan) >> Do<&S::ShowFullSpan>,
        On(Names::HorizontalAutoSet) >> Do<&S::ShowInputBandwidth>,
        On(Names::VerticalAutoSet) >> Do<&S::ShowInputRange>,
        On(Names::ChangeGrid) >> Do<&S::ChangeScaling>,
        On(Names::OnPressHorizontalRangeLeft) >> Do<&S::WidenSpan>,
        On(Names::OnPressHorizontalRangeRight) >> Do<&S::NarrowSpan>,
        On(Names::OnPressHorizontalPosLeft) >> Do<&S::ShiftLeft>,
        On(Names::OnPressHorizontalPosRight) >> Do<&S::ShiftRight>,

        On(ZEL::FFT / FFT::Source) >> Do<&S::FollowSourceOfFFT>,
        On(ZEL::DDC / NNames::DDC::Source) >> Do<&S::FollowSourceOfDownConverter>,
        On(ZEL::DDC / NNames::DDC::State) >> Do<&S::KeepDownConverter>,

        On(Names::WindowType) >> Derive<&S::UpdateWindow>,
        // The down-converter before any dependant: the timebase looks at it, and after a recall it
        // still stands as the settings before had it.
        Derive<&S::UpdateAxis, &S::UpdateBandwidth, &S::UpdateMagnitudeAxis,
               &S::UpdateDownConverter>,
        On(Names::MagnitudeUnit, Names::VerticalScaling) >> Do<&S::ConvertLevels>,
        On(Names::MagnitudeUnit, Names::Impedance, Names::VerticalScaling, Names::VerticalRefPoint,
           Names::VerticalRefLevel) >>
            Do<&S::UpdateMagnitudeAxis>,

        NRules::kSwitched >> Derive<&S::OfferSources>,
        // First what the probe and the source mean, then the down-converter, then the FFT: each
        // once, on settled numbers.
        Changed(Names::Source, ZEL::Vertical / Vertical::Channel / each / Channel::ProbeType,
                ZEL::Vertical / Vertical::Channel / each / Channel::ProbeUserUnit) >>
            Settle<&S::UpdateInput>,
        Changed(ZEL::FFT / FFT::MinimumRBW, ZEL::FFT / FFT::MaximumRBW) >>
            Settle<&S::UpdateBandwidth>,
        Changed(Names::Mode, Names::HorizontalStart, Names::HorizontalStop, Names::HorizontalSpan,
                Names::HorizontalCenter, ZEL::FFT / FFT::State) >>
            Settle<&S::UpdateDownConverter>,
        Changed(Names::Mode, Names::FFTFrequencySpan, Names::RBW, Names::WindowLengthFactor,
                ZEL::DDC / NNames::DDC::State, ZEL::DDC / NNames::DDC::SampleDezimationFactor,
                ZEL::Horizontal / Horizontal::SampleRate) >>
            Settle<&S::UpdateFFT>,
        // What was measured with other settings; behind all that may still move these.
        Changed(Names::Mode, Names::Source, Names::InputUnit, Names::WindowType,
                Names::FFTFrequencySpan, Names::RBW, Names::HorizontalStart,
                Names::HorizontalStop) >>
            Do<&S::DropSpectra>,
        Changed(Names::MagnitudeUnit, Names::VerticalScaling, Names::Impedance,
                Names::TraceActive) >>
            Do<&S::DropMarkers>,
        NRules::kProbes >> Do<&S::DropOfProbe>,
        Changed(ZEL::FFT / FFT::AveragesDone, ZEL::FFT / FFT::AverageLength) >>
            Settle<&S::UpdateAverageComplete>,
        Changed(Names::HorizontalScaling, Names::HorizontalStart, Names::HorizontalStop,
                Names::VerticalScaling, Names::VerticalStop) >>
            Settle<&S::UpdateLines>,

        // Start and stop lead: a file that names another number of the axis alone would lose it.
        Twins(Names::HorizontalStart, Names::HorizontalSpan),
        Twins(Names::HorizontalStart, Names::HorizontalCenter), Twins(Names::AutoRBW, Names::RBW));
    return rows;
}

KW_ACCEPTANCE CPgSpectrum::ReportAxisOfBasicFFT()
{
    if (IsAnalysis())
    {
        return eKW_ACC_OK;
    }
    KW_REPORT_ERROR(QStringLiteral("center/span was changed in basic fft"), __FILE__);
    return eKW_ACC_WARNING;
}

void CPgSpectrum::UpdateLines()
{
    m_pSpectrumCursors->UpdateGroup();
    m_pSpectrumMarkers->GetPgReferenceMarker()->UpdateGroup();
    m_pSpectrumMarkers->UpdateGroup();
}

void CPgSpectrum::EnterFunction()
{
    KW_CHECKED(At(ZEL::Control / Control::SMMode / SMMode::OperationMode)
                   ->DbSet(eKW_ZEL_OPERATION_MODE_SCOPE_YT));
    KW_CHECKED(At(ZEL::Control / Control::SMMode / SMMode::SwitchMode)->Set());
}

void CPgSpectrum::ResetTraces()
{
    DropMeasured();
    At(ZEL::FFT)->ResetAverage();
}

void CPgSpectrum::DropSpectra()
{
    ResetTraces();
    DropMarkers();
}

void CPgSpectrum::DropMarkers()
{
    m_pSpectrumMarkers->DropMeasuredBelow();
}

void CPgSpectrum::DropOfProbe(const CDbPropBase* probe)
{
    if (NRules::RestsOn(m_pSource->Get(), *probe))
    {
        DropSpectra();
    }
}

void CPgSpectrum::UpdateAverageComplete()
{
    const bool isComplete =
        At(ZEL::FFT / FFT::AveragesDone)->Get() >= At(ZEL::FFT / FFT::AverageLength)->Get();
    KW_CHECKED(m_pAverageComplete->DbSet(isComplete ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
}
