// SPDX-License-Identifier: MIT
#include "CheckedAccess.h"
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "KWMath.h"
#include "Names/Channel.h"
#include "Names/DDC.h"
#include "Names/FFT.h"
#include "Names/Trigger.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"
#include "Spectrum/PgReferenceMarker.h"
#include "Spectrum/PgSpectrum.h"
#include "Spectrum/PgSpectrumCursors.h"
#include "Spectrum/PgSpectrumMarkers.h"
#include "Spectrum/PgaSpectrumCursor.h"
#include "Spectrum/SpectrumHardware.h"

#include <cmath>
#include <limits>

using namespace NNames;

namespace
{
bool IsAmplitude(KW_UNIT unit)
{
    return unit == eKW_UNIT_LEVEL_V || unit == eKW_UNIT_LEVEL_A;
}

/** `plain` where `value` is that but for what logarithms cost of the last digits, else `value`
    without those digits: there and back a level must be what it was, on every processor. */
double WithoutDust(double value, double plain, double dust, double fine)
{
    return std::fabs(value - plain) <= dust ? plain : fine;
}

/** A level that was set has no more than nine decimals. */
double RoundedDecibels(double decibels)
{
    const auto rounded = [decibels](double perDecibel)
    { return std::round(decibels * perDecibel) / perDecibel; };
    return WithoutDust(decibels, rounded(1e9), 4e-12, rounded(1e12));
}

/** An amplitude that was set has no more than nine digits. */
double RoundedAmplitude(double amplitude)
{
    const auto rounded = [amplitude](int digits)
    { return QString::number(amplitude, 'g', digits).toDouble(); };
    return WithoutDust(amplitude, rounded(9), amplitude * 5e-13, rounded(15));
}
} // namespace

void CPgSpectrum::FollowSourceOfFFT()
{
    SelectSource(CZELDatabaseHelperFFT::GetSourceChannel(At(ZEL::FFT / FFT::Source)->Get()));
}

void CPgSpectrum::FollowSourceOfDownConverter()
{
    SelectSource(NApplicationDefinitions::MapAnalogChannelToApplicationChannel(
        At(ZEL::DDC / NNames::DDC::Source)->Get()));
}

void CPgSpectrum::SelectSource(KW_ZEL_CHANNEL channel)
{
    KW_CHECKED(m_pSource->DbSet(channel));
    OnSource();
}

void CPgSpectrum::OnSource()
{
    if (!At(ZEL::Trigger / Trigger::Source)->IsValueEnabled(m_pSource->Get()))
    {
        KW_REPORT_ERROR(QStringLiteral("new source is not applicable as trigger source"), __FILE__);
    }
}

void CPgSpectrum::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_ANALOG);
    NRules::OfferInputs(*At(ZEL::DDC / NNames::DDC::Source));
    CDbPropEnum<KW_ZEL_CHANNEL>& transformed = *At(ZEL::FFT / FFT::Source);
    for (INT32 i = eKW_ZEL_CHANNEL_C1; i <= eKW_ZEL_CHANNEL_C4; ++i)
    {
        KW_CHECKED(transformed.EnableValue(eKW_ZEL_CHANNEL_FFT1 + i, m_pSource->IsValueEnabled(i)));
    }
    transformed.UpdateAvailability(eAVAILABILITY_NOT_AVAILABLE);
}

t_Way<ZEL, Channel> CPgSpectrum::Input() const
{
    return ZEL::Vertical / Vertical::Channel / m_pSource->GetAsInt();
}

void CPgSpectrum::UpdateInput()
{
    const KW_ZEL_CHANNEL source = m_pSource->Get();
    // A file may name a channel that no input has.
    if (!NApplicationDefinitions::IsAnalogChannel(source))
    {
        return;
    }
    KW_CHECKED(At(ZEL::FFT / FFT::Source)
                   ->DbSet(static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_FFT1 + source)));
    KW_CHECKED(At(ZEL::DDC / NNames::DDC::Source)
                   ->DbSet(NApplicationDefinitions::MapApplicationChannelToAnalogChannel(source)));
    KW_CHECKED(m_pInputUnit->DbSet(CZELDatabaseHelperFFT::GetInputUnitFromProbeSettingsScope(
        At(Input() / Channel::ProbeType)->Get(), At(Input() / Channel::ProbeUserUnit)->Get())));
    UpdateMagnitudeAxis();
}

/** dBm is a power and fits both quantities; the unit of an amplitude goes with its quantity. */
void CPgSpectrum::UpdateMagnitudeUnits()
{
    const bool isVoltage = m_pInputUnit->Get() == eKW_FFT_INPUT_UNIT_VOLTAGE;
    const KW_FFT_MAGN_UNIT amplitude = isVoltage ? eKW_FFT_MAGN_UNIT_DBV : eKW_FFT_MAGN_UNIT_DBA;
    KW_CHECKED(m_pMagnitudeUnit->EnableValue(eKW_FFT_MAGN_UNIT_DBV, isVoltage));
    KW_CHECKED(m_pMagnitudeUnit->EnableValue(eKW_FFT_MAGN_UNIT_DBA, !isVoltage));
    KW_CHECKED(m_pMagnitudeUnit->FollowWish(amplitude));
    KW_CHECKED(m_pVerticalRefLevel->SetUnit(LevelUnit()));
    KW_CHECKED(m_pSpectrumMarkers->GetPrThreshold()->SetUnit(LevelUnit()));
    KW_CHECKED(m_pVerticalStart->SetUnit(AxisUnit()));
    KW_CHECKED(m_pVerticalStop->SetUnit(AxisUnit()));
}

