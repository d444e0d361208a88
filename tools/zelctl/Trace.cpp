// SPDX-License-Identifier: MIT
#include "Trace.h"

#include "AcceptanceNames.h"
#include "TreeWatch.h"

#include <QJsonArray>

CTrace::CTrace(CSession& session, bool wanted) : m_session(session), m_wanted(wanted)
{
    if (wanted)
    {
        session.GetWatch().Update();
    }
}

void CTrace::AddTo(CReply& reply, const QString& path) const
{
    if (!m_wanted)
    {
        return;
    }
    QStringList lines;
    QJsonArray json;
    for (const t_Change& change : m_session.GetWatch().Update())
    {
        if (change.kind != eCHANGE::Value || change.after.path != path)
        {
            reply.IsDocument() ? json.append(ToJson(change))
                               : lines.append(QStringLiteral("  ") +
                                              ShowChange(change, m_session.GetStyle().exact));
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
