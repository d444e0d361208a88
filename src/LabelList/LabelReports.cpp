// SPDX-License-Identifier: MIT
#include "LabelList/LabelReports.h"

#include "LabelList/LabelBounds.h"

#include <QStringList>
#include <iterator>

QString QuotedName(const std::string& name)
{
    return QLatin1Char('"') + QString::fromStdString(name) + QLatin1Char('"');
}

void CLabelReports::Error(t_TextPlace place, const QString& text)
{
    ++m_errors;
    Add(e_KW_MESSAGE_TYPE_ERROR, place, text);
}

void CLabelReports::Warning(t_TextPlace place, const QString& text)
{
    Add(e_KW_MESSAGE_TYPE_WARNING, place, text);
}

// An error is never left out for warnings that came before: it is what a refusal has to say.
void CLabelReports::Add(e_KW_MESSAGE_TYPE type, t_TextPlace place, const QString& text)
{
    const bool isFirstError = type == e_KW_MESSAGE_TYPE_ERROR && m_errors == 1;
    if (m_reports.size() >= NLabelBounds::kMaxReports && !isFirstError)
    {
        ++m_more;
        return;
    }
    m_reports.push_back({type, place.line, place.column, text});
}

void CLabelReports::MoveTo(std::vector<KW_LabelReport>& reports)
{
    reports.insert(reports.end(), std::make_move_iterator(m_reports.begin()),
                   std::make_move_iterator(m_reports.end()));
    if (m_more > 0)
    {
        reports.push_back({e_KW_MESSAGE_TYPE_WARNING, 0, 0,
                           QStringLiteral("%1 further reports left out").arg(m_more)});
    }
    *this = CLabelReports();
}

QString KW_FormatLabelReport(const QString& fileName, const KW_LabelReport& report)
{
    QStringList parts{fileName};
    if (report.line > 0)
    {
        parts << QString::number(report.line);
        if (report.column > 0)
        {
            parts << QString::number(report.column);
        }
    }
    return parts.join(QLatin1Char(':')) + QStringLiteral(": ") + report.text;
}
