// SPDX-License-Identifier: MIT
#pragma once

#include "ErrorReport.h"
#include "KWAcceptance.h"

/** Reports a write that was refused, or taken with a warning, with the statement that asked for
    it; answers the code. Use through KW_CHECKED. */
inline KW_ACCEPTANCE KW_ReportAccess(KW_ACCEPTANCE code, const char* statement, const char* file,
                                     int line, const char* function)
{
    if (code != eKW_ACC_OK)
    {
        const bool refused = code > eKW_ACC_WARNING;
        const QString text = QLatin1String(refused ? "Error (" : "Warning (") +
                             QString::number(code) + QLatin1String(") by database access: ") +
                             QString::fromUtf8(statement);
        _KW_ProcessErrorString(file, line, function, text,
                               refused ? e_KW_MESSAGE_TYPE_ERROR : e_KW_MESSAGE_TYPE_WARNING);
    }
    return code;
}

/** Runs a statement that answers a KW_ACCEPTANCE, such as `m_pScale->DbSet(scale)`, and reports
    anything but plain acceptance; the update that contains it goes on. */
#define KW_CHECKED(...)                                                                            \
    KW_ReportAccess((__VA_ARGS__), #__VA_ARGS__, __FILE__, __LINE__, Q_FUNC_INFO)
