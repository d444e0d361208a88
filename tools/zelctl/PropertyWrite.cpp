// SPDX-License-Identifier: MIT
#include "PropertyWrite.h"

#include "AcceptanceNames.h"
#include "KWTexts.h"
#include "Trace.h"

#include <QJsonArray>

namespace
{
CFailure RefuseWrite(const IDbProperty& property, const t_WriteRequest& request, KW_ACCEPTANCE code,
                     bool exact)
{
    const QString text =
        request.asked
            ? QStringLiteral("%1 = %2").arg(property.GetPath(), ShowValue(*request.asked, exact))
            : request.text;
    CFailure failure = Refuse(code, text, DescribeLimits(property, code, exact));
    failure.AddData(GetChoice(property));
    if (request.asked)
    {
        failure.AddData({{QStringLiteral("asked"), ToJsonValue(*request.asked)}});
    }
    return failure;
}

QString ShowStep(const t_ShownValue& before, const t_ShownValue& after, bool exact)
{
    // Of a secret nobody learns whether it was the same.
    return before.text == after.text && !after.secret
               ? ShowValue(after, exact) + QStringLiteral(" (unchanged)")
               : ShowValue(before, exact) + QStringLiteral(" → ") + ShowValue(after, exact);
}

/** Why another value stands than was asked for, as far as the property itself shows. */
QString DescribeReason(const IDbProperty& property, const t_ShownValue& after)
{
    const bool isLeast = after.text == property.GetMinText();
    if (isLeast || after.text == property.GetMaxText())
    {
        return QStringLiteral("it stands at its present %1")
            .arg(isLeast ? QLatin1String("minimum") : QLatin1String("maximum"));
    }
    const QString rule =
        QStringLiteral("moved by a rule: \"zelctl why %1\" shows which").arg(property.GetPath());
    return property.GetEnumNameInfo() == nullptr ? QStringLiteral("rounded, or ") + rule : rule;
}

/** A write with code 1: what was asked for, what stands, and why. */
QString DescribeMoved(const IDbProperty& property, const t_ShownValue& asked,
                      const t_ShownValue& before, const t_ShownValue& after, bool exact)
{
    QString text =
        QStringLiteral("asked %1, stands %2").arg(ShowValue(asked, exact), ShowValue(after, exact));
    if (before.text != after.text)
    {
        text += QStringLiteral(", was ") + ShowValue(before, exact);
    }
    text += QStringLiteral(" (") + DescribeAcceptance(eKW_ACC_WARNING);
    if (ShowValue(asked, true) != ShowValue(after, true))
    {
        text += QStringLiteral("; ") + DescribeReason(property, after);
    }
    return text + QLatin1Char(')');
}
} // namespace

QJsonObject GetChoice(const IDbProperty& property)
{
    const t_ShownValue value = GetShownValue(property);
    const auto limit = [&value](const QString& text) {
        return text.isEmpty() ? QJsonValue() : ToJsonValue({text, value.type, value.unit});
    };
    return {{QStringLiteral("path"), property.GetPath()},
            {QStringLiteral("unit"), KW_GetUnitText(value.unit)},
            {QStringLiteral("minimum"), limit(property.GetMinText())},
            {QStringLiteral("maximum"), limit(property.GetMaxText())},
            {QStringLiteral("selectable"), ToJsonValues(property.GetValueTexts(), value)}};
}

t_Answer WriteProperty(CSession& session, const char* command, IDbProperty& property,
                       const t_WriteRequest& request, const std::function<KW_ACCEPTANCE()>& write)
{
    const bool exact = session.GetStyle().exact;
    const t_ShownValue before = GetShownValue(property);
    const CTrace tracing(session, request.trace);
    const KW_ACCEPTANCE code = write();
    if (!KW_IsAccepted(code))
    {
        throw RefuseWrite(property, request, code, exact);
    }
    const t_ShownValue after = GetShownValue(property);
    const bool isMoved = code == eKW_ACC_WARNING && request.asked;
    CReply reply(session, QLatin1String(command));
    reply
        .Line(property.GetPath() + QStringLiteral(": ") +
              (isMoved ? DescribeMoved(property, *request.asked, before, after, exact)
                       : ShowStep(before, after, exact) + DescribeWarning(code)))
        .Field("path", property.GetPath())
        .Field("old", ToJsonValue(before))
        .Field("new", ToJsonValue(after))
        .Field("unit", KW_GetUnitText(after.unit));
    if (isMoved)
    {
        reply.Field("asked", ToJsonValue(*request.asked));
    }
    tracing.AddTo(reply, property.GetPath());
    return reply.Send(code);
}
