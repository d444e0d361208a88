// SPDX-License-Identifier: MIT
#pragma once

#include "EnumText.h"
#include "KWEnumerations.h"
#include "Session.h"
#include "ValueText.h"

#include <QJsonObject>
#include <string>

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
    t_Answer Send();

private:
    void AddRow(const QString& name, const QString& shown, const QJsonValue& value,
                const QString& unit);

    CSession& m_session;
    CReply m_reply;
    CTable m_table;
    QJsonObject m_result;
    int m_reportedBefore;
};

/** An argument of a calculation as a number in a unit; `name` is what the help calls it. */
inline double ReadArgument(const std::string& text, KW_UNIT unit, const char* name)
{
    return ReadDouble(QString::fromStdString(text), unit, QLatin1String(name));
}

/** An argument as a value of an enumeration. */
template <typename T>
T ReadArgument(const std::string& text)
{
    return ReadEnum<T>(QString::fromStdString(text), GetStaticEnumNameInfo<T>().GetType());
}
