// SPDX-License-Identifier: MIT
#include "Trace.h"

#include "AcceptanceNames.h"

#include <QJsonArray>

CTrace::CTrace(CSession& session, bool wanted) : m_session(session)
{
    if (wanted)
    {
        m_before.emplace(session.GetTree());
    }
}

void CTrace::AddTo(CReply& reply, const QString& path) const
{
    if (!m_before)
    {
        return;
    }
    QStringList lines;
    QJsonArray json;
    for (const t_Change& change : Compare(*m_before, CSnapshot(m_session.GetTree())))
    {
        if (change.kind != eCHANGE::Value || change.after.path != path)
        {
            lines.append(QStringLiteral("  ") + ShowChange(change, m_session.GetStyle().exact));
            json.append(ToJson(change));
        }
    }
    if (lines.isEmpty())
    {
        lines.append(path.isEmpty() ? QStringLiteral("  nothing changed")
                                    : QStringLiteral("  nothing else changed"));
    }
    reply.Lines(lines).Field("changes", json);
}

QString DescribeWarning(KW_ACCEPTANCE code)
{
    return code == eKW_ACC_OK ? QString() : QStringLiteral("  (%1)").arg(DescribeAcceptance(code));
}
