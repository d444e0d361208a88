// SPDX-License-Identifier: MIT
#include "CheckedAccess.h"

#include "ErrorReport.h"

void KW_ReportNotAccepted(KW_ACCEPTANCE code, const char* statement, const char* file, int line,
                          const char* function)
{
    const bool refused = code > eKW_ACC_WARNING;
    const QString text = QLatin1String(refused ? "Error (" : "Warning (") + QString::number(code) +
                         QLatin1String(") by database access: ") + QString::fromUtf8(statement);
    _KW_ProcessErrorString(file, line, function, text,
                           refused ? e_KW_MESSAGE_TYPE_ERROR : e_KW_MESSAGE_TYPE_WARNING);
}
