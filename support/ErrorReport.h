// SPDX-License-Identifier: MIT
#pragma once

#include "KWErrorReport.h"

#include <QString>

/** Report an error or a warning with the line and signature of the function that contains the
    macro: inside a lambda that is the lambda's. `message` is a QString, `sourceName` a literal. */
#define KW_REPORT_ERROR(message, sourceName)                                                       \
    _KW_ProcessErrorString((message), __LINE__, (sourceName), Q_FUNC_INFO, e_KW_MESSAGE_TYPE_ERROR)
#define KW_REPORT_WARNING(message, sourceName)                                                     \
    _KW_ProcessErrorString((message), __LINE__, (sourceName), Q_FUNC_INFO,                         \
                           e_KW_MESSAGE_TYPE_WARNING)

/** A number as it stands in report texts: as a text stream prints it with its defaults, that is
    general notation with six significant digits ("1e+09", "0.2", "inf", "nan"), without locale. */
inline QString KW_ReportText(double value)
{
    return QString::number(value, 'g', 6);
}

/** The same for integers and for enumerations, whose number is shown: an enumeration value that is
    worth a report has no name. */
inline QString KW_ReportText(INT64 value)
{
    return QString::number(value);
}
inline QString KW_ReportText(INT32 value)
{
    return QString::number(value);
}
inline QString KW_ReportText(UINT32 value)
{
    return QString::number(value);
}
