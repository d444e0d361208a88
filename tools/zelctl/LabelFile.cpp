// SPDX-License-Identifier: MIT
#include "LabelFile.h"

#include "Commands.h"
#include "LabelText.h"

namespace
{
QJsonObject ToJson(const QString& file, const KW_LabelReport& report)
{
    const bool isError = report.type == e_KW_MESSAGE_TYPE_ERROR;
    return {{QStringLiteral("file"), file},
            {QStringLiteral("line"), static_cast<qint64>(report.line)},
            {QStringLiteral("column"), static_cast<qint64>(report.column)},
            {QStringLiteral("type"), isError ? QStringLiteral("error") : QStringLiteral("warning")},
            {QStringLiteral("text"), report.text}};
}
} // namespace

KW_LabelList ReadQuietly(const std::string& file)
{
    KW_LabelList list;
    std::vector<KW_LabelReport> reports;
    KW_ReadLabelFile(ToText(file), list, reports);
    return list;
}

KW_ACCEPTANCE CLabelFindings::Read(const std::string& file, bool skipsBad, KW_LabelList& list)
{
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = KW_ReadLabelFile(ToText(file), list, reports, {skipsBad});
    Add(ToText(file), reports);
    return code;
}

KW_LabelList CLabelFindings::Require(const std::string& file, bool skipsBad)
{
    KW_LabelList list;
    const KW_ACCEPTANCE code = Read(file, skipsBad, list);
    if (!KW_IsAccepted(code))
    {
        throw Refuse(code, ToText(file));
    }
    return list;
}

void CLabelFindings::Require(KW_ACCEPTANCE code, const QString& file,
                             const std::vector<KW_LabelReport>& reports)
{
    Add(file, reports);
    if (!KW_IsAccepted(code))
    {
        throw Refuse(code, file);
    }
}

void CLabelFindings::Add(const QString& file, const std::vector<KW_LabelReport>& reports)
{
    for (const KW_LabelReport& report : reports)
    {
        m_lines << KW_FormatLabelReport(file, report);
        m_json.append(ToJson(file, report));
        m_errors += report.type == e_KW_MESSAGE_TYPE_ERROR ? 1 : 0;
    }
}

CFailure CLabelFindings::Refuse(KW_ACCEPTANCE code, const QString& file) const
{
    const bool isOne = m_lines.size() == 1;
    if (!isOne && !m_session.GetStyle().json)
    {
        Show();
    }
    CFailure failure(eSTATUS_USAGE, code,
                     isOne
                         ? m_lines.front()
                         : QStringLiteral("%1 is refused: %2")
                               .arg(file, m_errors > 0 ? GetCounts() : KW_GetAcceptanceText(code)));
    failure.AddData({{QStringLiteral("findings"), m_json}});
    return failure;
}

QString CLabelFindings::GetCounts() const
{
    const auto warnings = static_cast<std::size_t>(m_json.size() - m_errors);
    QStringList counts;
    if (m_errors > 0)
    {
        counts << GetCountText(static_cast<std::size_t>(m_errors), QStringLiteral("error"));
    }
    if (warnings > 0)
    {
        counts << GetCountText(warnings, QStringLiteral("warning"));
    }
    return counts.isEmpty() ? QStringLiteral("nothing to report")
                            : counts.join(QStringLiteral(", "));
}

void CLabelFindings::AddTo(CReply& reply) const
{
    reply.Field("findings", m_json);
}

void CLabelFindings::Show() const
{
    for (const QString& line : m_lines)
    {
        m_session.GetOutput().Problem(line);
    }
}

t_Answer CLabelFindings::Send(CReply& reply) const
{
    AddTo(reply);
    if (IsEmpty())
    {
        return reply.Send();
    }
    t_Answer answer = reply.Send(eKW_ACC_WARNING, eSTATUS_REFUSED);
    answer.isDone = true;
    if (!reply.IsDocument())
    {
        Show();
    }
    return answer;
}
