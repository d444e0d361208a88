// SPDX-License-Identifier: MIT
#include "Spectrum/PgFFT.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "ErrorReport.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsDataFormats.h"
#include "KWEnumerationsSpectrum.h"
#include "Names/Horizontal.h"
#include "Names/Spectrum.h"
#include "Names/ZEL.h"

#include <bit>

using namespace NNames;

t_Couplings CPgFFT::Rules() const
{
    static constexpr auto rows = Table<Names>(
        On(Names::AverageLength) >> Do<&CPgFFT::RoundAverageLength>,
        On(Names::ResetAverage) >> Do<&CPgFFT::ResetAverage>,
        Changed(ZEL::Horizontal / Horizontal::SampleRate, ZEL::Spectrum / Spectrum::WindowType) >>
            Derive<&CPgFFT::UpdateBandwidthLimits>);
    return rows;
}

void CPgFFT::UpdateBandwidthLimits()
{
    using t_Helper = CZELDatabaseHelperFFT;
    const KW_WINDOW_TYPE window = At(ZEL::Spectrum / Spectrum::WindowType)->Get();
    const double numerator = t_Helper::GetWindowLengthFactor(window) *
                             At(ZEL::Horizontal / Horizontal::SampleRate)->Get();
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
void CPgFFT::RoundAverageLength()
{
    const UINT32 length = m_pAverageLength->Get();
    if (!std::has_single_bit(length))
    {
        KW_REPORT_ERROR(QStringLiteral("Average Length is invalid"), __FILE__);
        KW_CHECKED(m_pAverageLength->DbSet(std::bit_floor(length)));
    }
}
