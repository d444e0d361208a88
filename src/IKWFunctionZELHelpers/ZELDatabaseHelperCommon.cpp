// SPDX-License-Identifier: MIT
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"

#include "CommonHelperParts.h"
#include "ErrorReport.h"
#include "KWEnumerationsDataFormats.h"
#include "KWEnumerationsHardware.h"
#include "KWMath.h"
#include "MatConstants.h"

#include <cmath>

using namespace NCommonHelper;

namespace
{
constexpr double kCalFrequencyDeviation = 0.1;
}

double CZELDatabaseHelperCommon::GetLfGain_dB(KW_ZEL_LPF_GAIN gain)
{
    if (!IsLegal(gain))
        KW_REPORT_ERROR(QStringLiteral("Undefined enum value."), kHelperSource);
    return NumberOf(gain, 0.0);
}

double CZELDatabaseHelperCommon::GetCalFrequency(KW_ZEL_CAL_FREQ selection)
{
    if (!IsLegal(selection))
        KW_REPORT_ERROR(QStringLiteral("Undefined enum value."), kHelperSource);
    return NumberOf(selection, 0.0);
}

KW_ZEL_CAL_FREQ CZELDatabaseHelperCommon::GetCalFrequency(double frequency)
{
    const CEnumNameInfo& table = GetStaticEnumNameInfo<KW_ZEL_CAL_FREQ>();
    for (INT32 value = eKW_ZEL_CAL_FREQ_OFF + 1; value < table.GetEnumSize(); ++value)
    {
        const auto selection = static_cast<KW_ZEL_CAL_FREQ>(value);
        const double candidate = NumberOf(selection, 0.0);
        if (CMatConstants::IsLess(std::fabs(candidate - frequency) / candidate,
                                  kCalFrequencyDeviation))
            return selection;
    }
    KW_REPORT_ERROR(QStringLiteral("No cal frequency matches the required frequency."),
                    kHelperSource);
    return eKW_ZEL_CAL_FREQ_OFF;
}

unsigned int CZELDatabaseHelperCommon::GetNOfBytesPerSample(KW_DATAFORMAT format)
{
    if (!IsLegal(format))
        KW_REPORT_ERROR(QStringLiteral("unsupported format: ") + KW_ReportText(format),
                        kHelperSource);
    return KWMath::ToInteger<unsigned int>(NumberOf(format, 0.0));
}

unsigned int CZELDatabaseHelperCommon::GetSampleSize(KW_SIGNAL_FORMAT format)
{
    if (!IsLegal(format))
        KW_REPORT_ERROR(QStringLiteral("Unsupported sample format."), kHelperSource);
    return KWMath::ToInteger<unsigned int>(NumberOf(format, 1.0));
}

void CZELDatabaseHelperCommon::ReportRefusedLimit(KW_ACCEPTANCE eAcc, bool isMin, int line,
                                                  const char* function)
{
    const QString statement = isMin ? QStringLiteral("eAcc = pProperty->SetMin(Min)")
                                    : QStringLiteral("eAcc = pProperty->SetMax(Max)");
    _KW_ProcessErrorString(
        kHelperSource, line, function,
        QStringLiteral("Error (%1) by database access: %2").arg(KW_ReportText(eAcc), statement),
        e_KW_MESSAGE_TYPE_ERROR);
}
