// SPDX-License-Identifier: MIT
#include "Spectrum/PgDDC.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperDDC.h"
#include "KWEnumerationsOnOff.h"
#include "KWMath.h"

#include <algorithm>

using t_DDCHelper = CZELDatabaseHelperDDC;

t_Couplings CPgDDC::Rules() const
{
    static constexpr auto rows = NNames::Table<Names>(
        NNames::On(Names::Center, Names::Span) >> NNames::Do<&CPgDDC::OnCenterOrSpan>,
        NNames::On(Names::State) >> NNames::Do<&CPgDDC::OnState>);
    return rows;
}

void CPgDDC::OnCenterOrSpan()
{
    constexpr double kKilo = 1e3;
    KW_REPORT_ERROR(
        QStringLiteral("DDC Center/Span was directly changed to Center = %1 kHz and Span = %2 kHz "
                       "(that is only allowed for debugging purpose)")
            .arg(KW_ReportText(m_pCenter->Get() / kKilo), KW_ReportText(m_pSpan->Get() / kKilo)),
        __FILE__);
    Init(m_pCenter->Get(), m_pSpan->Get());
    UpdateGainCorrection();
}

void CPgDDC::OnState()
{
    if (m_pState->Get() == eKW_ONOFF_ON)
    {
        Init(m_pCenter->Get(), m_pSpan->Get());
        Switch(true);
    }
}

void CPgDDC::Init(double center, double span)
{
    const double boundSpan = KWMath::Bound(m_pSpan->GetMin(), span, m_pSpan->GetMax());
    const double boundCenter = KWMath::Bound(m_pCenter->GetMin(), center, m_pCenter->GetMax());
    const DDC::DecimationRate rate = t_DDCHelper::CalculateDecimation(boundSpan);
    const DDC::NcoFrequency nco = t_DDCHelper::CalculateNcoFrequency(boundCenter, rate.m_R_DDC);
    KW_CHECKED(m_pSpan->DbSet(boundSpan));
    KW_CHECKED(m_pCenter->DbSet(boundCenter));
    KW_CHECKED(m_pSampleDezimationFactor->DbSet(rate.m_R_DDC));
    KW_CHECKED(m_pFrequencyShift->DbSet(t_DDCHelper::CalculateFrequencyShift(nco)));
    KW_CHECKED(m_pGain->DbSet(t_DDCHelper::CalculateGain(rate, nco).m_Gain_DDC));
}

void CPgDDC::Switch(bool on)
{
    KW_CHECKED(m_pState->DbSet(on ? eKW_ONOFF_ON : eKW_ONOFF_OFF));
    // What is off shows the numbers that it would run with.
    if (!on && m_pSampleDezimationFactor->Get() == 1)
    {
        Reset();
    }
    UpdateGainCorrection();
}

void CPgDDC::Reset()
{
    KW_CHECKED(m_pFrequencyShift->DbSet(m_pFrequencyShift->GetDefault()));
    KW_CHECKED(m_pGain->DbSet(m_pGain->GetDefault()));
}

void CPgDDC::UpdateGainCorrection()
{
    const bool isMixing = m_pState->Get() == eKW_ONOFF_ON && m_pSampleDezimationFactor->Get() > 1;
    KW_CHECKED(m_pGainCorrection->DbSet(isMixing ? 2.0 : 1.0));
}
