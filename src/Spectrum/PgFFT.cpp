// SPDX-License-Identifier: MIT
#include "Spectrum/PgFFT.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "Root/PgZEL.h"
#include "Spectrum/PgSpectrum.h"
#include "Timebase/PgHorizontal.h"

#include <algorithm>
#include <bit>

KW_ACCEPTANCE CPgFFT::OnPropertySet(const CDbPropBase* property)
{
    const CPgZEL* const root = CPgZEL::Of(*this);
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (property == m_pAverageLength)
    {
        code = UpdateAverageLength();
    }
    if (root != nullptr && property == m_pState && m_pState->Get() == eKW_ONOFF_ON)
    {
        root->GetPgSpectrum()->EnterFunction();
    }
    if (root != nullptr && property == m_pSource)
    {
        root->GetPgSpectrum()->SelectSource(
            CZELDatabaseHelperFFT::GetSourceChannel(m_pSource->Get()));
    }
    return std::max(code, CPgFFTBase::OnPropertySet(property));
}

KW_ACCEPTANCE CPgFFT::OnFunction(const CDbFunction* function)
{
    if (function == m_pResetAverage)
    {
        ResetAverage();
    }
    return CPgFFTBase::OnFunction(function);
}

void CPgFFT::UpdateGroup()
{
    UpdateBandwidthLimits();
}

void CPgFFT::OnTreeCreated()
{
    CPgFFTBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        root->GetDependencies().Add(
            *this,
            {root->GetPgHorizontal()->GetPrSampleRate(), root->GetPgSpectrum()->GetPrWindowType()},
            [this] { UpdateBandwidthLimits(); }, QStringLiteral("FFT/MinimumRBW"));
    }
}

void CPgFFT::UpdateBandwidthLimits()
{
    using t_Helper = CZELDatabaseHelperFFT;
    const CPgZEL* const root = CPgZEL::Of(*this);
    if (root == nullptr)
    {
        return;
    }
    const KW_WINDOW_TYPE window = root->GetPgSpectrum()->GetPrWindowType()->Get();
    const double numerator =
        t_Helper::GetWindowLengthFactor(window) * root->GetPgHorizontal()->GetPrSampleRate()->Get();
    KW_CHECKED(m_pWindowType->DbSet(window));
    KW_CHECKED(
        m_pMinimumRBW->DbSet(numerator / t_Helper::GetFFTSize(eKW_FFT_FREQUENCY_SPAN_MEDIUM)));
    KW_CHECKED(
        m_pMaximumRBW->DbSet(numerator / t_Helper::GetFFTSize(eKW_FFT_FREQUENCY_SPAN_NARROW)));
}

void CPgFFT::Configure(UINT32 size, double sampleRate, bool isDownConverted)
{
    KW_CHECKED(m_pFFTSize->DbSet(size));
    KW_CHECKED(m_pSampleFrequency->DbSet(sampleRate));
    KW_CHECKED(m_pFrequencyResolution->DbSet(sampleRate / size));
    KW_CHECKED(m_pRecordTime->DbSet(size / sampleRate));
    KW_CHECKED(m_pInputFormat->DbSet(isDownConverted ? eKW_SIGNAL_FORMAT_COMPLEX_FLOAT
                                                     : eKW_SIGNAL_FORMAT_INT16));
}

void CPgFFT::ResetAverage()
{
    KW_CHECKED(m_pAveragesDone->DbSet(0));
}

/** The averages are divided by shifting: other lengths than powers of two do not exist. */
KW_ACCEPTANCE CPgFFT::UpdateAverageLength()
{
    const UINT32 length = m_pAverageLength->Get();
    if (std::has_single_bit(length))
    {
        return eKW_ACC_OK;
    }
    KW_REPORT_ERROR(QStringLiteral("Average Length is invalid"), __FILE__);
    KW_CHECKED(m_pAverageLength->DbSet(std::bit_floor(length)));
    return eKW_ACC_WARNING;
}
