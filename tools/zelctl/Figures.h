// SPDX-License-Identifier: MIT
#pragma once

#include "EnumText.h"
#include "KWEnumerationsUnits.h"
#include "Session.h"
#include "ValueText.h"

#include <QJsonObject>

/** The answer of a calculation: named figures with their units, one per line. An error that the
    library reports meanwhile makes the command fail behind the figures. */
class CFigures
{
public:
    /** Made before the calculation: reports count from here. */
    CFigures(CSession& session, const char* command);

    CFigures& Add(const char* name, double value, KW_UNIT unit = eKW_UNIT_NONE);
    CFigures& Add(const char* name, const QString& text);
    CFigures& Add(const QString& name, double value, KW_UNIT unit = eKW_UNIT_NONE);
    CFigures& AddText(const QString& name, const QString& text);
    CFigures& AddTruth(const char* name, bool value);
    /** Lines behind the figures, for readers only. */
    CFigures& AddBelow(const QStringList& lines);
    t_Answer Send();

private:
    void AddRow(const QString& name, const QString& shown, const QJsonValue& value,
                const QString& unit);

    CSession& m_session;
    CReply m_reply;
    CTable m_table;
    QJsonObject m_result;
    QStringList m_below;
    int m_reportedBefore;
};
