// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QtGlobal>

/** Reports a write that was refused, or taken with a warning, with the statement that asked for
    it. */
void KW_ReportNotAccepted(KW_ACCEPTANCE code, const char* statement, const char* file, int line,
                          const char* function);

/** The same for any code; answers it. Use through KW_CHECKED. The check alone is inline: rules make
    dozens of writes for one of a client, and nearly all are taken. */
inline KW_ACCEPTANCE KW_ReportAccess(KW_ACCEPTANCE code, const char* statement, const char* file,
                                     int line, const char* function)
{
    if (code != eKW_ACC_OK)
    {
        KW_ReportNotAccepted(code, statement, file, line, function);
    }
    return code;
}

/** Runs a statement that answers a KW_ACCEPTANCE, such as `m_pScale->DbSet(scale)`, and reports
    anything but plain acceptance; the update that contains it goes on. */
#define KW_CHECKED(...)                                                                            \
    KW_ReportAccess((__VA_ARGS__), #__VA_ARGS__, __FILE__, __LINE__, Q_FUNC_INFO)
