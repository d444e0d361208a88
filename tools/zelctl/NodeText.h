// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "NodeFacts.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

using t_ShownValue = KW_ValueText;

inline t_ShownValue GetShownValue(const IDbProperty& property)
{
    return GetValueText(property);
}

inline QString ShowValue(const t_ShownValue& value, bool exact)
{
    return KW_FormatValue(value, exact);
}

/** As KW_ParseValue; fails for what can not be meant, with what could be. */
QString ReadValue(const IDbProperty& property, const QString& written);

/** What the property would have taken, for a refused write; empty where the code says it all. */
QString DescribeLimits(const IDbProperty& property, KW_ACCEPTANCE code, bool exact);

/** "result", "read only", "not available", "invalid", joined; empty for a usable setting. */
QString DescribeState(const IDbObject& node);

/** A property's path, and lines with its meaning, value, limits, type, unit and state. */
QStringList GetInfoLines(const IDbProperty& property, bool exact);

QString GetAvailabilityText(KW_AVAILABILITY availability);

/** A node in JSON: path, kind, and of properties type, value, text, unit, state; with `full` also
    meaning, default, limits and selectable values. */
QJsonObject ToJson(const IDbObject& node, bool full);

/** A value in JSON: numbers that a JSON number holds exactly as such, all else as text. */
QJsonValue ToJsonValue(const t_ShownValue& value);
/** Values of the type and unit of another. */
QJsonArray ToJsonValues(const QStringList& texts, const t_ShownValue& like);
