// SPDX-License-Identifier: MIT
#include "KWErrorReport.h"

#include <QLoggingCategory>
#include <memory>
#include <mutex>
#include <utility>

namespace
{
Q_LOGGING_CATEGORY(LogCategory, "kwi.function.zel")

/** The handler in force; null stands for the default. */
struct t_Sink
{
    std::mutex mutex;
    std::shared_ptr<const KW_ErrorHandler> handler;
};

// Never destroyed: trees that are released during process exit may still report.
t_Sink& Sink()
{
    static auto& sink = *new t_Sink;
    return sink;
}

std::shared_ptr<const KW_ErrorHandler> CurrentHandler()
{
    const std::lock_guard guard(Sink().mutex);
    return Sink().handler;
}

void LogReport(const KW_ErrorReport& report)
{
    const QString text =
        QStringLiteral("%1 (%2:%3, %4)")
            .arg(report.message, report.file, QString::number(report.line), report.function);
    if (report.type == e_KW_MESSAGE_TYPE_WARNING)
        qCWarning(LogCategory).noquote() << text;
    else
        qCCritical(LogCategory).noquote() << text;
}

thread_local bool t_insideHandler = false;

bool CallHandler(const KW_ErrorReport& report)
{
    if (t_insideHandler)
        return false;
    const auto handler = CurrentHandler();
    if (!handler)
        return false;
    t_insideHandler = true;
    bool handled = true;
    try
    {
        (*handler)(report);
    }
    catch (...)
    {
        handled = false;
    }
    t_insideHandler = false;
    return handled;
}
} // namespace

KW_ErrorHandler KW_SetErrorHandler(KW_ErrorHandler handler)
{
    auto next = handler ? std::make_shared<const KW_ErrorHandler>(std::move(handler)) : nullptr;
    {
        const std::lock_guard guard(Sink().mutex);
        Sink().handler.swap(next);
    }
    return next ? *next : KW_ErrorHandler();
}

void _KW_ProcessErrorString(const QString& message, int line, const char* file,
                            const char* function, e_KW_MESSAGE_TYPE type) noexcept
{
    try
    {
        const KW_ErrorReport report{message, line, QString::fromUtf8(file),
                                    QString::fromUtf8(function), type};
        if (!CallHandler(report))
            LogReport(report);
    }
    catch (...) // out of memory while composing the report: nothing is left to report it with
    {
    }
}

void _KW_ProcessErrorString(const char* file, int line, const char* function,
                            const QString& message, e_KW_MESSAGE_TYPE type) noexcept
{
    _KW_ProcessErrorString(message, line, file, function, type);
}
