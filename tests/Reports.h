// SPDX-License-Identifier: MIT
#pragma once

#include "KWErrorReport.h"

#include <QStringList>
#include <mutex>
#include <utility>
#include <vector>

/** Receives the process's reports for the length of a block, from any thread. */
class CReports
{
public:
    CReports()
        : m_previous(KW_SetErrorHandler(
              [this](const KW_ErrorReport& report)
              {
                  const std::lock_guard guard(m_mutex);
                  m_reports.push_back(report);
              }))
    {
    }
    ~CReports() { KW_SetErrorHandler(m_previous); }
    CReports(const CReports&) = delete;
    CReports& operator=(const CReports&) = delete;

    std::vector<KW_ErrorReport> All() const
    {
        const std::lock_guard guard(m_mutex);
        return m_reports;
    }
    int Count() const { return static_cast<int>(All().size()); }
    QStringList List() const
    {
        QStringList messages;
        for (const KW_ErrorReport& report : All())
        {
            messages.append(report.message);
        }
        return messages;
    }
    /** The messages, joined with line ends. */
    QString Messages() const { return List().join(QLatin1Char('\n')); }

    void Clear() { Take(); }
    /** What arrived since the last call. */
    std::vector<KW_ErrorReport> Take()
    {
        const std::lock_guard guard(m_mutex);
        return std::exchange(m_reports, {});
    }

private:
    mutable std::mutex m_mutex;
    std::vector<KW_ErrorReport> m_reports;
    KW_ErrorHandler m_previous;
};
