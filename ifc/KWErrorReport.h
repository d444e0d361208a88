// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <functional>

/** Severity of a report. 1 is not used. */
enum e_KW_MESSAGE_TYPE : INT32
{
    e_KW_MESSAGE_TYPE_ERROR = 0,
    e_KW_MESSAGE_TYPE_WARNING = 2
};

/** One failure, as it arrives at the handler. The library reports failures, it does not throw; only
    std::bad_alloc passes through it. */
struct KW_ErrorReport
{
    QString message;  ///< what is wrong, with the offending value
    int line = 0;     ///< line of the reporter's source
    QString file;     ///< name of the reporter's source unit, not a path that can be opened
    QString function; ///< full signature of the reporting function, as the compiler spells it
    e_KW_MESSAGE_TYPE type = e_KW_MESSAGE_TYPE_ERROR; ///< severity
};

using KW_ErrorHandler = std::function<void(const KW_ErrorReport&)>;

/**
 * Makes `handler` the receiver of all reports of the process and returns the previous one; an
 * empty handler stands for the default in both directions, so that what was returned can be set
 * again. The default writes to the Qt logging category "kwi.function.zel": errors as critical,
 * warnings as warning, with file, line and function in the text.
 *
 * Callable from any thread, also from inside a handler. A handler runs on the thread that reports,
 * on several threads at once if several report, and never under a lock of the sink; a replaced
 * handler lives until the last report that it was called for has returned. When a handler throws,
 * or a report is made from inside a handler, the report goes to the default instead.
 */
KW_EXPORT KW_ErrorHandler KW_SetErrorHandler(KW_ErrorHandler handler);

/** Hands a report to the handler. Callable from any thread; never throws. `file` and `function` are
    UTF-8 and are copied; null reads as empty. */
KW_EXPORT void _KW_ProcessErrorString(const QString& message, int line, const char* file,
                                      const char* function, e_KW_MESSAGE_TYPE type) noexcept;

/** The same with the arguments in the order of the property database's reporters. The message is a
    QString in both orders: a call that spells it as a literal is ambiguous and does not compile. */
KW_EXPORT void _KW_ProcessErrorString(const char* file, int line, const char* function,
                                      const QString& message, e_KW_MESSAGE_TYPE type) noexcept;