KW_UNIT CPgSpectrum::LevelUnit() const
{
    switch (m_pMagnitudeUnit->Get())
    {
    case eKW_FFT_MAGN_UNIT_DBV:
        return eKW_UNIT_LEVEL_DBV;
    case eKW_FFT_MAGN_UNIT_DBA:
        return eKW_UNIT_LEVEL_DBA;
    default:
        return eKW_UNIT_LEVEL_DBM;
    }
}

KW_UNIT CPgSpectrum::AxisUnit() const
{
    const bool isVoltage = m_pInputUnit->Get() == eKW_FFT_INPUT_UNIT_VOLTAGE;
    const KW_UNIT linear = isVoltage ? eKW_UNIT_LEVEL_V : eKW_UNIT_LEVEL_A;
    return m_pVerticalScaling->Get() == eKW_SCALING_TYPE_LINEAR ? linear : LevelUnit();
}

void CPgSpectrum::ConvertLevels()
{
    ConvertLevel(*m_pVerticalRefLevel, LevelUnit());
    ConvertLevel(*m_pSpectrumMarkers->GetPrThreshold(), LevelUnit());
    ConvertLevel(*m_pSpectrumMarkers->GetPgReferenceMarker()->GetPrMagnitude(), AxisUnit());
    const CPgaSpectrumCursor& cursors = *m_pSpectrumCursors->GetPgSpectrumCursor();
    for (INT32 i = 0; i < cursors.GetCount(); ++i)
    {
        ConvertLevel(*cursors.ItemDirect(i)->GetPrVertical(), AxisUnit());
    }
}

void CPgSpectrum::ConvertLevel(CDbPropNumDouble& level, KW_UNIT to)
{
    const KW_UNIT from = level.GetUnit();
    if (from == to)
    {
        return;
    }
    const auto conversion = [this](KW_UNIT unit, bool toAmplitude)
    {
        return CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(
            m_pInputUnit->Get(),
            unit == eKW_UNIT_LEVEL_DBM ? eKW_FFT_MAGN_UNIT_DBM : eKW_FFT_MAGN_UNIT_DBV,
            m_pImpedance->Get(), toAmplitude);
    };
    // Nothing is the lowest level: -400 dB, or 0 V.
    const double lowest = level.GetDeclaredMin();
    const double amplitude = IsAmplitude(from)       ? level.Get()
                             : level.Get() <= lowest ? 0.0
                                                     : conversion(from, true)(level.Get());
    const double value = IsAmplitude(to) ? RoundedAmplitude(amplitude)
                                         : RoundedDecibels(conversion(to, false)(amplitude));
    KW_CHECKED(level.SetUnit(to));
    NRules::MoveTo(level, value);
}

CPgSpectrum::t_MagnitudeRange
CPgSpectrum::GetMagnitudeRange(const t_MagnitudeAxis& axis,
                               const std::function<double(double)>& toLinear)
{
    constexpr double kPercent = 100.0;
    const double height = axis.refPoint / kPercent;
    if (axis.scaling == eKW_SCALING_TYPE_LINEAR)
    {
        const double reference = toLinear(axis.refLevel);
        return {0.0, height > 0.0 ? reference / height : std::numeric_limits<double>::infinity()};
    }
    if (axis.scaling != eKW_SCALING_TYPE_LOGARITHMIC)
    {
        KW_REPORT_ERROR(QStringLiteral("invalid vertical scale detected: vscale = ") +
                            KW_ReportText(static_cast<INT32>(axis.scaling)),
                        __FILE__);
    }
    const double start = axis.refLevel - height * NSpectrumHardware::kMagnitudeHeight;
    return {start, start + NSpectrumHardware::kMagnitudeHeight};
}

void CPgSpectrum::UpdateMagnitudeAxis()
{
    UpdateMagnitudeUnits();
    const auto toLinear = CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(
        m_pInputUnit->Get(), m_pMagnitudeUnit->Get(), m_pImpedance->Get(), true);
    const auto [start, stop] = GetMagnitudeRange(
        {m_pVerticalScaling->Get(), m_pVerticalRefPoint->Get(), m_pVerticalRefLevel->Get()},
        toLinear);
    for (const auto& [edge, value] : {std::pair{m_pVerticalStart, start}, {m_pVerticalStop, stop}})
    {
        KW_CHECKED(edge->DbSet(KWMath::Bound(edge->GetMin(), value, edge->GetMax())));
    }
}

void CPgSpectrum::ShowInputRange()
{
    // A sine that fills the range, as an effective value.
    const double largest = At(Input() / Channel::Range)->Get() / 2.0 / std::sqrt(2.0);
    const auto toLevel = CZELDatabaseHelperFFT::ConvertMagnitudeDBFunction(
        m_pInputUnit->Get(), m_pMagnitudeUnit->Get(), m_pImpedance->Get(), false);
    constexpr double kStep = NSpectrumHardware::kMagnitudeDivision;
    const double level = std::ceil(toLevel(largest) / kStep) * kStep;
    KW_CHECKED(m_pVerticalRefPoint->DbSet(m_pVerticalRefPoint->GetMax()));
    KW_CHECKED(m_pVerticalRefLevel->DbSet(
        KWMath::Bound(m_pVerticalRefLevel->GetMin(), level, m_pVerticalRefLevel->GetMax())));
    UpdateMagnitudeAxis();
}
