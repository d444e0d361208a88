// SPDX-License-Identifier: MIT
#include "Figures.h"

#include "NodeText.h"

CFigures::CFigures(CSession& session, const char* command)
    : m_session(session), m_reply(session, QLatin1String("calc ") + QLatin1String(command)),
      m_reportedBefore(session.GetOutput().GetReportedErrors())
{
}

void CFigures::AddRow(const QString& name, const QString& shown, const QJsonValue& value,
                      const QString& unit)
{
    m_table.Add({name, shown});
    QJsonObject figure{{QStringLiteral("value"), value}};
    if (!unit.isEmpty())
    {
        figure[QStringLiteral("unit")] = unit;
    }
    m_result[name] = figure;
}

CFigures& CFigures::Add(const QString& name, double value, KW_UNIT unit)
{
    const QString text = KW_FormatNumber(value, eKW_UNIT_NOT_DEFINED);
    AddRow(name, KW_FormatNumber(text, unit, m_session.GetStyle().exact),
           ToJsonValue({text, QStringLiteral("double"), unit}), KW_GetUnitText(unit));
    return *this;
}

CFigures& CFigures::Add(const char* name, double value, KW_UNIT unit)
{
    return Add(QString::fromLatin1(name), value, unit);
}

CFigures& CFigures::Add(const char* name, const QString& text)
{
    return AddText(QString::fromLatin1(name), text);
}

CFigures& CFigures::AddText(const QString& name, const QString& text)
{
    AddRow(name, text, text, {});
    return *this;
}

CFigures& CFigures::AddTruth(const char* name, bool value)
{
    AddRow(QString::fromLatin1(name), value ? QStringLiteral("yes") : QStringLiteral("no"), value,
           {});
    return *this;
}

CFigures& CFigures::AddBelow(const QStringList& lines)
{
    m_below += lines;
    return *this;
}

t_Answer CFigures::Send()
{
    const bool failed = m_session.GetOutput().GetReportedErrors() != m_reportedBefore;
    return m_reply.Lines(m_table.GetLines(0))
        .Lines(m_below)
        .Field("result", m_result)
        .Send(eKW_ACC_OK, failed ? eSTATUS_REFUSED : eSTATUS_OK);
}
