// SPDX-License-Identifier: MIT
#include "PropertyWrite.h"

#include "NodeText.h"
#include "Trace.h"

t_Answer WriteProperty(CSession& session, const char* command, IDbProperty& property,
                       const QString& request, bool trace,
                       const std::function<KW_ACCEPTANCE()>& write)
{
    const bool exact = session.GetStyle().exact;
    const t_ShownValue before = GetShownValue(property);
    const CTrace tracing(session, trace);
    const KW_ACCEPTANCE code = write();
    Require(code, request, DescribeLimits(property, code, exact));
    const t_ShownValue after = GetShownValue(property);
    const QString shown =
        before.text == after.text
            ? ShowValue(after, exact) + QStringLiteral(" (unchanged)")
            : ShowValue(before, exact) + QStringLiteral(" → ") + ShowValue(after, exact);
    CReply reply(session, QLatin1String(command));
    reply.Line(property.GetPath() + QStringLiteral(": ") + shown + DescribeWarning(code))
        .Field("path", property.GetPath())
        .Field("old", ToJsonValue(before))
        .Field("new", ToJsonValue(after))
        .Field("unit", KW_GetUnitText(after.unit));
    tracing.AddTo(reply, property.GetPath());
    return reply.Send(code);
}
